#include "ports/BusConnection.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
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

// A way to the bus that can be stopped up: from then on it takes so many bytes and no more.
class NarrowWay {
 public:
  // Connections of this process that are opened from now on go this way.
  explicit NarrowWay(const PrivateBus& bus) {
    const std::string prefix = "unix:path=";
    const std::string busPath = bus.address().substr(prefix.size(), bus.address().find(',') - prefix.size());
    mPath = busPath + "-way";
    mListening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un own = address(mPath);
    EXPECT_EQ(bind(mListening, reinterpret_cast<const sockaddr*>(&own), sizeof own), 0);
    EXPECT_EQ(listen(mListening, 1), 0);
    setenv("DBUS_SESSION_BUS_ADDRESS", (prefix + mPath).c_str(), 1);
    mThread = std::jthread([this, busPath](const std::stop_token& stop) { carry(busPath, stop); });
  }
  ~NarrowWay() {
    mThread.request_stop();
    mThread.join();
    close(mListening);
  }
  NarrowWay(const NarrowWay&) = delete;
  NarrowWay& operator=(const NarrowWay&) = delete;

  void stopUpAfter(std::size_t bytes) { mLeft = bytes; }

 private:
  static sockaddr_un address(const std::string& path) {
    sockaddr_un result{};
    result.sun_family = AF_UNIX;
    path.copy(result.sun_path, sizeof result.sun_path - 1);
    return result;
  }
  void carry(const std::string& busPath, const std::stop_token& stop) {
    const int client = accept(mListening, nullptr, nullptr);
    const int daemon = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un there = address(busPath);
    EXPECT_EQ(connect(daemon, reinterpret_cast<const sockaddr*>(&there), sizeof there), 0);
    while (!stop.stop_requested()) {
      pollfd watched[] = {{client, static_cast<short>(mLeft > 0 ? POLLIN : 0), 0}, {daemon, POLLIN, 0}};
      poll(watched, 2, 10);
      if ((watched[0].revents & POLLIN) != 0) mLeft -= pass(client, daemon, mLeft);
      if ((watched[1].revents & POLLIN) != 0) pass(daemon, client, static_cast<std::size_t>(-1));
    }
    close(client);
    close(daemon);
  }
  static std::size_t pass(int from, int to, std::size_t maximum) {
    char buffer[65536];
    const ssize_t taken = read(from, buffer, std::min(sizeof buffer, maximum));
    for (ssize_t passed = 0; passed < taken;) {
      const ssize_t written = send(to, buffer + passed, static_cast<std::size_t>(taken - passed), MSG_NOSIGNAL);
      if (written <= 0) break;
      passed += written;
    }
    return static_cast<std::size_t>(std::max<ssize_t>(taken, 0));
  }

  std::string mPath;
  int mListening = -1;
  std::atomic<std::size_t> mLeft = static_cast<std::size_t>(-1);
  std::jthread mThread;
};

TEST(BusConnectionTest, DoesNotWaitForEverAtItsEndForABusThatTakesALittleAndNoMore) {
  const PrivateBus bus;
  LoopThread elsewhere;
  std::unique_ptr<LocalMessagePort> port;
  elsewhere.run([&] { port = LocalMessagePort::create("Elsewhere", [](const auto&) { return Bytes(); }); });
  {
    NarrowWay way(bus);
    std::thread([&way] {
      const auto remote = RemoteMessagePort::lookUp("Elsewhere");
      ASSERT_TRUE(remote);
      // More than the socket holds, so that it has room when the connection is to be closed, and less than is to come.
      way.stopUpAfter(20'000'000);
      EXPECT_EQ(remote->post(1, Bytes(60'000'000)), RemoteMessagePort::Status::Success);
      const auto begun = std::chrono::steady_clock::now();
      BusConnection::forThisThread().close();
      EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(10));
    }).join();
  }
  elsewhere.run([&] { port.reset(); });
}

TEST(BusConnectionTest, OfTheSystemBusIsAnotherOne) {
  const PrivateBus session;
  const PrivateBus system(PrivateBus::systemAddress);
  std::thread([] {
    BusConnection& connection = BusConnection::forThisThread(Bus::System);
    EXPECT_TRUE(connection.isOpen()) << connection.error();
    EXPECT_EQ(&connection, &BusConnection::forThisThread(Bus::System));
    EXPECT_NE(connection.handle(), BusConnection::forThisThread().handle());
  }).join();
}

TEST(BusConnectionTest, OfTheSystemBusFailsAsAValueWhereThereIsNone) {
  const PrivateBus session;
  const PrivateBus system(PrivateBus::systemAddress);  // restores the variable at the end
  setenv(PrivateBus::systemAddress, "unix:path=/nonexistent/bus", 1);
  std::thread([] {
    const BusConnection& connection = BusConnection::forThisThread(Bus::System);
    EXPECT_FALSE(connection.isOpen());
    EXPECT_EQ(connection.error(), "No system bus: No such file or directory");
    EXPECT_TRUE(BusConnection::forThisThread().isOpen());
  }).join();
}

TEST(BusConnectionTest, WritesAtItsEndWhatTheBusTakes) {
  const PrivateBus bus;
  LoopThread elsewhere;
  std::unique_ptr<LocalMessagePort> port;
  std::promise<std::size_t> received;
  elsewhere.run([&] {
    port = LocalMessagePort::create("Elsewhere", [&](const LocalMessagePort::Message& message) {
      received.set_value(message.data.size());
      return Bytes();
    });
  });
  std::thread([] {
    const auto remote = RemoteMessagePort::lookUp("Elsewhere");
    ASSERT_TRUE(remote);
    EXPECT_EQ(remote->post(1, Bytes(2'000'000)), RemoteMessagePort::Status::Success);
    BusConnection::forThisThread().close();
  }).join();
  EXPECT_EQ(received.get_future().get(), 2'000'000U);
  elsewhere.run([&] { port.reset(); });
}

}  // namespace
}  // namespace vorn
