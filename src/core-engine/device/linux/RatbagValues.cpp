#include "core-engine/device/linux/RatbagValues.h"

#include <algorithm>

namespace vorn::engine {

namespace {

using Mode = RatbagLed::Mode;
using ColorDepth = RatbagLed::ColorDepth;

constexpr std::int64_t largestNumber = 1'000'000;  // of DPI or Hz
constexpr std::size_t maximumNumbers = 4096;
constexpr std::size_t maximumTextLength = 256;
constexpr std::uint8_t brightest = 255;

bool isNumber(const PropertyList& value) {
  return value.isInteger() && value.toInt64() >= 1 && value.toInt64() <= largestNumber;
}

void takeText(const PropertyList& value, std::string& text) {
  if (value.isString() && value.string().size() <= maximumTextLength) text = value.toString();
}

void takeNumber(const PropertyList& value, std::uint32_t& number) {
  if (isNumber(value)) number = static_cast<std::uint32_t>(value.toInt64());
}

void takeByte(const PropertyList& value, std::uint8_t& byte) {
  if (value.isInteger() && value.toInt64() >= 0 && value.toInt64() <= 255) {
    byte = static_cast<std::uint8_t>(value.toInt64());
  }
}

void takeNumbers(const PropertyList& value, std::vector<std::uint32_t>& numbers) {
  if (!value.isArray()) return;
  std::vector<std::uint32_t> taken;
  for (const PropertyList& element : value.elements()) {
    if (isNumber(element) && taken.size() < maximumNumbers)
      taken.push_back(static_cast<std::uint32_t>(element.toInt64()));
  }
  std::ranges::sort(taken);
  taken.erase(std::unique(taken.begin(), taken.end()), taken.end());
  numbers = std::move(taken);
}

std::optional<Mode> modeOf(const PropertyList& value) {
  if (!value.isInteger() || value.toInt64() < 0 || value.toInt64() > static_cast<int>(Mode::Breathing)) {
    return std::nullopt;
  }
  return static_cast<Mode>(value.toInt64());
}

bool can(const RatbagLed& led, Mode mode) {
  return std::ranges::find(led.modes, mode) != led.modes.end();
}

RatbagColor colorFor(const RatbagLight& light, std::size_t place) {
  if (light.colors.empty()) return {brightest, brightest, brightest};
  return light.colors[std::min(place, light.colors.size() - 1)];
}

RatbagColor inDepth(const RatbagColor& color, ColorDepth depth, std::uint8_t brightness) {
  const auto shade = [&](std::uint8_t component) {
    if (depth == ColorDepth::OneBit) return static_cast<std::uint8_t>(component < 128 ? 0 : brightest);
    return static_cast<std::uint8_t>((component * brightness + brightest / 2) / brightest);
  };
  return {shade(color.red), shade(color.green), shade(color.blue)};
}

}  // namespace

std::optional<std::uint32_t> nearestAllowed(const std::vector<std::uint32_t>& allowed, std::uint32_t wanted) {
  if (allowed.empty()) return std::nullopt;
  const auto above = std::ranges::lower_bound(allowed, wanted);
  if (above == allowed.begin()) return *above;
  const std::uint32_t below = *std::prev(above);
  return above == allowed.end() || wanted - below <= *above - wanted ? below : *above;
}

std::optional<RatbagResolution> nearestResolution(const RatbagState& state, RatbagResolution wanted) {
  const auto x = nearestAllowed(state.resolutions, wanted.x);
  const auto y = nearestAllowed(state.resolutions, state.hasSeparateAxes ? wanted.y : wanted.x);
  if (!x || !y) return std::nullopt;
  return RatbagResolution{*x, *y};
}

RatbagLed ledFor(const RatbagLight& light, const RatbagLed& led, std::size_t place) {
  RatbagLed result = led;
  const bool isLit = light.isOn && light.brightness > 0;
  if (!isLit && can(led, Mode::Off)) {
    result.mode = Mode::Off;
  } else if (isLit && light.isCycling && can(led, Mode::Cycle)) {
    result.mode = Mode::Cycle;
    result.brightness = light.brightness;
  } else if (can(led, Mode::On)) {
    result.mode = Mode::On;
    // Mice differ in whether this dims a single colour: so it is all in the colour.
    result.brightness = brightest;
    result.color = isLit ? inDepth(colorFor(light, place), led.colorDepth, light.brightness) : RatbagColor{};
    if (led.colorDepth == ColorDepth::Monochrome) {
      result.color = led.color;
      result.brightness = isLit ? light.brightness : 0;
    }
  }
  return result;
}

void takeDevice(const PropertyList& properties, RatbagState& state) {
  takeText(properties["Name"], state.name);
  takeText(properties["Model"], state.model);
  takeText(properties["FirmwareVersion"], state.firmwareVersion);
}

void takeProfile(const PropertyList& properties, RatbagState& state) {
  takeNumber(properties["ReportRate"], state.reportRate);
  takeNumbers(properties["ReportRates"], state.reportRates);
}

void takeResolution(const PropertyList& properties, RatbagState& state) {
  takeNumbers(properties["Resolutions"], state.resolutions);
  const PropertyList& resolution = properties["Resolution"];
  if (isNumber(resolution)) {
    state.hasSeparateAxes = false;
    takeNumber(resolution, state.resolution.x);
    state.resolution.y = state.resolution.x;
  } else if (resolution.size() == 2 && isNumber(resolution.at(0)) && isNumber(resolution.at(1))) {
    state.hasSeparateAxes = true;
    takeNumber(resolution.at(0), state.resolution.x);
    takeNumber(resolution.at(1), state.resolution.y);
  }
}

void takeLed(const PropertyList& properties, RatbagLed& led) {
  if (const PropertyList& modes = properties["Modes"]; modes.isArray()) {
    led.modes.clear();
    for (const PropertyList& element : modes.elements()) {
      const auto mode = modeOf(element);
      if (mode && !can(led, *mode)) led.modes.push_back(*mode);
    }
  }
  std::uint8_t depth = brightest;
  takeByte(properties["ColorDepth"], depth);
  if (depth <= static_cast<std::uint8_t>(ColorDepth::OneBit)) led.colorDepth = static_cast<ColorDepth>(depth);
  led.mode = modeOf(properties["Mode"]).value_or(led.mode);
  takeByte(properties["Brightness"], led.brightness);
  if (const PropertyList& color = properties["Color"]; color.size() == 3) {
    takeByte(color.at(0), led.color.red);
    takeByte(color.at(1), led.color.green);
    takeByte(color.at(2), led.color.blue);
  }
}

std::vector<std::string> ratbagPaths(const PropertyList& value) {
  std::vector<std::string> paths;
  for (const PropertyList& element : value.elements()) {
    if (element.string().starts_with('/') && paths.size() < maximumRatbagObjects) paths.push_back(element.toString());
  }
  return paths;
}

}  // namespace vorn::engine
