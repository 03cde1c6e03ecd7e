#include "ports/PortOwner.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <memory>
#include <optional>
#include <string>

#include "ports/BusConnection.h"
#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

class PortOwnerTest : public testing::Test {
 protected:
  PortOwnerTest() {
    mThread.run([this] {
      mPort = LocalMessagePort::create("Asked", {});
      const char* name = nullptr;
      sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
      mOwner = name;
    });
  }
  ~PortOwnerTest() override {
    mThread.run([this] { mPort.reset(); });
  }

  test::PrivateBus mBus;
  std::unique_ptr<LocalMessagePort> mPort;
  std::string mOwner;
  test::LoopThread mThread;
  int mMissing = 0;
};

TEST_F(PortOwnerTest, IsKnownAsSoonAsTheBusHasAnswered) {
  const PortOwner owner("Asked", [&] { ++mMissing; });
  EXPECT_EQ(owner.connection(), "");
  ASSERT_TRUE(test::serveBusUntil([&] { return !owner.connection().empty(); }));
  EXPECT_EQ(owner.connection(), mOwner);
  EXPECT_EQ(mMissing, 0);
}

TEST_F(PortOwnerTest, IsAskedForWithoutWaitingForTheBus) {
  BusConnection::forThisThread();
  mBus.pause();
  const PortOwner owner("Asked", [&] { ++mMissing; });
  mBus.resume();
  // One that had waited in vain would have given up.
  ASSERT_TRUE(test::serveBusUntil([&] { return !owner.connection().empty(); }));
  EXPECT_EQ(owner.connection(), mOwner);
}

TEST_F(PortOwnerTest, IsKnownBeforeTheAnswerToWhatIsSentLater) {
  const PortOwner owner("Asked", [&] { ++mMissing; });
  bool isAnswered = false;
  bool wasKnown = false;
  RemoteMessagePort::ping("Asked", [&](RemoteMessagePort::Status) {
    isAnswered = true;
    wasKnown = owner.connection() == mOwner;
  });
  ASSERT_TRUE(test::serveBusUntil([&] { return isAnswered; }));
  EXPECT_TRUE(wasKnown);
}

TEST_F(PortOwnerTest, TellsThatNobodyHasThePortOrCanHaveIt) {
  for (const std::string& name :
       {std::string("Nobody"), std::string(), std::string("no name"), std::string("Asked\0", 6)}) {
    std::optional<PortOwner> owner;
    owner.emplace(name, [&] {
      ++mMissing;
      owner.reset();
    });
    ASSERT_TRUE(test::serveBusUntil([&] { return !owner; })) << name;
  }
  EXPECT_EQ(mMissing, 4);
}

TEST_F(PortOwnerTest, ThatIsNoLongerAskedForTellsNothing) {
  std::optional<PortOwner> owner(std::in_place, "Nobody", [&] { ++mMissing; });
  owner.reset();
  bool isAnswered = false;
  RemoteMessagePort::ping("Asked", [&](RemoteMessagePort::Status) { isAnswered = true; });
  ASSERT_TRUE(test::serveBusUntil([&] { return isAnswered; }));
  EXPECT_EQ(mMissing, 0);
}

}  // namespace
}  // namespace vorn
