#include "ports/PortWatch.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <memory>
#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

class PortWatchTest : public testing::Test {
 protected:
  // Another connection's port, in place of the one before.
  void createPort(const std::string& name) {
    mThread.run([&] {
      mPort.reset();
      mPort = LocalMessagePort::create(name, {});
    });
  }
  void removePort() {
    mThread.run([&] { mPort.reset(); });
  }

  test::PrivateBus mBus;
  std::unique_ptr<LocalMessagePort> mPort;
  test::LoopThread mThread;
  int mLosses = 0;
};

TEST_F(PortWatchTest, TellsEveryLossOfThePortAndNothingElse) {
  createPort("Watched");
  const PortWatch watch("Watched", [&] { ++mLosses; });
  EXPECT_TRUE(watch.wasThere());
  EXPECT_EQ(watch.portName(), "Watched");
  removePort();
  ASSERT_TRUE(test::serveBusUntil([&] { return mLosses == 1; }));
  createPort("Other");
  removePort();
  createPort("Watched");
  removePort();
  ASSERT_TRUE(test::serveBusUntil([&] { return mLosses == 2; }));
}

TEST_F(PortWatchTest, KnowsThatThePortIsNotThereYet) {
  const PortWatch watch("Watched", [&] { ++mLosses; });
  EXPECT_FALSE(watch.wasThere());
  createPort("Watched");
  removePort();
  ASSERT_TRUE(test::serveBusUntil([&] { return mLosses == 1; }));
}

TEST_F(PortWatchTest, TellsEveryComingOfThePortWhereThatIsAskedFor) {
  std::vector<std::string> told;
  const PortWatch watch(
      "Watched", [&] { told.emplace_back("lost"); }, [&] { told.emplace_back("found"); });
  createPort("Watched");
  createPort("Other");
  removePort();
  createPort("Watched");
  ASSERT_TRUE(test::serveBusUntil([&] { return told.size() == 3; }));
  EXPECT_EQ(told, (std::vector<std::string>{"found", "lost", "found"}));
}

TEST_F(PortWatchTest, KnowsTheConnectionThatHasThePort) {
  createPort("Watched");
  std::string owner;
  mThread.run([&] {
    const char* name = nullptr;
    sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
    owner = name;
  });
  const PortWatch watch("Watched", [&] { ++mLosses; });
  EXPECT_EQ(watch.owner(), owner);
  removePort();
  ASSERT_TRUE(test::serveBusUntil([&] { return mLosses == 1; }));
  EXPECT_EQ(watch.owner(), "");
  createPort("Watched");
  ASSERT_TRUE(test::serveBusUntil([&] { return !watch.owner().empty(); }));
  EXPECT_EQ(watch.owner(), owner);
}

TEST_F(PortWatchTest, MayBeEndedByItsHandler) {
  createPort("Watched");
  createPort("Second");
  std::unique_ptr<PortWatch> watch;
  watch = std::make_unique<PortWatch>("Second", [&] {
    watch.reset();
    ++mLosses;
  });
  removePort();
  ASSERT_TRUE(test::serveBusUntil([&] { return mLosses == 1; }));
  EXPECT_EQ(watch, nullptr);
}

TEST_F(PortWatchTest, OfANameThatNoPortCanHaveTellsNothing) {
  for (const std::string& name : {std::string(), std::string("no name"), std::string("a\0b", 3)}) {
    const PortWatch watch(name, [&] { ++mLosses; });
    EXPECT_FALSE(watch.wasThere());
  }
}

}  // namespace
}  // namespace vorn
