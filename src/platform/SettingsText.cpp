#include "platform/SettingsText.h"

#include <array>
#include <cstddef>

#include "platform/Localization.h"

namespace skarn {

QString textOf(const vorn::PropertyList& dictionary, std::string_view key) {
  const std::string_view text = dictionary[key].string();
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<std::int32_t> numberOf(const vorn::PropertyList& dictionary, std::string_view key) {
  const vorn::PropertyList& value = dictionary[key];
  if (!value.isNumber()) return std::nullopt;
  return value.toInt();
}

QString onOffText(std::optional<std::int32_t> flag) {
  if (!flag) return {};
  return localized(*flag != 0 ? "lkeyOn" : "lkeyOff");
}

QString scaleText(std::span<const char* const> keys, std::optional<std::int32_t> position) {
  if (!position || *position < 1 || *position > static_cast<std::int32_t>(keys.size())) return {};
  return localized(keys[static_cast<std::size_t>(*position - 1)]);
}

QString brightnessText(std::optional<std::int32_t> position) {
  static constexpr std::array<const char*, 4> keys = {"lkeyBrightnessOff", "lkeyBrightnessDim", "lkeyBrightnessNormal",
                                                      "lkeyBrightnessBright"};
  return scaleText(keys, position);
}

}  // namespace skarn
