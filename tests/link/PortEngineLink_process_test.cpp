// The link against an engine that is a process of its own and behaves in every way that one can.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "link/PortEngineLink.h"
#include "ports/DistributedNotificationCenter.h"
#include "protocol/TypedKeys.h"
#include "support/BusPump.h"
#include "support/FakeEngineProcess.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using test::FakeEngineProcess;
using test::PropertyListFile;

constexpr int patientPolls = 2000;
constexpr int shortPolls = 5;

PropertyList status(int number) {
  return PropertyList::dictionary({{replyKeys::ReturnStatus, number}});
}

class PortEngineLinkProcessTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(mLink.createLocalPort()); }

  void send(MessageID messageID) { EXPECT_EQ(mLink.send(mRequest, messageID), sendRequestResult); }
  // A whole command; none when no answer came.
  PropertyList command(MessageID messageID, int polls = patientPolls) {
    send(messageID);
    const PropertyList reply = mLink.waitForReply(polls) ? mLink.reply() : PropertyList();
    mLink.emptySlot();
    return reply;
  }

  const PropertyList mRequest = PropertyList::dictionary(
      {{requestKeys::ProductID, wiredProductID}, {requestKeys::ResponseMsgPortName, configuratorReplyPortName}});
  const PropertyListFile mZero{status(0)};
  const PropertyListFile mOne{status(1)};
  test::PrivateBus mBus;
  PortEngineLink mLink;
};

TEST_F(PortEngineLinkProcessTest, IsSeenFromItsStartToItsEnd) {
  EXPECT_FALSE(mLink.isEngineAvailable());
  {
    const FakeEngineProcess engine;
    EXPECT_TRUE(mLink.isEngineAvailable());
  }
  // The bus notices the end of a process a little after the process has ended.
  const auto deadline = std::chrono::steady_clock::now() + 20s;
  while (mLink.isEngineAvailable() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  EXPECT_FALSE(mLink.isEngineAvailable());
}

// What could be started, were it asked for, is the engine under every name of its own.
TEST_F(PortEngineLinkProcessTest, IsStartedByNoLookUpSendOrWatch) {
  const engine::test::TemporaryFolder folder;
  const std::string mark = folder.path("started");
  for (const std::string& name : {std::string(engineServiceName), std::string(typedKeys::busName),
                                  std::string(messagePortBusNamePrefix) + std::string(enginePortName)}) {
    mBus.installService(name, "/bin/sh -c \"touch " + mark + "; exit 1\"");
  }
  EXPECT_FALSE(mLink.watchEngine([](bool) {}));
  EXPECT_FALSE(mLink.isEngineAvailable());
  EXPECT_TRUE(command(MessageID::GetAllSettings, shortPolls).isNone());
  mLink.post(mRequest, MessageID::QueryFirmwareVersion);
  mLink.type({.usagePage = 7, .usage = 4, .isPressed = true});
  EXPECT_FALSE(mLink.isEngineAvailable());
  EXPECT_FALSE(std::filesystem::exists(mark));
  // But it is where it is asked for.
  std::optional<ServiceStart> outcome;
  mLink.startEngine([&](const ServiceStart& told) { outcome = told; });
  ASSERT_TRUE(test::serveBusUntil([&] { return outcome.has_value(); }));
  EXPECT_EQ(outcome->status, ServiceStart::Status::Failed);
  EXPECT_TRUE(std::filesystem::exists(mark));
}

TEST_F(PortEngineLinkProcessTest, IsKnownToHaveComeBeforeItsStartEnds) {
  mBus.installService(engineServiceName, "/bin/true");
  std::vector<std::string> told;
  EXPECT_FALSE(mLink.watchEngine([&](bool isThere) { told.emplace_back(isThere ? "came" : "went"); }));
  mLink.startEngine([&](const ServiceStart& outcome) {
    EXPECT_EQ(outcome.status, ServiceStart::Status::Running);
    told.emplace_back("started");
  });
  test::LoopThread other;
  std::unique_ptr<LocalMessagePort> port;
  std::unique_ptr<ServiceName> name;
  other.run([&] {
    port = LocalMessagePort::create(enginePortName, {});
    name = ServiceName::claim(engineServiceName);
  });
  ASSERT_TRUE(test::serveBusUntil([&] { return told.size() == 2; }));
  EXPECT_EQ(told, (std::vector<std::string>{"came", "started"}));
  other.run([&] {
    name.reset();
    port.reset();
  });
}

TEST_F(PortEngineLinkProcessTest, AnswersARequestThroughTheReplyPort) {
  FakeEngineProcess engine({"on 32 reply " + mZero.path()});
  EXPECT_EQ(command(MessageID::AddMacro), status(0));
  EXPECT_EQ(engine.takeRequests(), (std::vector<FakeEngineProcess::Request>{{32, mRequest}}));
  EXPECT_EQ(engine.waitForSent(), "success");
}

TEST_F(PortEngineLinkProcessTest, ThatIsSilentLetsTheWaitRunOut) {
  FakeEngineProcess engine({"on * silent"});
  EXPECT_TRUE(command(MessageID::GetAllSettings, shortPolls).isNone());
  EXPECT_EQ(engine.takeRequests(), (std::vector<FakeEngineProcess::Request>{{4, mRequest}}));
}

TEST_F(PortEngineLinkProcessTest, ThatIsSlowIsWaitedFor) {
  FakeEngineProcess engine({"on 4 after 150 reply " + mOne.path()});
  EXPECT_EQ(command(MessageID::GetAllSettings), status(1));
}

TEST_F(PortEngineLinkProcessTest, ThatAnswersTooLateAnswersTheNextCommand) {
  FakeEngineProcess engine;
  EXPECT_TRUE(command(MessageID::GetAllSettings, shortPolls).isNone());
  ASSERT_TRUE(engine.obey("reply " + mOne.path()));
  EXPECT_EQ(engine.waitForSent(), "success");
  EXPECT_EQ(command(MessageID::AddProfile), status(1));
  EXPECT_TRUE(command(MessageID::AddProfile, shortPolls).isNone());
}

TEST_F(PortEngineLinkProcessTest, ThatAnswersTwiceIsHeardTheSecondTime) {
  FakeEngineProcess engine({"on 4 reply " + mOne.path() + " ; reply " + mZero.path()});
  send(MessageID::GetAllSettings);
  EXPECT_EQ(engine.waitForSent(), "success");
  EXPECT_EQ(engine.waitForSent(), "success");
  EXPECT_TRUE(mLink.waitForReply(1, 0ms));
  EXPECT_EQ(mLink.reply(), status(0));
}

TEST_F(PortEngineLinkProcessTest, ThatTalksNonsenseFillsTheSlotWithAnEmptyDictionary) {
  FakeEngineProcess engine({"on 4 data 62706c69737430300000", "on 5 data 00"});
  EXPECT_EQ(command(MessageID::GetAllSettings), PropertyList::dictionary());
  EXPECT_EQ(command(MessageID::AddProfile), PropertyList::dictionary());
}

TEST_F(PortEngineLinkProcessTest, ThatAnswersWithoutDataIsNotHeard) {
  FakeEngineProcess engine({"on 4 empty"});
  send(MessageID::GetAllSettings);
  EXPECT_EQ(engine.waitForSent(), "success");
  EXPECT_FALSE(mLink.waitForReply(shortPolls, 1ms));
  EXPECT_TRUE(mLink.reply().isNone());
}

TEST_F(PortEngineLinkProcessTest, ThatDiesOnReceiptFailsOnlyThatCommandAndIsFoundAgainAfterItsRestart) {
  {
    FakeEngineProcess engine({"on 6 exit 3"});
    EXPECT_TRUE(command(MessageID::UpdateProfile, shortPolls).isNone());
    EXPECT_EQ(engine.process().waitForEnd(), 3);
    EXPECT_FALSE(mLink.isEngineAvailable());
    EXPECT_TRUE(command(MessageID::UpdateProfile, shortPolls).isNone());
  }
  FakeEngineProcess engine({"on 6 reply " + mZero.path()});
  EXPECT_EQ(command(MessageID::UpdateProfile), status(0));
}

TEST_F(PortEngineLinkProcessTest, ThatIsKilledLeavesTheLinkUsable) {
  FakeEngineProcess first({"on 4 reply " + mZero.path()});
  EXPECT_EQ(command(MessageID::GetAllSettings), status(0));
  first.process().signal(SIGKILL);
  EXPECT_EQ(first.process().waitForEnd(), 128 + SIGKILL);
  EXPECT_TRUE(command(MessageID::GetAllSettings, shortPolls).isNone());
  FakeEngineProcess second({"on 4 reply " + mOne.path()});
  EXPECT_EQ(command(MessageID::GetAllSettings), status(1));
}

TEST_F(PortEngineLinkProcessTest, ThatNeverReturnsFromSendHoldsTheSenderUpToTheTimeOutOnly) {
  FakeEngineProcess engine({"on 4 freeze"});
  send(MessageID::GetAllSettings);
  EXPECT_TRUE(mLink.isEngineAvailable());
  EXPECT_FALSE(mLink.waitForReply(shortPolls, 1ms));
  EXPECT_EQ(engine.waitForRequest(4)->body, mRequest);
}

TEST_F(PortEngineLinkProcessTest, ThatIsSilentLeavesTheWaitingThreadItsTurns) {
  int turns = 0;
  mLink.setWhileWaiting([&] {
    ++turns;
    return true;
  });
  const FakeEngineProcess engine({"on * silent"});
  EXPECT_TRUE(command(MessageID::GetAllSettings, 20).isNone());
  EXPECT_GE(turns, 3);
}

TEST_F(PortEngineLinkProcessTest, ThatNeverReturnsFromSendIsGivenUpAtTheFirstTurnThatSaysSo) {
  FakeEngineProcess engine({"on 4 freeze"});
  int turns = 0;
  mLink.setWhileWaiting([&] { return ++turns < 3; });
  send(MessageID::GetAllSettings);
  EXPECT_EQ(turns, 3);
  EXPECT_FALSE(mLink.waitForReply());
  EXPECT_EQ(turns, 4);
}

TEST_F(PortEngineLinkProcessTest, IsToldOfWhenItGoesAndComes) {
  std::vector<bool> told;
  mLink.watchEngine([&](bool isThere) { told.push_back(isThere); });
  { const FakeEngineProcess engine; }
  ASSERT_TRUE(test::serveBusUntil([&] { return told.size() == 2; }));
  const FakeEngineProcess second;
  ASSERT_TRUE(test::serveBusUntil([&] { return told.size() == 3; }));
  EXPECT_EQ(told, (std::vector<bool>{true, false, true}));
}

TEST_F(PortEngineLinkProcessTest, ReceivesTheReleaseWithTheProductAlone) {
  FakeEngineProcess engine({"on * reply " + mZero.path()});
  const PropertyList release = PropertyList::dictionary({{requestKeys::ProductID, wirelessProductID}});
  EXPECT_EQ(mLink.send(release, MessageID::ReleaseDevice), sendRequestResult);
  EXPECT_EQ(engine.takeRequests(), (std::vector<FakeEngineProcess::Request>{{38, release}}));
  EXPECT_EQ(engine.waitForSent(), "no-port");
}

TEST_F(PortEngineLinkProcessTest, PostsTheAnswerToAQueryAsANotification) {
  const PropertyList battery =
      PropertyList::dictionary({{newsKeys::MessageID, 15}, {newsKeys::BatteryPercentLevel, 80}});
  const PropertyListFile file(battery);
  FakeEngineProcess engine({"on 15 post commandReplyNotification273 \"\" " + file.path()});
  auto& center = DistributedNotificationCenter::defaultCenter();
  std::vector<PropertyList> heard;
  center.addObserver(this, notificationNames::commandReply(wiredProductID),
                     [&](const Notification& news) { heard.push_back(news.userInfo); });
  send(MessageID::QueryBatteryLevel);
  EXPECT_TRUE(test::serveBusUntil([&] { return !heard.empty(); }));
  EXPECT_EQ(heard, std::vector<PropertyList>{battery});
  EXPECT_TRUE(mLink.reply().isNone());
  center.removeObserver(this);
}

}  // namespace
}  // namespace vorn
