#include "ctl/MachineMice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorn::ctl::test {
namespace {

constexpr bool isMouse = true;
constexpr bool isTouched = true;
constexpr bool isForbidden = true;

std::vector<std::string> namesOf(const std::vector<MachineNode>& nodes) {
  std::vector<std::string> names;
  for (const MachineMouse& mouse : miceOf(nodes)) names.push_back(mouse.name);
  return names;
}

TEST(MachineMiceTest, AMouseIsAllNodesOfItsHardware) {
  const auto mice = miceOf({{"/sys/a", "0003:00001209:00000001", "/dev/input/event4", "Acme Keys", false, false, true},
                            {"/sys/a", "0003:00001209:00000001", "/dev/input/event5", "Acme", isMouse, false, true},
                            {"/sys/b", "0003:00001209:00000002", "/dev/input/event6", "Keyboard"}});
  ASSERT_EQ(mice.size(), 1U);
  EXPECT_EQ(mice[0].name, "Acme");
  EXPECT_EQ(mice[0].nodes, (std::vector<std::string>{"/dev/input/event4", "/dev/input/event5"}));
  EXPECT_EQ(mice[0].forbidden, (std::vector<std::string>{"/dev/input/event5"}));
  EXPECT_EQ(mice[0].closedKeys, (std::vector<std::string>{"/dev/input/event4"}));
}

TEST(MachineMiceTest, TheTouchpadOfALaptopIsNoMouseThatLacksSomething) {
  // By I2C, with a node of its own for a mouse.
  const std::string i2c = "0018:00001209:00000003";
  EXPECT_EQ(namesOf({{"/sys/a", i2c, "/dev/input/event4", "Pad Mouse", isMouse, false, isForbidden},
                     {"/sys/a", i2c, "/dev/input/event5", "Pad Touchpad", false, isTouched, isForbidden}}),
            std::vector<std::string>());
}

TEST(MachineMiceTest, ATouchpadOrTabletWithAMouseBesideIsNoMouse) {
  const std::string usb = "0003:00001209:00000004";
  EXPECT_EQ(namesOf({{"/sys/a", usb, "/dev/input/event4", "Tablet Mouse", isMouse},
                     {"/sys/a", usb, "/dev/input/event5", "Tablet Pen", false, isTouched}}),
            std::vector<std::string>());
}

TEST(MachineMiceTest, BluetoothAndUsbWithoutHidCount) {
  EXPECT_EQ(namesOf({{"/sys/a", "0005:00001209:00000005", "/dev/input/event4", "Blue", isMouse},
                     {"/sys/b", "", "/dev/input/event5", "Plain", isMouse}}),
            (std::vector<std::string>{"Blue", "Plain"}));
}

}  // namespace
}  // namespace vorn::ctl::test
