#include "core-engine/device/DeviceValues.h"

#include <algorithm>

#include "model/Assignments.h"
#include "model/Controls.h"
#include "model/HidUsages.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

// Looks at each event once and no closer: one that cannot be played does no harm here.
bool clicks(const PropertyList& macro) {
  const auto events = macro[keys::Sequence][keys::Events].elements();
  return std::any_of(events.begin(), events.end(),
                     [](const PropertyList& event) { return event[keys::Page].toInt() == hid::buttonPage; });
}

bool usesPointer(AssignmentCommand command) {
  switch (command) {
    case AssignmentCommand::DoubleClick:
    case AssignmentCommand::Forward:
    case AssignmentCommand::Backward:
    case AssignmentCommand::ScrollUp:
    case AssignmentCommand::ScrollDown:
      return true;
    default:
      return command >= AssignmentCommand::LeftClick && command <= AssignmentCommand::MouseButton8;
  }
}

// Positions of the macros that are played; one that many controls play is looked at once.
using PlayedMacros = std::set<std::int32_t>;

// The controls that the groups, a dictionary of "Keys" and "Buttons", assign away from what they do by themselves.
// values and played: what else they need is added.
ControlSet assignedControls(const PropertyList& groups, DeviceValues& values, PlayedMacros& played) {
  ControlSet result;
  bool turnsSensitivity = false;
  for (const Control& control : controls) {
    const PropertyList& assignment = groups[control.group][control.identifier];
    if (isFactoryAssignment(assignment, control)) continue;
    result.emplace(control.identifier);
    const AssignmentCommand command = commandOf(assignment);
    turnsSensitivity |= command == AssignmentCommand::OnTheFlySensitivity;
    values.changesSensitivity |= command == AssignmentCommand::TemporarySensitivity;
    values.needsPointer |= usesPointer(command);
    if (command == AssignmentCommand::Macro) played.insert(assignment[keys::Param1].toInt());
  }
  if (turnsSensitivity) result.insert({std::string(wheelUp), std::string(wheelDown)});
  return result;
}

LightValues lightValues(const PropertyList& profile) {
  LightValues light;
  light.isOn = profile[keys::ScrollLED].toBool();
  light.effect = profile[keys::LEDEffects].toInt();
  light.brightness = profile[keys::BrightnessKBNormal].toInt();
  light.brightnessOnBattery = profile[keys::BrightnessBattery].toInt();
  for (const PropertyList& color : profile[keys::LEDColors].elements())
    light.colors.push_back({color[keys::Red].toDouble(), color[keys::Green].toDouble(), color[keys::Blue].toDouble()});
  return light;
}

}  // namespace

DeviceValues deviceValues(const PropertyList& bundle) {
  DeviceValues values;
  if (bundle.isNone()) return values;
  const PropertyList& profile = bundle[keys::Profiles].at(bundle[keys::DeviceSettings][keys::ActiveProfile].toInt());
  values.sensitivity = {profile[keys::DPIX].toInt(), profile[keys::DPIY].toInt()};
  values.pollingRate = profile[keys::PollingRate].toInt();
  values.light = lightValues(profile);
  values.power = {profile[keys::PowerSaver].toInt(), profile[keys::BatteryCriticalLevel].toInt()};
  PlayedMacros played;
  values.assigned = assignedControls(profile, values, played);
  values.assignedInAnyKeymap = values.assigned;
  for (const PropertyList& keymap : profile[keys::Keymap].elements())
    values.assignedInAnyKeymap.merge(assignedControls(keymap, values, played));
  const PropertyList& macros = bundle[keys::Macros];
  values.needsPointer = values.needsPointer || std::any_of(played.begin(), played.end(), [&macros](std::int32_t macro) {
                          return clicks(macros.at(macro));
                        });
  return values;
}

}  // namespace vorn::engine
