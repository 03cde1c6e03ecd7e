// Settings as an engine would hand them out, for tests of the tabs.
#pragma once

#include <vector>

#include "buttons/ControlTable.h"
#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace skarn::test {

using vorn::PropertyList;
namespace keys = vorn::keys;

inline PropertyList assignment(int command, int param1 = 0, int param2 = 0) {
  return PropertyList::dictionary({{keys::Command, command}, {keys::Param1, param1}, {keys::Param2, param2}});
}

// "Keys" (1) or "Buttons" (2) as they leave the factory.
inline const PropertyList& factoryGroup(int groupType) {
  const auto made = [](int type) {
    std::vector<PropertyList::Pair> assignments;
    for (const ControlDescriptor& control : controlTable) {
      if (control.groupType != type) continue;
      const int command = type == 1 ? 45 : (control.repeatCode == 700 ? 3 : control.repeatCode - 683);
      assignments.emplace_back(control.identifier, assignment(command, type == 1 ? control.repeatCode : 0));
    }
    return PropertyList::dictionary(std::move(assignments));
  };
  static const PropertyList keysGroup = made(1);
  static const PropertyList buttonsGroup = made(2);
  return groupType == 1 ? keysGroup : buttonsGroup;
}

inline PropertyList stage(int x, int y, bool isIndependent) {
  return PropertyList::dictionary(
      {{keys::StageDpiX, x}, {keys::StageDpiY, y}, {keys::StageIndependentXY, isIndependent ? 1 : 0}});
}

inline PropertyList color(double red, double green, double blue) {
  return PropertyList::dictionary({{keys::Red, red}, {keys::Green, green}, {keys::Blue, blue}});
}

inline PropertyList profile(std::string_view name) {
  return PropertyList::dictionary(
      {{keys::ProfileName, name},
       {keys::Keys, factoryGroup(1)},
       {keys::Buttons, factoryGroup(2)},
       {keys::KeymapID, 0},
       {keys::DPIX, 800},
       {keys::DPIY, 800},
       {keys::IndependentXYOn, 0},
       {keys::SensitivityOSDOn, 1},
       {keys::Stages, PropertyList::array({stage(400, 400, false), stage(800, 800, false), stage(1600, 800, true),
                                           stage(3200, 3200, false), stage(5600, 5600, false)})},
       {keys::StageValue, 1},
       {keys::AccelerationOn, 1},
       {keys::Acceleration, 7},
       {keys::LEDColors, PropertyList::array({color(1.0, 0.5, 0.0), color(0, 0, 1.0), color(0, 1.0, 0)})},
       {keys::LEDEffects, 0},
       {keys::ScrollLED, 1},
       {keys::BrightnessKBNormal, 3},
       {keys::AutoSwitchOn, 0},
       {keys::AppInfo, PropertyList::dictionary({{keys::Application, ""}})}});
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

inline PropertyList macroEvent(int command, int argument) {
  return PropertyList::dictionary(
      {{keys::Command, command}, {keys::Delay, 20}, {keys::Page, 7}, {keys::Argument, argument}});
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

}  // namespace skarn::test
