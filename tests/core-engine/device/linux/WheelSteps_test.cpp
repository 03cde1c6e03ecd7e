#include "core-engine/device/linux/WheelSteps.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "core-engine/device/linux/KernelEvents.h"

namespace vorn::engine::test {
namespace {

using Turns = std::vector<std::int32_t>;

std::vector<std::int32_t> taken(WheelSteps& steps, std::uint16_t code, const Turns& turns) {
  std::vector<std::int32_t> counts;
  for (const std::int32_t turn : turns) counts.push_back(steps.take(motion(code, turn)));
  return counts;
}

TEST(WheelStepsTest, CountTheStepsOfAPlainWheel) {
  WheelSteps steps(false);
  EXPECT_EQ(taken(steps, REL_WHEEL, {1, 3, -2, 1}), (Turns{1, 3, 2, 1}));
  EXPECT_EQ(taken(steps, REL_WHEEL_HI_RES, {120, -240}), (Turns{0, 0}));
}

TEST(WheelStepsTest, CountEachFullStepOfAHighResolutionWheelAndNotThePlainOnes) {
  WheelSteps steps(true);
  EXPECT_EQ(taken(steps, REL_WHEEL_HI_RES, {120, 30, 30, 30, 30, 30}), (Turns{1, 0, 0, 0, 1, 0}));
  EXPECT_EQ(taken(steps, REL_WHEEL, {1, -1, 5}), (Turns{0, 0, 0}));
  EXPECT_EQ(taken(steps, REL_WHEEL_HI_RES, {329, 1}), (Turns{2, 1}));
  EXPECT_EQ(taken(steps, REL_HWHEEL_HI_RES, {-360}), (Turns{3}));
}

TEST(WheelStepsTest, DropThePartOfAStepWhenTheWheelTurnsBack) {
  WheelSteps steps(true);
  EXPECT_EQ(taken(steps, REL_WHEEL_HI_RES, {119, -1, 119, 1, -119, -1}), (Turns{0, 0, 0, 1, 0, 1}));
  EXPECT_EQ(taken(steps, REL_WHEEL_HI_RES, {119}), (Turns{0}));
  steps.drop();
  EXPECT_EQ(taken(steps, REL_WHEEL_HI_RES, {1, 119}), (Turns{0, 1}));
}

TEST(WheelStepsTest, CutOffWhatNoHandTurns) {
  using Limits = std::numeric_limits<std::int32_t>;
  const Turns turns{Limits::max(), Limits::min(), Limits::max(), 1'000, 1'001};
  WheelSteps plain(false);
  EXPECT_EQ(taken(plain, REL_WHEEL, turns), (Turns{1'000, 1'000, 1'000, 1'000, 1'000}));
  WheelSteps fine(true);
  EXPECT_EQ(taken(fine, REL_WHEEL_HI_RES, turns), (Turns{1'000, 1'000, 1'000, 8, 8}));
}

TEST(WheelStepsTest, MakeAsManyStepsAsTheTurnsOfEachDirectionHoldInWhole) {
  Random random{120};
  for (int round = 0; round < 200; ++round) {
    WheelSteps steps(true);
    const int sign = random.oneIn(2) ? 1 : -1;
    std::int32_t turned = 0, counted = 0;
    for (int turn = random.number(1, 100); turn > 0; --turn) {
      const int part = random.number(1, random.oneIn(5) ? 500 : 40);
      turned += part;
      counted += steps.take(motion(REL_WHEEL_HI_RES, part * sign));
      ASSERT_EQ(counted, turned / highResolutionStep);
    }
    EXPECT_EQ(steps.take(motion(REL_WHEEL_HI_RES, -119 * sign)), 0);
  }
}

}  // namespace
}  // namespace vorn::engine::test
