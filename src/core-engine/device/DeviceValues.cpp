#include "core-engine/device/DeviceValues.h"

#include <algorithm>

#include "model/Assignments.h"
#include "model/Controls.h"
#include "model/HidUsages.h"
#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

bool clicks(const PropertyList& macro) {
  const PropertyList events = macroEvents(macro);
  return std::any_of(events.elements().begin(), events.elements().end(),
                     [](const PropertyList& event) { return event[keys::Page].toInt() == hid::buttonPage; });
}

bool usesPointer(const PropertyList& assignment, const PropertyList& macros) {
  switch (const AssignmentCommand command = commandOf(assignment)) {
    case AssignmentCommand::DoubleClick:
    case AssignmentCommand::Forward:
    case AssignmentCommand::Backward:
    case AssignmentCommand::ScrollUp:
    case AssignmentCommand::ScrollDown:
      return true;
    case AssignmentCommand::Macro:
      return clicks(macros.at(assignment[keys::Param1].toInt()));
    default:
      return command >= AssignmentCommand::LeftClick && command <= AssignmentCommand::MouseButton8;
  }
}

// The controls that the groups, a dictionary of "Keys" and "Buttons", assign away from what they do by themselves.
// values: what else they need is added.
ControlSet assignedControls(const PropertyList& groups, const PropertyList& macros, DeviceValues& values) {
  ControlSet result;
  bool turnsSensitivity = false;
  for (const Control& control : controls) {
    const PropertyList& assignment = groups[control.group][control.identifier];
    if (isFactoryAssignment(assignment, control)) continue;
    result.emplace(control.identifier);
    const AssignmentCommand command = commandOf(assignment);
    turnsSensitivity |= command == AssignmentCommand::OnTheFlySensitivity;
    values.changesSensitivity |= command == AssignmentCommand::TemporarySensitivity;
    values.needsPointer = values.needsPointer || usesPointer(assignment, macros);
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
  const PropertyList& macros = bundle[keys::Macros];
  values.sensitivity = {profile[keys::DPIX].toInt(), profile[keys::DPIY].toInt()};
  values.pollingRate = profile[keys::PollingRate].toInt();
  values.light = lightValues(profile);
  values.power = {profile[keys::PowerSaver].toInt(), profile[keys::BatteryCriticalLevel].toInt()};
  values.assigned = assignedControls(profile, macros, values);
  values.assignedInAnyKeymap = values.assigned;
  for (const PropertyList& keymap : profile[keys::Keymap].elements())
    values.assignedInAnyKeymap.merge(assignedControls(keymap, macros, values));
  return values;
}

}  // namespace vorn::engine
