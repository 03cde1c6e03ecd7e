#include "ports/BusConnection.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>

#include <thread>

#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "ports/SingleInstance.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using test::LoopThread;
using test::PrivateBus;

// Posts from another connection and returns when the bus has passed everything on.
void postFromElsewhere(int count, const std::string& name) {
  LoopThread elsewhere;
  elsewhere.run([&] {
    for (int i = 0; i < count; ++i) DistributedNotificationCenter::defaultCenter().post(name, "", i);
    RemoteMessagePort::lookUp("BehindThePosts");
  });
}

bool isReadable(const BusConnection& connection) {
  pollfd watched{connection.descriptor(), POLLIN, 0};
  return poll(&watched, 1, 0) > 0;
}

TEST(BusConnectionTest, FailsAsAValueWhereThereIsNoBus) {
  const PrivateBus bus;  // restores the variable at the end
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
  std::thread([] {
    BusConnection& connection = BusConnection::forThisThread();
    EXPECT_FALSE(connection.isOpen());
    EXPECT_EQ(connection.error(), "No session bus: No such file or directory");
    EXPECT_EQ(connection.descriptor(), -1);
    EXPECT_EQ(connection.pollEvents(), 0);
    EXPECT_EQ(connection.timeout(), std::nullopt);
    EXPECT_EQ(connection.handle(), nullptr);
    EXPECT_FALSE(connection.process());

    EXPECT_FALSE(RemoteMessagePort::lookUp("Anything"));
    LocalMessagePort::Failure failure = LocalMessagePort::Failure::Other;
    EXPECT_EQ(LocalMessagePort::create(
                  "Anything", [](const auto&) { return Bytes(); }, &failure),
              nullptr);
    EXPECT_EQ(failure, LocalMessagePort::Failure::NoBus);
    bool isTaken = true;
    EXPECT_EQ(SingleInstance::claim("org.vorn.Test", {}, &isTaken), nullptr);
    EXPECT_FALSE(isTaken);
    EXPECT_FALSE(SingleInstance::activateOther("org.vorn.Test", ""));
    auto& center = DistributedNotificationCenter::defaultCenter();
    center.addObserver(&center, "News", [](const Notification&) {});
    center.post("News", "", PropertyList());
    center.removeObserver(&center);
    RunLoop loop;
    EXPECT_FALSE(loop.run());
  }).join();
}

TEST(BusConnectionTest, IsTheSameForEveryCallOfOneThreadAndAnotherForAnotherThread) {
  const PrivateBus bus;
  BusConnection& connection = BusConnection::forThisThread();
  EXPECT_TRUE(connection.isOpen());
  EXPECT_EQ(connection.error(), "");
  EXPECT_EQ(&BusConnection::forThisThread(), &connection);
  std::thread([&connection] { EXPECT_NE(&BusConnection::forThisThread(), &connection); }).join();
}

TEST(BusConnectionTest, IsOpenedAnewByTheNextCallAfterTheBusWentAway) {
  {
    PrivateBus first;
    ASSERT_TRUE(BusConnection::forThisThread().isOpen());
    first.end();
    EXPECT_FALSE(test::serveBusUntil([] { return false; }));
    EXPECT_FALSE(RemoteMessagePort::lookUp("Anything"));
    EXPECT_FALSE(BusConnection::forThisThread().isOpen());
  }
  const PrivateBus second;
  EXPECT_TRUE(BusConnection::forThisThread().isOpen());
  LoopThread elsewhere;
  std::unique_ptr<LocalMessagePort> port;
  elsewhere.run([&] { port = LocalMessagePort::create("Reopened", [](const auto&) { return Bytes(); }); });
  EXPECT_TRUE(RemoteMessagePort::lookUp("Reopened"));
  elsewhere.run([&] { port.reset(); });
}

TEST(BusConnectionTest, TellsTheEventLoopWhenItsDescriptorIsAnotherOne) {
  int announced = 0;
  {
    PrivateBus first;
    BusConnection::forThisThread().setQueuedHandler([&] { ++announced; });
    first.end();
  }
  const PrivateBus second;
  EXPECT_TRUE(BusConnection::forThisThread().isOpen());
  EXPECT_EQ(announced, 1);
  BusConnection::forThisThread().setQueuedHandler({});
}

TEST(BusConnectionTest, AnnouncesOnceWhatABlockingCallReceivedBesides) {
  const PrivateBus bus;
  BusConnection& connection = BusConnection::forThisThread();
  auto& center = DistributedNotificationCenter::defaultCenter();
  std::vector<PropertyList> received;
  center.addObserver(&bus, "News", [&](const Notification& news) { received.push_back(news.userInfo); });
  int announced = 0;
  connection.setQueuedHandler([&] { ++announced; });
  {
    LoopThread elsewhere;
    elsewhere.run([] {
      DistributedNotificationCenter::defaultCenter().post("News", "", PropertyList::dictionary({{"number", 1}}));
      DistributedNotificationCenter::defaultCenter().post("News", "", PropertyList::dictionary({{"number", 2}}));
      RemoteMessagePort::lookUp("BehindThePosts");
    });
  }
  RemoteMessagePort::lookUp("Anything");
  EXPECT_EQ(announced, 1);
  EXPECT_FALSE(isReadable(connection));
  EXPECT_EQ(connection.timeout(), std::chrono::microseconds(0));
  EXPECT_TRUE(received.empty());
  EXPECT_TRUE(connection.process());
  EXPECT_EQ(received, (std::vector<PropertyList>{PropertyList::dictionary({{"number", 1}}),
                                                 PropertyList::dictionary({{"number", 2}})}));
  RemoteMessagePort::lookUp("Anything");
  EXPECT_EQ(announced, 1);
  connection.setQueuedHandler({});
  center.removeObserver(&bus);
}

TEST(BusConnectionTest, HandlesAFloodInSeveralGoesAndLosesNothing) {
  const PrivateBus bus;
  auto& center = DistributedNotificationCenter::defaultCenter();
  int received = 0;
  center.addObserver(&bus, "News", [&](const Notification&) { ++received; });
  postFromElsewhere(1000, "News");
  EXPECT_TRUE(BusConnection::forThisThread().process());
  EXPECT_GT(received, 0);
  EXPECT_LT(received, 1000);
  EXPECT_TRUE(test::serveBusUntil([&] { return received == 1000; }));
  center.removeObserver(&bus);
}

}  // namespace
}  // namespace vorn
