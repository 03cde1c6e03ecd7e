// What the settings ask of the mouse itself, and what a mouse can do of it. Values; any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::engine {

struct Sensitivity {
  std::int32_t x = 0;  // DPI
  std::int32_t y = 0;
  friend bool operator==(const Sensitivity&, const Sensitivity&) = default;
};

struct LightColor {
  double red = 0;  // 0 to 1, likewise the others
  double green = 0;
  double blue = 0;
  friend bool operator==(const LightColor&, const LightColor&) = default;
};

struct LightValues {
  bool isOn = false;
  std::int32_t effect = 0;               // 0 one colour, 4 spectrum cycling
  std::int32_t brightness = 0;           // 1 off to 4 bright
  std::int32_t brightnessOnBattery = 0;  // likewise
  std::vector<LightColor> colors;        // one for each zone
  friend bool operator==(const LightValues&, const LightValues&) = default;
};

struct PowerValues {
  std::int32_t sleep = 0;     // 1 to 4: sleeps after 1, 5, 10 or 15 minutes
  std::int32_t critical = 0;  // 1 to 5: signals a low battery at 5 to 25 percent
  friend bool operator==(const PowerValues&, const PowerValues&) = default;
};

using ControlSet = std::set<std::string, std::less<>>;

// What is in force.
struct DeviceValues {
  Sensitivity sensitivity;
  std::int32_t pollingRate = 0;  // Hz
  LightValues light;
  PowerValues power;
  // The controls that do not do what they do by themselves: in the keymap in force, and in any keymap of the active
  // profile. While one of them turns the sensitivity with the wheel, the wheel belongs to them.
  ControlSet assigned;
  ControlSet assignedInAnyKeymap;
  // Whether one of the latter, or a macro that it plays, clicks or turns the wheel.
  bool needsPointer = false;
  // Whether one of them sets another sensitivity while it is held: there is no time to prepare for it then.
  bool changesSensitivity = false;
  friend bool operator==(const DeviceValues&, const DeviceValues&) = default;
};

// What the bundle, a complete one, asks of the mouse. Without settings: nothing, a mouse as it left the factory.
DeviceValues deviceValues(const PropertyList& bundle);

// What of this a mouse can do.
struct DeviceAbilities {
  enum class Way : std::uint8_t {
    Missing,   // the mouse does not offer it
    Scaled,    // the engine does it with what the mouse sends
    Hardware,  // the mouse does it
  };
  Way sensitivity = Way::Missing;
  bool hasPollingRate = false;
  bool hasLight = false;
  bool hasPower = false;
  bool hasBattery = false;
  // What it sends reaches the desktop, and so the window of a client as well.
  bool reachesDesktop = false;
  // Its device files that have to be taken from the desktop for what is assigned, and cannot be: something on them has
  // been held down since before, and another program keeps them for itself.
  std::vector<std::string> held{};
  std::vector<std::string> busy{};
  friend bool operator==(const DeviceAbilities&, const DeviceAbilities&) = default;
};

}  // namespace vorn::engine
