#include "ports/NameWatch.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <optional>
#include <string>
#include <vector>

#include "ports/RunLoop.h"
#include "support/LoopPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

constexpr const char* name = "org.vorn.NameTest";
using Owners = std::vector<std::string>;

// The name is on the system bus, or not, from a thread of its own.
class NameWatchTest : public testing::Test {
 protected:
  // Returns the connection that has the name now.
  std::string take() {
    std::string connection;
    mThread.run([&] {
      sd_bus* const bus = BusConnection::forThisThread(Bus::System).handle();
      EXPECT_GE(sd_bus_request_name(bus, name, 0), 0);
      const char* unique = nullptr;
      sd_bus_get_unique_name(bus, &unique);
      connection = unique;
    });
    return connection;
  }
  void giveUp() {
    mThread.run([] { sd_bus_release_name(BusConnection::forThisThread(Bus::System).handle(), name); });
  }
  NameWatch::Handler note() {
    return [this](const std::string& owner) { mOwners.push_back(owner); };
  }
  bool hasTold(std::size_t count) {
    return test::runUntil(mLoop, [&] { return mOwners.size() >= count; });
  }

  test::PrivateBus mSession;
  test::PrivateBus mSystem{test::PrivateBus::systemAddress};
  RunLoop mLoop;
  Owners mOwners;
  test::LoopThread mThread;
};

TEST_F(NameWatchTest, TellsWhoHasTheNameAndEveryChangeOfThat) {
  const NameWatch watch(Bus::System, name, note());
  ASSERT_TRUE(hasTold(1));
  const std::string connection = take();
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(watch.owner(), connection);
  giveUp();
  ASSERT_TRUE(hasTold(3));
  take();
  ASSERT_TRUE(hasTold(4));
  EXPECT_EQ(mOwners, (Owners{"", connection, "", connection}));
}

TEST_F(NameWatchTest, TellsOfANameThatIsThereAlready) {
  const std::string connection = take();
  const NameWatch watch(Bus::System, name, note());
  EXPECT_EQ(watch.owner(), "");
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mOwners, Owners{connection});
}

TEST_F(NameWatchTest, WorksOnTheBusOfTheSessionToo) {
  take();
  const NameWatch watch(Bus::Session, name, note());
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mOwners, Owners{""});
}

TEST_F(NameWatchTest, DoesNotWaitForABusThatHangs) {
  const std::string connection = take();
  mSystem.pause();
  const NameWatch watch(Bus::System, name, note());
  // Whatever the loop has to do besides goes on.
  bool isDone = false;
  mLoop.perform([&] { isDone = true; });
  EXPECT_TRUE(test::runUntil(mLoop, [&] { return isDone; }));
  EXPECT_EQ(mOwners, Owners{});
  mSystem.resume();
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mOwners, Owners{connection});
}

TEST_F(NameWatchTest, TakesTheEndOfTheBusForTheEndOfTheName) {
  const std::string connection = take();
  const NameWatch watch(Bus::System, name, note());
  ASSERT_TRUE(hasTold(1));
  mSystem.end();
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mOwners, (Owners{connection, ""}));
}

TEST_F(NameWatchTest, HearsOfTheEndOfItsBusWhenThereIsANewOneAlready) {
  const std::string connection = take();
  const NameWatch watch(Bus::System, name, note());
  ASSERT_TRUE(hasTold(1));
  mSystem.end();
  const test::PrivateBus next(test::PrivateBus::systemAddress);
  Owners ofNext;
  const NameWatch watchOfNext(Bus::System, name, [&](const std::string& owner) { ofNext.push_back(owner); });
  ASSERT_TRUE(hasTold(2));
  ASSERT_TRUE(test::runUntil(mLoop, [&] { return !ofNext.empty(); }));
  EXPECT_EQ(mOwners, (Owners{connection, ""}));
  EXPECT_EQ(ofNext, Owners{""});
}

TEST_F(NameWatchTest, MayEndInItsHandler) {
  std::optional<NameWatch> watch;
  watch.emplace(Bus::System, name, [&](const std::string& owner) {
    mOwners.push_back(owner);
    watch.reset();
  });
  const NameWatch other(Bus::System, name, note());
  take();
  ASSERT_TRUE(hasTold(2));
  EXPECT_FALSE(watch);
}

TEST_F(NameWatchTest, TellsNothingWithoutABus) {
  mSystem.end();
  const NameWatch watch(Bus::System, name, note());
  const NameWatch withoutAName(Bus::Session, "no name", note());
  bool isDone = false;
  mLoop.perform([&] { isDone = true; });
  EXPECT_TRUE(test::runUntil(mLoop, [&] { return isDone; }));
  EXPECT_EQ(mOwners, Owners{});
}

}  // namespace
}  // namespace vorn
