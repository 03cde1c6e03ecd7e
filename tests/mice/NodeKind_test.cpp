#include "mice/NodeKind.h"

#include <gtest/gtest.h>
#include <linux/input.h>

namespace vorn {
namespace {

constexpr NodeKind pointer{true, false};
constexpr NodeKind keys{};
constexpr NodeKind touched{false, true};

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

}  // namespace
}  // namespace vorn
