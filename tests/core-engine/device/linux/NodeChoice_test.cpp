#include "core-engine/device/linux/NodeChoice.h"

#include <gtest/gtest.h>

namespace vorn::engine {
namespace {

constexpr MotionScale unscaled{};

MouseNode pointerNode() {
  MouseNode node{"/dev/input/event3", "00 Acme Mouse", {}};
  node.codes.relative.set(REL_X).set(REL_Y).set(REL_WHEEL).set(REL_WHEEL_HI_RES);
  node.codes.keys.set(BTN_LEFT).set(BTN_RIGHT).set(BTN_MIDDLE).set(BTN_SIDE);
  return node;
}

MouseNode gridNode() {
  MouseNode node{"/dev/input/event4", "01 Acme Mouse Keyboard", {}};
  for (std::uint16_t key = KEY_ESC; key <= KEY_KPDOT; ++key) node.codes.keys.set(key);
  return node;
}

TEST(NodeChoiceTest, NothingIsTakenWhileNothingIsAssigned) {
  EXPECT_FALSE(isToBeTaken(pointerNode(), {}, {}, unscaled));
  EXPECT_FALSE(isToBeTaken(gridNode(), {}, {}, unscaled));
}

TEST(NodeChoiceTest, OnlyTheNodeIsTakenThatHasTheControl) {
  const ControlSet key{"20"};
  EXPECT_TRUE(isToBeTaken(gridNode(), {}, key, unscaled));
  EXPECT_FALSE(isToBeTaken(pointerNode(), {}, key, unscaled));
  for (const ControlSet& wheel : {ControlSet{"03"}, ControlSet{"06"}, ControlSet{"07"}}) {
    EXPECT_TRUE(isToBeTaken(pointerNode(), {}, wheel, unscaled));
    EXPECT_FALSE(isToBeTaken(gridNode(), {}, wheel, unscaled));
  }
}

TEST(NodeChoiceTest, AControlThatNothingIsKnownOfTakesNothing) {
  EXPECT_FALSE(isToBeTaken(gridNode(), {}, {"233", "keymap", "no control"}, unscaled));
}

TEST(NodeChoiceTest, WhatIsTaughtCountsInPlaceOfWhatItIsByItself) {
  ControlMap map;
  ASSERT_TRUE(map.teach("20", {"00 Acme Mouse", EV_KEY, BTN_SIDE, 0}));
  EXPECT_TRUE(isToBeTaken(pointerNode(), map, {"20"}, unscaled));
  EXPECT_FALSE(isToBeTaken(gridNode(), map, {"20"}, unscaled));
  EXPECT_EQ(taughtControls(map), (ControlSet{"20"}));
}

TEST(NodeChoiceTest, ASourceOfAnotherNodeIsNotThisOnes) {
  MouseNode other = gridNode();
  other.name = "02 Acme Mouse Keyboard";
  ControlMap map;
  ASSERT_TRUE(map.teach("keymap", {"02 Acme Mouse Keyboard", EV_KEY, KEY_Y, 0}));
  EXPECT_TRUE(isToBeTaken(other, map, {"keymap"}, unscaled));
  EXPECT_FALSE(isToBeTaken(gridNode(), map, {"keymap"}, unscaled));
}

TEST(NodeChoiceTest, OnlyAPointerIsScaled) {
  const MotionScale inX{{1600, 800}, {800, 800}};
  const MotionScale inY{{800, 800}, {1600, 800}};
  const MotionScale same{{800, 800}, {800, 800}};
  EXPECT_TRUE(isToBeTaken(pointerNode(), {}, {}, inX));
  EXPECT_TRUE(isToBeTaken(pointerNode(), {}, {}, inY));
  EXPECT_FALSE(isToBeTaken(pointerNode(), {}, {}, same));
  EXPECT_FALSE(isToBeTaken(gridNode(), {}, {}, inX));
}

TEST(NodeChoiceTest, TheControlsOfANodeAreThoseThatItHasAKeyFor) {
  EXPECT_EQ(controlsOf(pointerNode(), {}), (ControlSet{"03", "06", "07"}));
  const ControlSet keys = controlsOf(gridNode(), {});
  EXPECT_TRUE(keys.contains("43"));
  EXPECT_FALSE(keys.contains("82"));
  EXPECT_FALSE(keys.contains("233"));
}

}  // namespace
}  // namespace vorn::engine
