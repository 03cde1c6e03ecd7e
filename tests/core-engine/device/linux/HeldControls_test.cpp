#include "core-engine/device/linux/HeldControls.h"

#include <gtest/gtest.h>

namespace vorn::engine {
namespace {

const ControlChanged pressed{"20", true};
const ControlChanged released{"20", false};

TEST(HeldControlsTest, APressAndAReleaseAreNews) {
  HeldControls held;
  EXPECT_TRUE(held.take(pressed));
  EXPECT_TRUE(held.take(released));
  EXPECT_TRUE(held.take(pressed));
  EXPECT_TRUE(held.take(released));
}

TEST(HeldControlsTest, AControlThatTwoNodesHoldIsLetGoOfWithTheLast) {
  HeldControls held;
  EXPECT_TRUE(held.take(pressed));
  EXPECT_FALSE(held.take(pressed));
  EXPECT_FALSE(held.take(released));
  EXPECT_TRUE(held.take(released));
}

TEST(HeldControlsTest, AStepOfAWheelIsNothingWhileItsControlIsHeldElsewhere) {
  HeldControls held;
  EXPECT_TRUE(held.take(pressed));
  for (int step = 0; step < 3; ++step) {
    EXPECT_FALSE(held.take(pressed));
    EXPECT_FALSE(held.take(released));
  }
  EXPECT_TRUE(held.take(released));
}

TEST(HeldControlsTest, EachControlIsItsOwn) {
  HeldControls held;
  EXPECT_TRUE(held.take(pressed));
  EXPECT_TRUE(held.take({"21", true}));
  EXPECT_TRUE(held.take(released));
  EXPECT_TRUE(held.take({"21", false}));
}

TEST(HeldControlsTest, AReleaseWithoutAPressIsNone) {
  HeldControls held;
  EXPECT_FALSE(held.take(released));
  EXPECT_TRUE(held.take(pressed));
}

}  // namespace
}  // namespace vorn::engine
