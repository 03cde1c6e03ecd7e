#include "core-engine/device/DeviceValues.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "core-engine/TestBundle.h"

namespace vorn::engine::test {
namespace {

const PropertyList click = assignment(1);
const PropertyList copyKey = assignment(16, 6, 1);

// A bundle whose one profile has these settings besides.
PropertyList bundleWith(const PropertyList& settings) {
  return bundleOf({profile("Default").merging(settings)});
}

PropertyList withKey(const PropertyList& keymap, std::string_view identifier, const PropertyList& record) {
  return keymap.with(keys::Keys, keymap[keys::Keys].with(identifier, record));
}

// A bundle with the assignment in the keymap in force.
PropertyList bundleAssigning(std::string_view identifier, const PropertyList& record) {
  return bundleOf({withKey(profile("Default"), identifier, record)});
}

PropertyList macroOf(int page, int argument) {
  const PropertyList event =
      PropertyList::dictionary({{keys::Command, 1}, {keys::Delay, 0}, {keys::Page, page}, {keys::Argument, argument}});
  return PropertyList::dictionary(
      {{keys::MacroName, "Macro"},
       {keys::Sequence, PropertyList::dictionary({{keys::Events, PropertyList::array({event})}})}});
}

TEST(DeviceValuesTest, AreThoseOfAMouseAsItLeftTheFactoryWithoutSettings) {
  EXPECT_EQ(deviceValues({}), DeviceValues());
}

TEST(DeviceValuesTest, AreThoseOfTheActiveProfile) {
  const PropertyList first = profile("First");
  const PropertyList second =
      profile("Second").merging(PropertyList::dictionary({{keys::DPIX, 1600},
                                                          {keys::DPIY, 400},
                                                          {keys::PollingRate, 500},
                                                          {keys::ScrollLED, 1},
                                                          {keys::LEDEffects, 4},
                                                          {keys::BrightnessKBNormal, 3},
                                                          {keys::BrightnessBattery, 2},
                                                          {keys::LEDColors, PropertyList::array({color(1, 0.5, 0)})},
                                                          {keys::PowerSaver, 4},
                                                          {keys::BatteryCriticalLevel, 5}}));
  DeviceValues expected;
  expected.sensitivity = {1600, 400};
  expected.pollingRate = 500;
  expected.light = {true, 4, 3, 2, {{1, 0.5, 0}}};
  expected.power = {4, 5};
  EXPECT_EQ(deviceValues(bundleOf({first, second}, 1)), expected);
}

TEST(DeviceValuesTest, NameTheControlsThatAreAssignedAwayFromWhatTheyDo) {
  const DeviceValues values = deviceValues(bundleAssigning("43", copyKey));
  EXPECT_EQ(values.assigned, ControlSet{"43"});
  EXPECT_EQ(values.assignedInAnyKeymap, ControlSet{"43"});
  EXPECT_FALSE(values.needsPointer);
  EXPECT_EQ(deviceValues(bundle()).assigned, ControlSet());
}

TEST(DeviceValuesTest, ADisabledControlIsAssignedAndAKeyThatSendsAnotherKeyToo) {
  EXPECT_EQ(deviceValues(bundleAssigning("20", assignment(20))).assigned, ControlSet{"20"});
  EXPECT_EQ(deviceValues(bundleAssigning("20", assignment(45, 26))).assigned, ControlSet{"20"});
}

TEST(DeviceValuesTest, TellTheKeymapInForceFromTheOthers) {
  std::vector<PropertyList> keymaps(keys::keymapCount, factoryKeymap());
  keymaps[5] = withKey(factoryKeymap(), "20", click);
  const DeviceValues values =
      deviceValues(bundleWith(PropertyList::dictionary({{keys::Keymap, PropertyList::array(std::move(keymaps))}})));
  EXPECT_EQ(values.assigned, ControlSet());
  EXPECT_EQ(values.assignedInAnyKeymap, ControlSet{"20"});
  EXPECT_TRUE(values.needsPointer);
}

TEST(DeviceValuesTest, TakeTheWheelForAControlThatTurnsTheSensitivityWithIt) {
  EXPECT_EQ(deviceValues(bundleAssigning("43", assignment(15))).assigned, (ControlSet{"43", "06", "07"}));
}

TEST(DeviceValuesTest, TellWhetherAControlSetsAnotherSensitivityWhileItIsHeld) {
  EXPECT_TRUE(deviceValues(bundleAssigning("43", assignment(49))).changesSensitivity);
  std::vector<PropertyList> keymaps(keys::keymapCount, factoryKeymap());
  keymaps[5] = withKey(factoryKeymap(), "20", assignment(49));
  const PropertyList profile = PropertyList::dictionary({{keys::Keymap, PropertyList::array(std::move(keymaps))}});
  EXPECT_TRUE(deviceValues(bundleWith(profile)).changesSensitivity);
  for (const int command : {11, 15, 20})
    EXPECT_FALSE(deviceValues(bundleAssigning("43", assignment(command))).changesSensitivity) << command;
}

TEST(DeviceValuesTest, NeedAPointerForClicksWheelsAndMacrosThatClick) {
  for (const int command : {1, 2, 8, 9, 13, 14, 18, 19})
    EXPECT_TRUE(deviceValues(bundleAssigning("43", assignment(command))).needsPointer) << command;
  for (const int command : {11, 15, 16, 17, 20, 46, 49, 50})
    EXPECT_FALSE(deviceValues(bundleAssigning("43", assignment(command))).needsPointer) << command;
  const PropertyList playing = bundleAssigning("43", assignment(10, 0, 1));
  EXPECT_TRUE(deviceValues(playing.with(keys::Macros, PropertyList::array({macroOf(9, 1)}))).needsPointer);
  EXPECT_FALSE(deviceValues(playing.with(keys::Macros, PropertyList::array({macroOf(7, 4)}))).needsPointer);
}

}  // namespace
}  // namespace vorn::engine::test
