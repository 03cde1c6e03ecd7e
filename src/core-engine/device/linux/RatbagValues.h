// What ratbagd says of a mouse, and what can be asked of it, apart from how that travels. ratbagd is the service of the
// system that sets what gaming mice keep in their hardware; docs/core-engine.md names what is used of it. Values; any
// thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::engine {

struct RatbagResolution {
  std::uint32_t x = 0;  // DPI
  std::uint32_t y = 0;
  friend bool operator==(const RatbagResolution&, const RatbagResolution&) = default;
};

struct RatbagColor {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const RatbagColor&, const RatbagColor&) = default;
};

struct RatbagLed {
  enum class Mode : std::uint8_t { Off = 0, On = 1, Cycle = 2, Breathing = 3 };        // numbers of ratbagd
  enum class ColorDepth : std::uint8_t { Monochrome = 0, EightBits = 1, OneBit = 2 };  // likewise
  std::vector<Mode> modes;                                                             // what it can do
  ColorDepth colorDepth = ColorDepth::Monochrome;
  Mode mode = Mode::Off;
  RatbagColor color;
  std::uint8_t brightness = 0;
  friend bool operator==(const RatbagLed&, const RatbagLed&) = default;
};

// The mouse with its active profile and that one's active resolution.
struct RatbagState {
  std::string name;
  std::string model;                       // "usb:1234:abcd:0"
  std::string firmwareVersion;             // empty where ratbagd does not tell, like that of Debian 12
  std::vector<std::uint32_t> resolutions;  // DPI, ascending; empty: cannot be set
  bool hasSeparateAxes = false;            // X and Y can differ
  RatbagResolution resolution;
  std::vector<std::uint32_t> reportRates;  // Hz, ascending; empty: cannot be set
  std::uint32_t reportRate = 0;
  std::vector<RatbagLed> leds;
  friend bool operator==(const RatbagState&, const RatbagState&) = default;
};

// What the light shall be.
struct RatbagLight {
  bool isOn = false;
  bool isCycling = false;  // through the colours, instead of one
  std::uint8_t brightness = 255;
  std::vector<RatbagColor> colors;  // one for each LED; the last one also for those beyond; none: white
  friend bool operator==(const RatbagLight&, const RatbagLight&) = default;
};

// The allowed value, of an ascending list, that is nearest to the wanted one; of two the smaller. Nothing without any.
std::optional<std::uint32_t> nearestAllowed(const std::vector<std::uint32_t>& allowed, std::uint32_t wanted);
// The same for both axes, with that of X for both where they cannot differ.
std::optional<RatbagResolution> nearestResolution(const RatbagState& state, RatbagResolution wanted);

// The LED at that place as the light shall have it; as it is where it can do nothing of the kind. A mode with one
// colour has its brightness in the colour, as far as the LED's colours have shades.
RatbagLed ledFor(const RatbagLight& light, const RatbagLed& led, std::size_t place);

// Each takes over what ratbagd says in the properties of an interface, all of them or a few; what is missing or makes
// no sense leaves things as they are.
void takeDevice(const PropertyList& properties, RatbagState& state);
void takeProfile(const PropertyList& properties, RatbagState& state);
void takeResolution(const PropertyList& properties, RatbagState& state);
void takeLed(const PropertyList& properties, RatbagLed& led);

// At most so many objects are asked for one after the other; no mouse has as many.
inline constexpr std::size_t maximumRatbagObjects = 32;
// The object paths in what should be a list of them, no more than that.
std::vector<std::string> ratbagPaths(const PropertyList& value);

}  // namespace vorn::engine
