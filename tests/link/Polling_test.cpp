#include "link/Polling.h"

#include <gtest/gtest.h>

#include "protocol/EngineProtocol.h"

namespace vorn {
namespace {

// Polls for something that appears during the given sleep (0 = it is there from the start, -1 = never).
struct Outcome {
  bool isFound = false;
  int sleeps = 0;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome pollFor(int appearsInSleep, int polls) {
  Outcome outcome;
  outcome.isFound = poll(
      polls, [&] { return appearsInSleep >= 0 && outcome.sleeps >= appearsInSleep; }, [&] { ++outcome.sleeps; });
  return outcome;
}

TEST(PollingTest, WithoutSuccessSleepsItsFullCount) {
  EXPECT_EQ(maximumPolls, 601);
  EXPECT_EQ(pollFor(-1, maximumPolls), (Outcome{false, 601}));
}

TEST(PollingTest, DoesNotSleepForWhatIsThere) {
  EXPECT_EQ(pollFor(0, maximumPolls), (Outcome{true, 0}));
}

TEST(PollingTest, EndsWithTheSleepInWhichItAppears) {
  EXPECT_EQ(pollFor(1, maximumPolls), (Outcome{true, 1}));
  EXPECT_EQ(pollFor(600, maximumPolls), (Outcome{true, 600}));
}

TEST(PollingTest, StillFindsWhatCameDuringTheLastSleep) {
  EXPECT_EQ(pollFor(601, maximumPolls), (Outcome{true, 601}));
}

TEST(PollingTest, ZeroTimesNeverSleeps) {
  EXPECT_EQ(pollFor(-1, 0), (Outcome{false, 0}));
}

}  // namespace
}  // namespace vorn
