// Settings as an engine stores them and hands them out: the records that all tests are made of.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "model/Controls.h"
#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace vorn::test {

inline PropertyList assignment(int command, int param1 = 0, int param2 = 0) {
  return PropertyList::dictionary({{keys::Command, command}, {keys::Param1, param1}, {keys::Param2, param2}});
}

// "Keys" (1) or "Buttons" (2) as they leave the factory: each key its own usage, a click and the two scrolls.
inline const PropertyList& factoryGroup(int groupType) {
  static const PropertyList keysGroup = [] {
    std::vector<PropertyList::Pair> assignments;
    for (const std::string_view key : keys::keyIdentifiers) {
      assignments.emplace_back(key, assignment(45, PropertyList(key).toInt()));
    }
    return PropertyList::dictionary(std::move(assignments));
  }();
  static const PropertyList buttonsGroup =
      PropertyList::dictionary({{"03", assignment(3)}, {"06", assignment(18)}, {"07", assignment(19)}});
  return groupType == 1 ? keysGroup : buttonsGroup;
}

inline PropertyList keymapOf(const PropertyList& keysGroup, const PropertyList& buttonsGroup) {
  return PropertyList::dictionary({{keys::Keys, keysGroup}, {keys::Buttons, buttonsGroup}});
}
inline PropertyList factoryKeymap() {
  return keymapOf(factoryGroup(1), factoryGroup(2));
}

inline PropertyList stage(int x, int y, bool isIndependent = false) {
  return PropertyList::dictionary(
      {{keys::StageDpiX, x}, {keys::StageDpiY, y}, {keys::StageIndependentXY, isIndependent ? 1 : 0}});
}

inline PropertyList color(double red, double green, double blue) {
  return PropertyList::dictionary({{keys::Red, red}, {keys::Green, green}, {keys::Blue, blue}});
}

// A profile with its assignments in force and its sensitivity, and nothing else.
inline PropertyList plainProfile(std::string_view name) {
  return factoryKeymap().merging(
      PropertyList::dictionary({{keys::ProfileName, name}, {keys::KeymapID, 0}, {keys::DPIX, 800}, {keys::DPIY, 800}}));
}

// A profile with a value for each control of the tabs, but without its keymaps.
inline PropertyList profile(std::string_view name) {
  return plainProfile(name).merging(PropertyList::dictionary(
      {{keys::IndependentXYOn, 0},
       {keys::SensitivityOSDOn, 1},
       {keys::Stages, PropertyList::array({stage(400, 400), stage(800, 800), stage(1600, 800, true), stage(3200, 3200),
                                           stage(5600, 5600)})},
       {keys::StageValue, 1},
       {keys::AccelerationOn, 1},
       {keys::Acceleration, 7},
       {keys::LEDColors, PropertyList::array({color(1.0, 0.5, 0.0), color(0, 0, 1.0), color(0, 1.0, 0)})},
       {keys::LEDEffects, 0},
       {keys::ScrollLED, 1},
       {keys::BrightnessKBNormal, 3},
       {keys::AutoSwitchOn, 0},
       {keys::AppInfo, PropertyList::dictionary({{keys::Application, ""}})}}));
}

// Four profiles, the second active.
inline const PropertyList& profiles() {
  static const PropertyList all = PropertyList::array(
      {profile("Default"),
       profile("Work").with(keys::AppInfo, PropertyList::dictionary({{keys::Application, "LibreOffice Writer"}})),
       profile("Raid: Molten Depths, healer set-up for the second boss")
           .with(keys::AppInfo, PropertyList::dictionary({{keys::Application, "Skirmish Online"}}))
           .with(keys::AutoSwitchOn, 1),
       profile("Racing")});
  return all;
}

inline PropertyList deviceSettings() {
  return PropertyList::dictionary({{keys::ActiveProfile, 1},
                                   {keys::PollingRate, 500},
                                   {keys::BrightnessBattery, 2},
                                   {keys::PowerSaver, 3},
                                   {keys::BatteryCriticalLevel, 1}});
}

// delay in milliseconds; page and argument: the HID usage.
inline PropertyList macroEvent(int command, int delay, int page, int argument) {
  return PropertyList::dictionary(
      {{keys::Command, command}, {keys::Delay, delay}, {keys::Page, page}, {keys::Argument, argument}});
}
// Of a key.
inline PropertyList macroEvent(int command, int argument) {
  return macroEvent(command, 20, 7, argument);
}

inline PropertyList macro(std::string_view name, std::vector<PropertyList> events) {
  return PropertyList::dictionary(
      {{keys::MacroName, name},
       {keys::Sequence, PropertyList::dictionary({{keys::Events, PropertyList::array(std::move(events))}})}});
}

inline PropertyList macros() {
  return PropertyList::array({macro("Fireball", {macroEvent(1, 9), macroEvent(0, 9)}),
                              macro("Build order, first two minutes, second base", {}),
                              macro("Greeting", {macroEvent(1, 11), macroEvent(0, 11), macroEvent(1, 12)})});
}

inline PropertyList macroLines() {
  return PropertyList::array({"Key Down F\n", "0.020 seconds delay\n", "Key Up F\n"});
}

inline PropertyList defaultSettings() {
  return PropertyList::dictionary(
      {{keys::Profiles, PropertyList::array({profile("Default")})}, {keys::Macros, PropertyList::array()}});
}

}  // namespace vorn::test

// The tests of the configurator write these names as their own.
namespace skarn::test {
using namespace vorn::test;
using vorn::PropertyList;
namespace keys = vorn::keys;
}  // namespace skarn::test
