#include "core-engine/rules/ProfileValues.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core-engine/rules/BundleRules.h"
#include "model/ProfileKeys.h"

namespace vorn::engine {

namespace {

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

std::string quoted(std::string_view key) {
  return std::string("\"").append(key).append("\"");
}

std::string takes(std::string_view key, const std::string& expected) {
  return quoted(key) + " takes " + expected;
}

CheckedSettings checkedSettings(const PropertyList& settings) {
  CheckedSettings result{settings, {}};
  for (const ProfileKey& setting : profileKeys) {
    const PropertyList& value = settings[setting.key];
    if (value.isNone() || fits(setting, value)) continue;
    result.settings = result.settings.without(setting.key);
    result.complaints.push_back({takes(setting.key, expectation(setting)), value.description(100)});
    result.isWhole = false;
  }
  if (const auto identifier = incompleteAssignment(result.settings)) {
    result.complaints.push_back({"an assignment is incomplete", "control " + std::string(*identifier)});
  }
  return result;
}

}  // namespace vorn::engine
