#include "core-engine/rules/ProfileValues.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>

#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/SensitivityRules.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

enum class Kind : std::uint8_t { Text, Number, Dictionary, List, Group, Keymaps, Stages, Colors };

struct Rule {
  keys::Key key;
  Kind kind;
  std::int32_t minimum = 0;  // of a number
  std::int32_t maximum = 0;
};

constexpr std::int32_t maximumLevel = 255;

constexpr Rule rules[] = {
    {keys::ProfileName, Kind::Text},
    {keys::Keys, Kind::Group},
    {keys::Buttons, Kind::Group},
    {keys::Keymap, Kind::Keymaps},
    {keys::KeymapID, Kind::Number, 0, static_cast<std::int32_t>(keys::keymapCount) - 1},
    {keys::Stages, Kind::Stages},
    {keys::StageValue, Kind::Number, 0, static_cast<std::int32_t>(keys::maximumStages) - 1},
    {keys::DPIX, Kind::Number, minimumDpi, maximumDpi},
    {keys::DPIY, Kind::Number, minimumDpi, maximumDpi},
    {keys::IndependentXYOn, Kind::Number, 0, 1},
    {keys::SensitivityOSDOn, Kind::Number, 0, 1},
    {keys::MasterSensitivityOn, Kind::Number, 0, 1},
    {keys::Sensitivity, Kind::List},
    {keys::AccelerationOn, Kind::Number, 0, 1},
    {keys::Acceleration, Kind::Number, 0, maximumLevel},
    {keys::PollingRate, Kind::Number, 125, 1000},
    {keys::LEDColors, Kind::Colors},
    {keys::LEDEffects, Kind::Number, 0, maximumLevel},
    {keys::ScrollLED, Kind::Number, 0, 1},
    {keys::BrightnessKBNormal, Kind::Number, 0, maximumLevel},
    {keys::BrightnessNormal, Kind::Number, 0, maximumLevel},
    {keys::BrightnessBattery, Kind::Number, 0, maximumLevel},
    {keys::PowerSaver, Kind::Number, 0, maximumLevel},
    {keys::BatteryCriticalLevel, Kind::Number, 0, maximumLevel},
    {keys::AppInfo, Kind::Dictionary},
    {keys::AutoSwitchOn, Kind::Number, 0, 1},
    {keys::ProfileOSDOn, Kind::Number, 0, 1},
};

bool isNumberWithin(const PropertyList& value, std::int32_t minimum, std::int32_t maximum) {
  // As a real, an unsigned integer beyond the signed ones stays beyond the maximum.
  return value.isNumber() && value.toDouble() >= minimum && value.toDouble() <= maximum;
}

// A count, a position or a level; a flag may be a boolean.
bool isIntegerWithin(const PropertyList& value, std::int32_t minimum, std::int32_t maximum) {
  return (value.isInteger() || (value.isBoolean() && maximum == 1)) && isNumberWithin(value, minimum, maximum);
}

bool isMissingOrWithin(const PropertyList& value, std::int32_t minimum, std::int32_t maximum) {
  return value.isNone() || isNumberWithin(value, minimum, maximum);
}

bool isStage(const PropertyList& stage) {
  return isIntegerWithin(stage[keys::StageDpiX], minimumDpi, maximumDpi) &&
         isIntegerWithin(stage[keys::StageDpiY], minimumDpi, maximumDpi) &&
         isMissingOrWithin(stage[keys::StageIndependentXY], 0, 1);
}

bool isColor(const PropertyList& color) {
  return color.isDictionary() && isMissingOrWithin(color[keys::Red], 0, 1) &&
         isMissingOrWithin(color[keys::Green], 0, 1) && isMissingOrWithin(color[keys::Blue], 0, 1);
}

template <typename Predicate>
bool isArrayOf(const PropertyList& value, std::size_t maximum, Predicate isElement) {
  const auto elements = value.elements();
  return !elements.empty() && elements.size() <= maximum && std::all_of(elements.begin(), elements.end(), isElement);
}

bool fits(const Rule& rule, const PropertyList& value) {
  switch (rule.kind) {
    case Kind::Text:
      return value.isString();
    case Kind::Number:
      return isIntegerWithin(value, rule.minimum, rule.maximum);
    case Kind::Dictionary:
    case Kind::Group:
      return value.isDictionary();
    case Kind::List:
      return value.isArray();
    case Kind::Keymaps:
      return isArrayOf(value, keys::keymapCount, [](const PropertyList& keymap) {
        const auto isGroup = [&](keys::Key group) { return !keymap.contains(group) || keymap[group].isDictionary(); };
        return keymap.isDictionary() && isGroup(keys::Keys) && isGroup(keys::Buttons);
      });
    case Kind::Stages:
      return isArrayOf(value, keys::maximumStages, isStage);
    case Kind::Colors:
      return isArrayOf(value, maximumLevel, isColor);
  }
  return false;
}

std::string expectation(const Rule& rule) {
  switch (rule.kind) {
    case Kind::Text:
      return "a text";
    case Kind::Number:
      return "a whole number from " + std::to_string(rule.minimum) + " to " + std::to_string(rule.maximum);
    case Kind::Dictionary:
    case Kind::Group:
      return "a dictionary";
    case Kind::List:
      return "an array";
    case Kind::Keymaps:
      return "an array of 1 to 8 keymaps";
    case Kind::Stages:
      return "an array of 1 to 5 stages from 100 to 5600 DPI";
    case Kind::Colors:
      return "an array of colours with components from 0 to 1";
  }
  return {};
}

// The first identifier in the group whose record is incomplete; identifiers beyond the controls need whole records too.
std::optional<std::string_view> incompleteRecordOf(const PropertyList& group) {
  if (!group.isDictionary()) return std::nullopt;
  for (std::size_t entry = 0; entry < group.size(); ++entry) {
    if (!isAssignment(group.valueAt(entry))) return group.keyAt(entry);
  }
  return std::nullopt;
}

// holder: a profile record or a keymap.
std::optional<std::string_view> incompleteRecord(const PropertyList& holder) {
  const auto key = incompleteRecordOf(holder[keys::Keys]);
  return key ? key : incompleteRecordOf(holder[keys::Buttons]);
}

std::optional<std::string_view> incompleteAssignment(const PropertyList& settings) {
  if (const auto identifier = incompleteRecord(settings)) return identifier;
  for (const PropertyList& keymap : settings[keys::Keymap].elements()) {
    if (const auto identifier = incompleteRecord(keymap)) return identifier;
  }
  return std::nullopt;
}

}  // namespace

CheckedSettings checkedSettings(const PropertyList& settings) {
  CheckedSettings result{settings, {}};
  for (const Rule& rule : rules) {
    const PropertyList& value = settings[rule.key];
    if (value.isNone() || fits(rule, value)) continue;
    result.settings = result.settings.without(rule.key);
    result.complaints.push_back(
        {std::string("\"").append(rule.key).append("\" takes ").append(expectation(rule)), value.description(100)});
    result.isWhole = false;
  }
  if (const auto identifier = incompleteAssignment(result.settings)) {
    result.complaints.push_back({"an assignment is incomplete", "control " + std::string(*identifier)});
  }
  return result;
}

}  // namespace vorn::engine
