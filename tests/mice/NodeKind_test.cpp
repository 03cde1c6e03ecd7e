#include "mice/NodeKind.h"

#include <gtest/gtest.h>
#include <linux/input.h>

namespace vorn {
namespace {

constexpr NodeKind pointer{.isMouse = true};
constexpr NodeKind keys{.isKeyboard = true};
constexpr NodeKind touched{.isTouched = true};
constexpr NodeKind pointerWithKeys{.isMouse = true, .isKeyboard = true};

NodeKind behindMouse(NodeKind node) {
  node.isBehindMouse = true;
  return node;
}
NodeKind named(NodeKind node) {
  node.isNamedAsMouse = true;
  return node;
}

TEST(NodeKindTest, AMouseHasANodeThatMovesThePointer) {
  EXPECT_TRUE(isMouse({pointer}));
  EXPECT_TRUE(isMouse({keys, pointer, keys}));
  EXPECT_FALSE(isMouse({keys}));
  EXPECT_FALSE(isMouse({}));
}

TEST(NodeKindTest, ATouchpadOrTabletWithAMouseBesideIsNoMouse) {
  EXPECT_FALSE(isMouse({pointer, touched}));
  EXPECT_FALSE(isMouse({touched, keys, pointer}));
}

TEST(NodeKindTest, MiceComeByUsbAndBluetooth) {
  EXPECT_TRUE(isBusOfMice(BUS_USB));
  EXPECT_TRUE(isBusOfMice(BUS_BLUETOOTH));
  // What a laptop is built with.
  EXPECT_FALSE(isBusOfMice(BUS_I2C));
  EXPECT_FALSE(isBusOfMice(BUS_I8042));
  EXPECT_FALSE(isBusOfMice(0));
}

TEST(NodeKindTest, AllOfWhatBeginsWithAMouseIsTheMouses) {
  for (const NodeKind& node : {pointer, keys, pointerWithKeys, NodeKind{}}) EXPECT_TRUE(isOfMouse(behindMouse(node)));
}

TEST(NodeKindTest, OfWhatBeginsWithAKeyboardOnlyThePointerIsTheMouses) {
  EXPECT_TRUE(isOfMouse(pointer));
  EXPECT_FALSE(isOfMouse(keys));
  EXPECT_FALSE(isOfMouse(pointerWithKeys));
  // Such as the keys for volume and power.
  EXPECT_FALSE(isOfMouse(NodeKind{}));
}

TEST(NodeKindTest, WhatSomebodyHasNamedIsTheMouses) {
  for (const NodeKind& node : {pointer, keys, pointerWithKeys}) EXPECT_TRUE(isOfMouse(named(node)));
}

TEST(NodeKindTest, AMouseIsToldByWhatTheDeviceSaysFirst) {
  const std::string_view mouse = "\x05\x01\x09\x02\xa1\x01 and more";
  const std::string_view keyboard = "\x05\x01\x09\x06\xa1\x01 and more";
  EXPECT_TRUE(beginsWithMouse(":030102:030101:", keyboard));
  EXPECT_TRUE(beginsWithMouse(":030102:", ""));
  EXPECT_TRUE(beginsWithMouse("", mouse));
  EXPECT_TRUE(beginsWithMouse(":030101:030102:", mouse));
  EXPECT_FALSE(beginsWithMouse(":030101:030102:", keyboard));
  EXPECT_FALSE(beginsWithMouse(":030000:030102:", "\x06\x00\xff\x09\x01\xa1\x01"));
  EXPECT_FALSE(beginsWithMouse("", mouse.substr(0, 5)));
  EXPECT_FALSE(beginsWithMouse("", ""));
}

}  // namespace
}  // namespace vorn
