#include "core-engine/rules/BundleRules.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "model/Assignments.h"
#include "model/Controls.h"
#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

bool isParameter(const PropertyList& value) {
  return value.isNumber() || value.isString();
}

bool isPosition(const PropertyList& value, std::size_t count) {
  return value.isNumber() && value.toInt64() >= 0 && std::cmp_less(value.toInt64(), count);
}

// A command code; codes that nobody knows are kept.
bool isCommand(const PropertyList& value) {
  return value.isInteger() && value.toInt64() == value.toInt();
}

PropertyList repairedAssignment(const PropertyList& record, const PropertyList& factoryRecord,
                                std::string_view identifier) {
  if (isAssignment(record)) return record;
  const PropertyList factory = isAssignment(factoryRecord) ? factoryRecord : factoryAssignment(identifier);
  if (!isCommand(record[keys::Command])) return record.dictionaryOrEmpty().merging(factory);
  PropertyList result = record;
  // A missing parameter of another command than the factory's has no better value than 0.
  const bool isFactoryCommand = record[keys::Command].toInt() == factory[keys::Command].toInt();
  for (const keys::Key key : {keys::Param1, keys::Param2}) {
    if (!isParameter(record[key])) result = result.with(key, isFactoryCommand ? factory[key] : PropertyList(0));
  }
  return result;
}

PropertyList repairedGroup(const PropertyList& group, const PropertyList& factoryGroup,
                           std::span<const keys::Key> identifiers) {
  PropertyList result = group.dictionaryOrEmpty();
  for (const keys::Key identifier : identifiers) {
    if (isAssignment(result[identifier])) continue;
    result = result.with(identifier, repairedAssignment(result[identifier], factoryGroup[identifier], identifier));
  }
  return result;
}

// "Keys" and "Buttons" of a profile or of one of its keymaps.
PropertyList withRepairedGroups(const PropertyList& holder, const PropertyList& factory) {
  return holder.with(keys::Keys, repairedGroup(holder[keys::Keys], factory[keys::Keys], keys::keyIdentifiers))
      .with(keys::Buttons, repairedGroup(holder[keys::Buttons], factory[keys::Buttons], keys::buttonIdentifiers));
}

PropertyList repairedKeymaps(const PropertyList& keymaps, const PropertyList& factoryProfile) {
  std::vector<PropertyList> result;
  result.reserve(keys::keymapCount);
  for (std::size_t position = 0; position < keys::keymapCount; ++position) {
    const auto index = static_cast<std::int64_t>(position);
    const PropertyList& factoryKeymap = factoryProfile[keys::Keymap].at(index);
    result.push_back(withRepairedGroups(keymaps.at(index).dictionaryOrEmpty(),
                                        factoryKeymap.isDictionary() ? factoryKeymap : factoryProfile));
  }
  return PropertyList::array(std::move(result));
}

PropertyList repairedProfiles(const PropertyList& profiles, const PropertyList& factoryProfile) {
  std::vector<PropertyList> result;
  for (const PropertyList& profile : profiles.elements().first(std::min(profiles.size(), keys::maximumProfiles))) {
    result.push_back(repairedProfile(profile, factoryProfile));
  }
  return PropertyList::array(std::move(result));
}

PropertyList repairedMacros(const PropertyList& macros) {
  std::vector<PropertyList> result;
  result.reserve(macros.size());
  for (const PropertyList& macro : macros.elements()) {
    if (macro[keys::MacroName].isString()) {
      result.push_back(macro);
    } else {
      const std::string name = "Macro " + std::to_string(result.size() + 1);
      result.push_back(macro.dictionaryOrEmpty().with(keys::MacroName, name));
    }
  }
  return PropertyList::array(std::move(result));
}

}  // namespace

bool isAssignment(const PropertyList& record) {
  return isCommand(record[keys::Command]) && isParameter(record[keys::Param1]) && isParameter(record[keys::Param2]);
}

PropertyList repairedProfile(const PropertyList& profile, const PropertyList& factoryProfile) {
  PropertyList result = factoryProfile.dictionaryOrEmpty().merging(profile.dictionaryOrEmpty());
  if (!result[keys::ProfileName].isString()) {
    const PropertyList& name = factoryProfile[keys::ProfileName];
    result = result.with(keys::ProfileName, name.isString() ? name : PropertyList("Default"));
  }
  if (!isPosition(result[keys::KeymapID], keys::keymapCount)) result = result.with(keys::KeymapID, 0);
  result = withRepairedGroups(result, factoryProfile);
  return result.with(keys::Keymap, repairedKeymaps(result[keys::Keymap], factoryProfile));
}

std::optional<PropertyList> repairedBundle(const PropertyList& bundle, const PropertyList& factoryProfile,
                                           std::string* error) {
  const auto fail = [error](const char* reason) {
    if (error) *error = reason;
    return std::nullopt;
  };
  if (!bundle.isDictionary()) return fail("no dictionary of settings");
  const auto profiles = bundle[keys::Profiles].elements();
  if (std::none_of(profiles.begin(), profiles.end(), [](const PropertyList& each) { return each.isDictionary(); })) {
    return fail("no profile in the settings");
  }
  const PropertyList repaired = repairedProfiles(bundle[keys::Profiles], factoryProfile);
  PropertyList device = bundle[keys::DeviceSettings].dictionaryOrEmpty();
  if (!isPosition(device[keys::ActiveProfile], repaired.size())) device = device.with(keys::ActiveProfile, 0);
  return bundle.with(keys::Profiles, repaired)
      .with(keys::Macros, repairedMacros(bundle[keys::Macros]))
      .with(keys::DeviceSettings, device);
}

bool isSendableBundle(const PropertyList& bundle) {
  // More than the other keys and values of any such message take.
  const Bytes reserve(1024);
  return encodeBinaryPropertyList(
             PropertyList::dictionary({{"bundle", bundle}, {"reserve", PropertyList::data(reserve)}}))
      .has_value();
}

bool isCompleteBundle(const PropertyList& bundle) {
  return repairedBundle(bundle, {}) == bundle;
}

}  // namespace vorn::engine
