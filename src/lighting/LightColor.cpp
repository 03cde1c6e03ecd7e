#include "lighting/LightColor.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "model/SettingsKeys.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr int fullComponent = 255;

std::optional<double> componentOf(const PropertyList& zone, std::string_view key) {
  const PropertyList& value = zone[key];
  if (!value.isNumber() || std::isnan(value.toDouble())) return std::nullopt;
  return std::clamp(value.toDouble(), 0.0, 1.0);
}

int inEightBits(double component) {
  return static_cast<int>(std::lround(component * fullComponent));
}

}  // namespace

QColor colorOfZone(const PropertyList& zone) {
  const auto red = componentOf(zone, keys::Red);
  const auto green = componentOf(zone, keys::Green);
  const auto blue = componentOf(zone, keys::Blue);
  if (!red || !green || !blue) return {};
  return {inEightBits(*red), inEightBits(*green), inEightBits(*blue)};
}

PropertyList zoneInColor(const PropertyList& zone, const QColor& color) {
  PropertyList colored = zone.dictionaryOrEmpty();
  for (const auto& [key, chosen] : {std::pair{keys::Red, color.red()}, std::pair{keys::Green, color.green()},
                                    std::pair{keys::Blue, color.blue()}}) {
    const auto before = componentOf(zone, key);
    const bool isUnchanged = before && inEightBits(*before) == chosen;
    colored = colored.with(key, isUnchanged ? *before : static_cast<double>(chosen) / fullComponent);
  }
  return colored;
}

}  // namespace skarn
