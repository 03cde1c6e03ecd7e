// Answers over a bus, to ports whose owner reads nothing.
#include "core-engine/requests/ReplyPorts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <semaphore>
#include <string>
#include <thread>
#include <vector>

#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

using vorn::test::LoopThread;
using vorn::test::PrivateBus;
using vorn::test::serveBusUntil;
using Outcome = ReplyPorts::Outcome;
using Ports = BusReplyPorts;

// A connection with the ports "Deaf0", "Deaf1" and so on, which reads nothing until it goes.
class DeafOwner {
 public:
  explicit DeafOwner(int ports) : mThread([this, ports] { own(ports); }) { mIsThere.acquire(); }
  ~DeafOwner() {
    mMayGo.release();
    mThread.join();
  }
  DeafOwner(const DeafOwner&) = delete;
  DeafOwner& operator=(const DeafOwner&) = delete;

 private:
  void own(int ports) {
    std::vector<std::unique_ptr<LocalMessagePort>> owned;
    for (int number = 0; number < ports; ++number) {
      owned.push_back(LocalMessagePort::create("Deaf" + std::to_string(number),
                                               [](const LocalMessagePort::Message&) { return Bytes(); }));
    }
    mIsThere.release();
    mMayGo.acquire();
  }

  std::binary_semaphore mIsThere{0};
  std::binary_semaphore mMayGo{0};
  std::thread mThread;
};

class ReplyPortsTest : public testing::Test {
 protected:
  // Posts a message and tells whether it was kept from the bus.
  bool isDropped(const std::string& client, const std::string& port, std::size_t size = 10) {
    const auto dropped = timesTold(Outcome::Unread);
    ports.post(client, port, 1, Bytes(size), [this](Outcome outcome) { outcomes.push_back(outcome); });
    return timesTold(Outcome::Unread) > dropped;
  }
  std::size_t timesTold(Outcome outcome) const {
    return static_cast<std::size_t>(std::ranges::count(outcomes, outcome));
  }
  static std::string deaf(std::size_t number) { return "Deaf" + std::to_string(number); }
  bool isToldOf(std::size_t count, Outcome outcome) {
    return serveBusUntil([&] { return timesTold(outcome) == count; });
  }

  PrivateBus bus;
  std::vector<Outcome> outcomes;
  Ports ports;
};

TEST_F(ReplyPortsTest, DropsWhatAClientLeavesUnreadOnHoweverManyPorts) {
  const DeafOwner owner(100);
  for (std::size_t port = 0; port < Ports::maximumUnread; ++port) EXPECT_FALSE(isDropped(":2.1", deaf(port)));
  EXPECT_TRUE(isDropped(":2.1", deaf(99)));
  EXPECT_FALSE(isDropped(":2.2", deaf(99)));
}

TEST_F(ReplyPortsTest, DropsWhatIsUnreadBeyondTheBoundOfAll) {
  const DeafOwner owner(100);
  const std::size_t large = 4'000'000;
  std::size_t kept = 0;
  for (std::size_t port = 0; port < 100; ++port) {
    for (int count = 0; count < 2; ++count) {
      if (!isDropped(":2." + std::to_string(port), deaf(port), large)) kept += large;
    }
  }
  EXPECT_LE(kept, Ports::maximumTotalSize + Ports::maximumFirstSize + large);
  EXPECT_GT(kept, Ports::maximumTotalSize - large);
}

TEST_F(ReplyPortsTest, AnswersAnotherClientThoughManyPortsAreNotRead) {
  const DeafOwner owner(100);
  for (std::size_t port = 0; port < 100; ++port) {
    for (int count = 0; count < 4; ++count) isDropped(":2." + std::to_string(port % 10), deaf(port));
  }
  EXPECT_EQ(timesTold(Outcome::Unread), 400 - Ports::maximumTotal);
  LoopThread reader;
  std::unique_ptr<LocalMessagePort> port;
  reader.run(
      [&] { port = LocalMessagePort::create("Read", [](const LocalMessagePort::Message&) { return Bytes(); }); });
  EXPECT_FALSE(isDropped(":3.1", "Read"));
  EXPECT_TRUE(isDropped(":3.1", "Read"));
  EXPECT_TRUE(isToldOf(1, Outcome::Sent));
  EXPECT_FALSE(isDropped(":3.1", "Read"));
  reader.run([&] { port.reset(); });
}

TEST_F(ReplyPortsTest, HasRoomAgainWhenTheOwnerOfThePortsHasGone) {
  {
    const DeafOwner owner(1);
    for (std::size_t count = 0; count < Ports::maximumUnread; ++count) EXPECT_FALSE(isDropped(":2.1", deaf(0)));
    EXPECT_TRUE(isDropped(":2.1", deaf(0)));
  }
  EXPECT_TRUE(isToldOf(Ports::maximumUnread, Outcome::Gone));
  const DeafOwner next(1);
  EXPECT_FALSE(isDropped(":2.1", deaf(0)));
}

TEST_F(ReplyPortsTest, TellsOfAPortThatNobodyHas) {
  EXPECT_FALSE(isDropped(":2.1", "Missing"));
  EXPECT_TRUE(isToldOf(1, Outcome::NoSuchPort));
}

}  // namespace
}  // namespace vorn::engine::test
