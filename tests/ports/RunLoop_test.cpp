#include "ports/RunLoop.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ports/BusConnection.h"
#include "ports/BusMethodCall.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "support/LoopPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;

class RunLoopTest : public testing::Test {
 protected:
  test::PrivateBus mBus;
};

TEST_F(RunLoopTest, ReturnsAtOnceWhenItWasStoppedBefore) {
  RunLoop loop;
  loop.stop();
  EXPECT_TRUE(loop.run());
}

TEST_F(RunLoopTest, CanBeStoppedFromAnotherThreadAndRunAgain) {
  RunLoop loop;
  for (int round = 0; round < 2; ++round) {
    std::thread other([&] { loop.stop(); });
    EXPECT_TRUE(loop.run());
    other.join();
  }
}

TEST_F(RunLoopTest, PerformsTheWorkOfOtherThreadsInOrderOnItsOwn) {
  RunLoop loop;
  std::vector<int> order;
  const auto owner = std::this_thread::get_id();
  std::thread other([&] {
    for (int i = 0; i < 100; ++i)
      loop.perform([&, i] {
        EXPECT_EQ(std::this_thread::get_id(), owner);
        order.push_back(i);
        if (i == 99) loop.stop();
      });
  });
  EXPECT_TRUE(loop.run());
  other.join();
  std::vector<int> expected;
  for (int i = 0; i < 100; ++i) expected.push_back(i);
  EXPECT_EQ(order, expected);
}

// The bus's own object answers.
void askForTheBusId(std::vector<BusAnswer::Status>& answers) {
  callBusMethodLater({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", Bus::System}, "GetId",
                     {}, 20s, [&answers](const BusAnswer& answer) { answers.push_back(answer.status); });
}

TEST_F(RunLoopTest, ServesTheSystemBusFromWhenItIsAskedForAndSurvivesItsEnd) {
  auto system = std::make_unique<test::PrivateBus>(test::PrivateBus::systemAddress);
  std::vector<BusAnswer::Status> answers;
  BusConnection::forThisThread(Bus::System);  // before the loop is there
  RunLoop loop;
  askForTheBusId(answers);
  ASSERT_TRUE(test::runUntil(loop, [&] { return answers.size() == 1; }));
  system->pause();
  askForTheBusId(answers);
  system->end();
  ASSERT_TRUE(test::runUntil(loop, [&] { return answers.size() == 2; }));
  ASSERT_TRUE(test::runUntil(loop, [&] { return !BusConnection::forThisThread(Bus::System).isOpen(); }));
  askForTheBusId(answers);
  system.reset();
  system = std::make_unique<test::PrivateBus>(test::PrivateBus::systemAddress);
  askForTheBusId(answers);
  ASSERT_TRUE(test::runUntil(loop, [&] { return answers.size() == 4; }));
  using Status = BusAnswer::Status;
  EXPECT_EQ(answers, (std::vector{Status::Success, Status::NoBus, Status::NoBus, Status::Success}));
}

TEST_F(RunLoopTest, FiresTimersOnceInTheOrderOfTheirTimes) {
  RunLoop loop;
  std::vector<int> order;
  loop.addTimer(30ms, [&] { order.push_back(3); });
  loop.addTimer(60ms, [&] { loop.stop(); });
  loop.addTimer(-5ms, [&] { order.push_back(1); });
  loop.addTimer(10ms, [&] { order.push_back(2); });
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_F(RunLoopTest, FiresTimersOfTheSameDelayInTheOrderOfTheirMaking) {
  RunLoop loop;
  std::vector<int> order;
  std::vector<int> expected;
  for (int i = 0; i < 50; ++i) {
    loop.addTimer(0us, [&, i] { order.push_back(i); });
    expected.push_back(i);
  }
  loop.addTimer(0us, [&] { loop.stop(); });
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(order, expected);
}

TEST_F(RunLoopTest, NeverFiresARemovedTimer) {
  RunLoop loop;
  std::vector<int> order;
  RunLoop::Timer victim = 0;
  RunLoop::Timer self = 0;
  loop.addTimer(0us, [&] {
    order.push_back(1);
    loop.removeTimer(victim);
  });
  victim = loop.addTimer(5ms, [&] { order.push_back(2); });
  self = loop.addTimer(10ms, [&] {
    order.push_back(3);
    loop.removeTimer(self);
    loop.removeTimer(987654);
    loop.addTimer(0us, [&] {
      order.push_back(4);
      loop.stop();
    });
  });
  EXPECT_NE(victim, 0U);
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(order, (std::vector<int>{1, 3, 4}));
}

TEST_F(RunLoopTest, CallsTheWorkOfASignal) {
  RunLoop loop;
  int received = 0;
  loop.onSignal(SIGUSR1, [&] {
    ++received;
    loop.stop();
  });
  raise(SIGUSR1);
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(received, 1);
}

TEST_F(RunLoopTest, DeliversWhatCameDuringABlockingCallOfItsOwn) {
  RunLoop loop;
  auto& center = DistributedNotificationCenter::defaultCenter();
  int received = 0;
  center.addObserver(&loop, "News", [&](const Notification&) {
    ++received;
    loop.stop();
  });
  loop.addTimer(0us, [&] {
    {
      test::LoopThread elsewhere;
      elsewhere.run([] {
        DistributedNotificationCenter::defaultCenter().post("News", "", PropertyList());
        RemoteMessagePort::lookUp("BehindThePost");
      });
    }
    RemoteMessagePort::lookUp("Anything");
    EXPECT_EQ(received, 0);
  });
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(received, 1);
  center.removeObserver(&loop);
}

TEST_F(RunLoopTest, ReturnsFalseWhenTheBusGoesAway) {
  RunLoop loop;
  loop.addTimer(0us, [&] { mBus.end(); });
  EXPECT_FALSE(loop.run());
}

TEST_F(RunLoopTest, DoesIdleWorkAfterEverythingElseUntilThereIsNone) {
  RunLoop loop;
  std::vector<int> order;
  int left = 2;
  loop.setIdleWork([&] {
    order.push_back(0);
    if (--left > 0) loop.perform([&] { order.push_back(2); });
    if (left == 0) loop.stop();
    return left > 0;
  });
  loop.wakeIdleWork();
  loop.perform([&] { order.push_back(1); });
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(order, (std::vector<int>{1, 0, 2, 0}));
}

struct Pipe {
  std::array<int, 2> ends{};
  Pipe() { EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0); }
  ~Pipe() {
    for (const int end : ends) close(end);
  }
  void write(char byte) const { EXPECT_EQ(::write(ends[1], &byte, 1), 1); }
  char read() const {
    char byte = 0;
    return ::read(ends[0], &byte, 1) == 1 ? byte : '-';
  }
};

TEST_F(RunLoopTest, CallsAWatchAsLongAsItsDescriptorCanBeReadFrom) {
  RunLoop loop;
  const Pipe pipe;
  std::string received;
  EXPECT_NE(loop.watch(pipe.ends[0],
                       [&] {
                         received += pipe.read();
                         if (received.size() == 3) loop.stop();
                       }),
            0U);
  for (const char byte : {'a', 'b', 'c'}) pipe.write(byte);
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(received, "abc");
}

TEST_F(RunLoopTest, AWatchMayEndItselfAndOthersThatAreDueWithinItsWork) {
  RunLoop loop;
  const Pipe one;
  const Pipe other;
  int calls = 0;
  std::array<RunLoop::Watch, 2> watches{};
  const auto endBoth = [&] {
    ++calls;
    for (const RunLoop::Watch each : watches) loop.unwatch(each);
    loop.addTimer(5ms, [&] { loop.stop(); });
  };
  watches = {loop.watch(one.ends[0], endBoth), loop.watch(other.ends[0], endBoth)};
  one.write('a');
  other.write('b');
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(calls, 1);
  loop.unwatch(watches[0]);
}

TEST_F(RunLoopTest, DoesNotWatchWhatIsNoDescriptor) {
  RunLoop loop;
  EXPECT_EQ(loop.watch(-1, [] {}), 0U);
}

}  // namespace
}  // namespace vorn
