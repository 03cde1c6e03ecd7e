#include "model/ProfileKeys.h"

#include <algorithm>
#include <utility>

namespace vorn {

namespace {

bool isNumberWithin(const PropertyList& value, const SettingRange& range) {
  // As a real, an unsigned integer beyond the signed ones stays beyond the maximum.
  return value.isNumber() && value.toDouble() >= range.minimum && value.toDouble() <= range.maximum;
}

bool isIntegerWithin(const PropertyList& value, const SettingRange& range) {
  return value.isInteger() && isNumberWithin(value, range);
}

bool isMissingOrWithin(const PropertyList& value, const SettingRange& range) {
  return value.isNone() || isNumberWithin(value, range);
}

bool isKeymap(const PropertyList& keymap) {
  const auto isGroup = [&](keys::Key group) { return !keymap.contains(group) || keymap[group].isDictionary(); };
  return keymap.isDictionary() && isGroup(keys::Keys) && isGroup(keys::Buttons);
}

bool isStage(const PropertyList& stage, const SettingRange& sensitivities) {
  return isIntegerWithin(stage[keys::StageDpiX], sensitivities) &&
         isIntegerWithin(stage[keys::StageDpiY], sensitivities) &&
         isMissingOrWithin(stage[keys::StageIndependentXY], {0, 1});
}

bool isColor(const PropertyList& color, const SettingRange& components) {
  return color.isDictionary() && isMissingOrWithin(color[keys::Red], components) &&
         isMissingOrWithin(color[keys::Green], components) && isMissingOrWithin(color[keys::Blue], components);
}

template <typename Predicate>
bool isArrayOf(const PropertyList& value, const SettingRange& count, Predicate isElement) {
  const auto elements = value.elements();
  return value.isArray() && std::cmp_greater_equal(elements.size(), count.minimum) &&
         std::cmp_less_equal(elements.size(), count.maximum) &&
         std::all_of(elements.begin(), elements.end(), isElement);
}

}  // namespace

bool fits(const ProfileKey& setting, const PropertyList& value) {
  switch (setting.type) {
    case SettingType::Text:
      return value.isString();
    case SettingType::Integer:
      return isIntegerWithin(value, setting.range);
    case SettingType::Flag:
      return value.isBoolean() || isIntegerWithin(value, setting.range);
    case SettingType::Dictionary:
      return value.isDictionary();
    case SettingType::Array:
      return value.isArray();
    case SettingType::Texts:
      return isArrayOf(value, setting.range, [](const PropertyList& text) { return text.isString(); });
    case SettingType::Keymaps:
      return isArrayOf(value, setting.range, isKeymap);
    case SettingType::Stages:
      return isArrayOf(value, setting.range,
                       [&](const PropertyList& stage) { return isStage(stage, setting.elements); });
    case SettingType::Colors:
      return isArrayOf(value, setting.range,
                       [&](const PropertyList& color) { return isColor(color, setting.elements); });
  }
  return false;
}

namespace {

std::string textOf(const SettingRange& range) {
  return std::to_string(range.minimum) + " to " + std::to_string(range.maximum);
}

std::string spaced(std::string_view unit) {
  return unit.empty() ? std::string() : " " + std::string(unit);
}

}  // namespace

std::string_view unitWord(SettingUnit unit) {
  switch (unit) {
    case SettingUnit::None:
      break;
    case SettingUnit::Dpi:
      return "DPI";
    case SettingUnit::Hertz:
      return "Hz";
  }
  return "";
}

std::string expectation(const ProfileKey& setting) {
  switch (setting.type) {
    case SettingType::Text:
      return "a text";
    case SettingType::Flag:
      return "0 or 1 (off, on)";
    case SettingType::Integer:
      return ("a whole number from " + textOf(setting.range)).append(spaced(unitWord(setting.unit)));
    case SettingType::Dictionary:
      return "a dictionary";
    case SettingType::Array:
      return "an array";
    case SettingType::Texts:
      return "an array of " + textOf(setting.range) + " texts";
    case SettingType::Keymaps:
      return "an array of " + textOf(setting.range) + " keymaps";
    case SettingType::Stages:
      return ("an array of " + textOf(setting.range) + " stages from " + textOf(setting.elements))
          .append(spaced(unitWord(setting.unit)));
    case SettingType::Colors:
      return "an array of colours with components from " + textOf(setting.elements);
  }
  return {};
}

std::span<const std::int32_t> choicesOf(const ProfileKey& setting) {
  static constexpr std::array pollingRates = {125, 500, 1000};
  if (setting.key == keys::PollingRate) return pollingRates;
  return {};
}

bool isChoice(const ProfileKey& setting, const PropertyList& value) {
  const auto choices = choicesOf(setting);
  return fits(setting, value) && (choices.empty() || std::ranges::find(choices, value.toInt()) != choices.end());
}

std::string choiceExpectation(const ProfileKey& setting) {
  const auto choices = choicesOf(setting);
  if (choices.empty()) return expectation(setting);
  std::string result;
  for (std::size_t index = 0; index < choices.size(); ++index) {
    if (index > 0) result += index + 1 == choices.size() ? " or " : ", ";
    result += std::to_string(choices[index]);
  }
  return result + spaced(unitWord(setting.unit));
}

const ProfileKey* profileKeyOf(std::string_view key) {
  const auto* const found = std::ranges::find(profileKeys, key, &ProfileKey::key);
  return found == profileKeys.end() ? nullptr : found;
}

}  // namespace vorn
