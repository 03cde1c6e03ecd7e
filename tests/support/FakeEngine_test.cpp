#include <gtest/gtest.h>

#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "protocol/EngineProtocol.h"
#include "support/BusPump.h"
#include "support/FakeEngineProcess.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using test::FakeEngineProcess;
using test::PropertyListFile;

class FakeEngineTest : public testing::Test {
 protected:
  test::PrivateBus mBus;
};

TEST_F(FakeEngineTest, OwnsThePortThatItIsTold) {
  FakeEngineProcess engine({}, "SomeOtherPort");
  EXPECT_TRUE(RemoteMessagePort::lookUp("SomeOtherPort"));
  EXPECT_FALSE(RemoteMessagePort::lookUp(enginePortName));
}

TEST_F(FakeEngineTest, EndsWithQuitWithTheEndOfItsInputAndOnRequest) {
  FakeEngineProcess first({}, "First");
  EXPECT_TRUE(first.obey("quit"));
  EXPECT_EQ(first.process().waitForEnd(), 0);
  FakeEngineProcess second({}, "Second");
  second.process().closeInput();
  EXPECT_EQ(second.process().waitForEnd(), 0);
  FakeEngineProcess third({}, "Third");
  EXPECT_TRUE(third.obey("exit 7"));
  EXPECT_EQ(third.process().waitForEnd(), 7);
}

TEST_F(FakeEngineTest, RefusesWhatIsNoCommand) {
  FakeEngineProcess engine;
  for (const char* line : {"", "on", "on x reply", "dance", "on 4 dance", "data 0g", "data 123", "reply /nonexistent",
                           "after x silent", "silent silent", "exit now", "silent ; dance"})
    EXPECT_FALSE(engine.obey(line)) << line;
  EXPECT_TRUE(engine.obey("silent"));
}

TEST_F(FakeEngineTest, PostsNotificationsWithBlanksInTheirNames) {
  const PropertyList userInfo = PropertyList::dictionary({{"Source App", "org.vorn.Other"}});
  const PropertyListFile file(userInfo);
  auto& center = DistributedNotificationCenter::defaultCenter();
  std::vector<std::string> heard;
  std::vector<PropertyList> infos;
  center.addObserver(this, "DPI Updated 273", [&](const Notification& news) {
    heard.push_back(news.object);
    infos.push_back(news.userInfo);
  });
  FakeEngineProcess engine;
  EXPECT_TRUE(engine.obey("post \"DPI Updated 273\" ; post \"DPI Updated 273\" \"an \\\"object\\\"\" " + file.path()));
  EXPECT_TRUE(test::serveBusUntil([&] { return heard.size() == 2; }));
  EXPECT_EQ(heard, (std::vector<std::string>{"", "an \"object\""}));
  EXPECT_EQ(infos, (std::vector<PropertyList>{PropertyList(), userInfo}));
  center.removeObserver(this);
}

TEST_F(FakeEngineTest, TellsRequestsThatAreNoPropertyList) {
  FakeEngineProcess engine;
  const auto port = RemoteMessagePort::lookUp(enginePortName);
  ASSERT_TRUE(port);
  port->sendRequest(5, Bytes{1, 2, 254}, sendTimeout);
  port->sendRequest(-6, {}, sendTimeout);
  const auto isRequest = [](const std::string& line) { return line.starts_with("request "); };
  EXPECT_EQ(engine.process().waitForLine(isRequest).value_or("").substr(0, 17), "request 5 0102fe ");
  EXPECT_EQ(engine.waitForRequest(-6), (FakeEngineProcess::Request{-6, PropertyList()}));
}

}  // namespace
}  // namespace vorn
