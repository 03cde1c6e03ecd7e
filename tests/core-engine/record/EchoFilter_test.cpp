#include "core-engine/record/EchoFilter.h"

#include <gtest/gtest.h>

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Origin = EchoFilter::Origin;

const KeyChanged pressedA{7, 4, true};
const KeyChanged releasedA{7, 4, false};

class EchoFilterTest : public testing::TestWithParam<Origin> {
 protected:
  // From the parameter's origin, and from the other one.
  bool isEcho(const KeyChanged& key, Scheduler::Duration now) { return filter.isEcho(GetParam(), key, now); }
  bool isOthersEcho(const KeyChanged& key, Scheduler::Duration now) {
    return filter.isEcho(GetParam() == Origin::Device ? Origin::Window : Origin::Device, key, now);
  }

  EchoFilter filter;
};

TEST_P(EchoFilterTest, FindsWhatTheOtherHasToldWithinASecond) {
  EXPECT_FALSE(isEcho(pressedA, 5s));
  EXPECT_TRUE(isOthersEcho(pressedA, 6s));
  EXPECT_FALSE(isEcho(pressedA, 7s));
  EXPECT_FALSE(isOthersEcho(pressedA, 8s + 1us));
}

TEST_P(EchoFilterTest, TellsPressesFromReleasesAndKeysFromOthers) {
  EXPECT_FALSE(isEcho(pressedA, 0s));
  EXPECT_FALSE(isOthersEcho(releasedA, 0s));
  EXPECT_FALSE(isOthersEcho({7, 5, true}, 0s));
  EXPECT_FALSE(isOthersEcho({9, 4, true}, 0s));
  EXPECT_TRUE(isOthersEcho(pressedA, 0s));
}

TEST_P(EchoFilterTest, CountsEachPress) {
  EXPECT_FALSE(isEcho(pressedA, 0ms));
  EXPECT_FALSE(isEcho(pressedA, 100ms));
  EXPECT_TRUE(isOthersEcho(pressedA, 110ms));
  EXPECT_TRUE(isOthersEcho(pressedA, 120ms));
  // A third one is no echo, and has one itself.
  EXPECT_FALSE(isOthersEcho(pressedA, 130ms));
  EXPECT_TRUE(isEcho(pressedA, 140ms));
  EXPECT_FALSE(isEcho(pressedA, 150ms));
}

TEST_P(EchoFilterTest, NeverTakesWhatOneAloneTells) {
  for (int each = 0; each < 10; ++each) EXPECT_FALSE(isEcho(pressedA, 1ms * each));
}

TEST_P(EchoFilterTest, ForgetsTheOldestOfManyPresses) {
  for (std::size_t each = 0; each < EchoFilter::maximumWaiting + 5; ++each) EXPECT_FALSE(isEcho(pressedA, 1us));
  for (std::size_t each = 0; each < EchoFilter::maximumWaiting; ++each) EXPECT_TRUE(isOthersEcho(pressedA, 2us));
  EXPECT_FALSE(isOthersEcho(pressedA, 2us));
}

TEST_P(EchoFilterTest, KnowsNothingAfterItWasCleared) {
  EXPECT_FALSE(isEcho(pressedA, 0s));
  filter.clear();
  EXPECT_FALSE(isOthersEcho(pressedA, 0s));
}

INSTANTIATE_TEST_SUITE_P(Origins, EchoFilterTest, testing::Values(Origin::Device, Origin::Window));

}  // namespace
}  // namespace vorn::engine::test
