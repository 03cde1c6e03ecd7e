#include "mice/EventCodes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>

namespace vorn {
namespace {

std::bitset<KEY_CNT> keys(std::initializer_list<std::uint16_t> codes) {
  std::bitset<KEY_CNT> set;
  for (const std::uint16_t code : codes) set.set(code);
  return set;
}

TEST(EventCodesTest, WordsOfTheKernelAreReadTheHighestFirst) {
  // A mouse with five buttons, and a keyboard's first word.
  EXPECT_EQ(codesOf<KEY_CNT>("1f0000 0 0 0 0"), keys({BTN_LEFT, BTN_RIGHT, BTN_MIDDLE, BTN_SIDE, BTN_EXTRA}));
  EXPECT_EQ(codesOf<KEY_CNT>("8000000000000002"), keys({KEY_ESC, KEY_F5}));
  EXPECT_EQ(codesOf<REL_CNT>("1943").to_ulong(), 0x1943u);
}

TEST(EventCodesTest, WhatIsNoNumberCountsAsZeros) {
  EXPECT_TRUE(codesOf<KEY_CNT>("").none());
  EXPECT_TRUE(codesOf<KEY_CNT>("  ").none());
  EXPECT_TRUE(codesOf<KEY_CNT>("xyz\n").none());
}

TEST(EventCodesTest, CodesBeyondTheLastOneAreLeftOut) {
  EXPECT_EQ(codesOf<REL_CNT>("ffffffffffffffff").count(), std::size_t{REL_CNT});
  EXPECT_TRUE(codesOf<REL_CNT>("1 0").none());
}

TEST(EventCodesTest, AKeyboardHasKeysAndNothingElse) {
  EventCodes codes;
  codes.keys = keys({KEY_A, KEY_LEFTSHIFT, KEY_F24, KEY_VOLUMEUP});
  EXPECT_TRUE(codes.isKeyboard());
  codes.keys.set(BTN_SIDE);
  EXPECT_FALSE(codes.isKeyboard());
  codes.keys.reset(BTN_SIDE);
  codes.relative.set(REL_HWHEEL);
  EXPECT_FALSE(codes.isKeyboard());
}

TEST(EventCodesTest, APointerMovesInBothDirections) {
  EventCodes codes;
  codes.relative.set(REL_X);
  EXPECT_FALSE(codes.isPointer());
  codes.relative.set(REL_Y);
  EXPECT_TRUE(codes.isPointer());
  EventCodes tablet;
  tablet.absolute.set(ABS_X).set(ABS_Y);
  EXPECT_TRUE(tablet.isPointer());
}

TEST(EventCodesTest, ButtonsAreNoKeysOfAKeyboard) {
  for (const std::uint16_t code : std::initializer_list<std::uint16_t>{KEY_ESC, KEY_A, KEY_OK, KEY_MACRO1})
    EXPECT_TRUE(isKeyboardKey(code)) << code;
  for (const std::uint16_t code : std::initializer_list<std::uint16_t>{KEY_RESERVED, BTN_0, BTN_LEFT, BTN_TASK,
                                                                       BTN_TOOL_PEN, BTN_DPAD_UP, BTN_TRIGGER_HAPPY40})
    EXPECT_FALSE(isKeyboardKey(code)) << code;
}

TEST(EventCodesTest, EachTypeHasItsOwnCodes) {
  EventCodes codes;
  codes.relative.set(REL_WHEEL);
  codes.absolute.set(ABS_HAT0X);
  codes.keys.set(KEY_A);
  EXPECT_TRUE(codes.has(EV_REL, REL_WHEEL));
  EXPECT_TRUE(codes.has(EV_ABS, ABS_HAT0X));
  EXPECT_TRUE(codes.has(EV_KEY, KEY_A));
  EXPECT_FALSE(codes.has(EV_KEY, REL_WHEEL));
  EXPECT_FALSE(codes.has(EV_KEY, KEY_CNT));
  EXPECT_FALSE(codes.has(EV_SYN, SYN_REPORT));
}

}  // namespace
}  // namespace vorn
