#include "core-engine/rules/ProfileRules.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/SensitivityRules.h"
#include "model/ProfileKeys.h"
#include "model/ProfileOrder.h"
#include "model/RecordLimits.h"
#include "model/SettingsKeys.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

ProfileChange refused(ReturnStatus status, std::string reason, std::string detail = {}) {
  return {std::nullopt, status, {{std::move(reason), std::move(detail)}}};
}

ProfileChange tooLarge() {
  return refused(ReturnStatus::TooLarge, "the record is larger than 1 MiB or has more than 32 levels");
}

// Why this is no position of a profile; nothing when it is one.
std::optional<ProfileChange> faultOfProfileID(const PropertyList& bundle, const PropertyList& profileID) {
  if (!profileID.isInteger()) {
    return refused(ReturnStatus::Malformed, takes(requestKeys::ProfileID, "an integer"), profileID.description(100));
  }
  // A negative number is too large as an unsigned one.
  if (profileID.toUnsigned() >= bundle[keys::Profiles].size()) {
    return refused(ReturnStatus::OutOfRange, "there is no such profile", profileID.description());
  }
  return std::nullopt;
}

PropertyList withActive(const PropertyList& bundle, std::int64_t position) {
  return bundle.with(keys::DeviceSettings, bundle[keys::DeviceSettings].with(keys::ActiveProfile, position));
}

// The keymap in force takes over the current groups.
PropertyList withGroupsStored(const PropertyList& profile) {
  const std::int64_t position = profile[keys::KeymapID].toInt64();
  const PropertyList& keymap = profile[keys::Keymap].at(position);
  if (keymap[keys::Keys] == profile[keys::Keys] && keymap[keys::Buttons] == profile[keys::Buttons]) return profile;
  const PropertyList changed = keymap.with(keys::Keys, profile[keys::Keys]).with(keys::Buttons, profile[keys::Buttons]);
  return profile.with(keys::Keymap, profile[keys::Keymap].replacing(position, changed));
}

// The groups of this keymap become the current ones.
PropertyList withKeymapInForce(const PropertyList& profile, const PropertyList& keymapID) {
  const PropertyList& keymap = profile[keys::Keymap].at(keymapID.toInt64());
  return profile.with(keys::KeymapID, keymapID)
      .with(keys::Keys, keymap[keys::Keys])
      .with(keys::Buttons, keymap[keys::Buttons]);
}

// The stage in force is one of the stages, also where there are fewer of them now.
PropertyList withStageInForce(const PropertyList& profile) {
  const std::size_t count = profile[keys::Stages].size();
  if (count == 0 || std::cmp_less(profile[keys::StageValue].toInt64(), count)) return profile;
  return profile.with(keys::StageValue, count - 1);
}

// Both complete; settings: checked.
PropertyList updatedProfile(const PropertyList& profile, const PropertyList& settings) {
  // What the settings lack of keymaps and groups stays as it was.
  PropertyList before = withGroupsStored(profile);
  if (settings.contains(keys::Keymap)) {
    before = repairedProfile(PropertyList::dictionary({{keys::Keymap, settings[keys::Keymap]}}), before);
  }
  const bool hasKeymapID = settings.contains(keys::KeymapID);
  if (settings.contains(keys::Keymap) || hasKeymapID) {
    before = withKeymapInForce(before, (hasKeymapID ? settings : before)[keys::KeymapID]);
  }
  const PropertyList changed = repairedProfile(settings.without(keys::Keymap), before);
  return withStageInForce(withGroupsStored(withLockedAxes(changed, profile)));
}

// A record from outside as a profile; record: checked.
PropertyList newProfile(const PropertyList& record, const PropertyList& factoryProfile) {
  // Where it has keymaps, the keymap in force tells better than the factory what groups it lacks.
  PropertyList result = repairedProfile(record, factoryProfile);
  const PropertyList& keymap = record[keys::Keymap].at(result[keys::KeymapID].toInt64());
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    if (!record.contains(group) && keymap.contains(group)) {
      result = result.with(group, result[keys::Keymap].at(result[keys::KeymapID].toInt64())[group]);
    }
  }
  return withStageInForce(withGroupsStored(result));
}

PropertyList mirrored(const PropertyList& deviceSettings, const PropertyList& profile, const PropertyList& settings) {
  const bool isRename =
      settings.contains(keys::ProfileName) && settings[keys::ProfileName] != profile[keys::ProfileName];
  PropertyList result = deviceSettings;
  for (const ProfileKey& setting : profileKeys) {
    if (setting.scope != SettingScope::Device) continue;
    const keys::Key key = setting.key;
    const bool isNews = settings.contains(key) && !(isRename && settings[key] == profile[key]);
    if (isNews && settings[key] != result[key]) result = result.with(key, settings[key]);
  }
  return result;
}

// Checked, and without a stage in force that is none of the profile's.
CheckedSettings checkedUpdate(const PropertyList& profile, const PropertyList& settings) {
  CheckedSettings checked = checkedSettings(settings);
  const PropertyList& stages = (checked.settings.contains(keys::Stages) ? checked.settings : profile)[keys::Stages];
  const PropertyList stage = checked.settings[keys::StageValue];
  if (stages.isEmpty() || std::cmp_less(stage.toInt64(), stages.size())) return checked;
  checked.settings = checked.settings.without(keys::StageValue);
  checked.complaints.push_back({quoted(keys::StageValue) + " is the position of no stage", stage.description()});
  return checked;
}

ReturnStatus statusOf(const CheckedSettings& checked) {
  return checked.complaints.empty() ? ReturnStatus::Done : ReturnStatus::PartlyRefused;
}

}  // namespace

ProfileChange withAddedProfile(const PropertyList& bundle, const PropertyList& record,
                               const PropertyList& factoryProfile) {
  if (!record.isDictionary()) {
    return refused(ReturnStatus::Malformed, takes(requestKeys::DeviceSettingsDictionary, "a dictionary"),
                   record.description(100));
  }
  const PropertyList& profiles = bundle[keys::Profiles];
  if (profiles.size() >= keys::maximumProfiles) return refused(ReturnStatus::OutOfRange, "there are five profiles");
  if (!isWithinRecordLimits(record)) return tooLarge();
  CheckedSettings checked = checkedSettings(record);
  const PropertyList profile = newProfile(checked.settings, factoryProfile);
  if (!isWithinRecordLimits(profile)) return tooLarge();
  return {bundle.with(keys::Profiles, profiles.appending(profile)), statusOf(checked), std::move(checked.complaints)};
}

ProfileChange withUpdatedProfile(const PropertyList& bundle, const PropertyList& profileID,
                                 const PropertyList& settings) {
  if (auto fault = faultOfProfileID(bundle, profileID)) return *fault;
  if (!settings.isDictionary()) {
    return refused(ReturnStatus::Malformed, takes(requestKeys::DeviceSettingsDictionary, "a dictionary"),
                   settings.description(100));
  }
  if (!isWithinRecordLimits(settings)) return tooLarge();
  const PropertyList& profiles = bundle[keys::Profiles];
  const PropertyList& profile = profiles.at(profileID.toInt64());
  CheckedSettings checked = checkedUpdate(profile, settings);
  const PropertyList changed = updatedProfile(profile, checked.settings);
  // Settings that fit may grow a record, bit by bit, into one that does not.
  if (!isWithinRecordLimits(changed)) return tooLarge();
  const PropertyList device = mirrored(bundle[keys::DeviceSettings], profile, checked.settings);
  return {
      bundle.with(keys::Profiles, profiles.replacing(profileID.toInt64(), changed)).with(keys::DeviceSettings, device),
      statusOf(checked), std::move(checked.complaints)};
}

ProfileChange withReplacedProfiles(const PropertyList& bundle, const PropertyList& records,
                                   const PropertyList& factoryProfile) {
  if (!records.isArray()) {
    return refused(ReturnStatus::Malformed, takes(requestKeys::AllProfiles, "an array"), records.description(100));
  }
  if (records.isEmpty() || records.size() > keys::maximumProfiles) {
    return refused(ReturnStatus::OutOfRange,
                   takes(requestKeys::AllProfiles, "1 to " + std::to_string(keys::maximumProfiles) + " profiles"),
                   std::to_string(records.size()));
  }
  std::vector<PropertyList> profiles;
  std::vector<Complaint> complaints;
  for (const PropertyList& record : records.elements()) {
    if (!record.isDictionary()) {
      return refused(ReturnStatus::Malformed, "a profile is no dictionary", record.description(100));
    }
    if (!isWithinRecordLimits(record)) return tooLarge();
    CheckedSettings checked = checkedSettings(record);
    if (!checked.isWhole) return {std::nullopt, ReturnStatus::Malformed, std::move(checked.complaints)};
    std::move(checked.complaints.begin(), checked.complaints.end(), std::back_inserter(complaints));
    profiles.push_back(newProfile(record, factoryProfile));
    if (!isWithinRecordLimits(profiles.back())) return tooLarge();
  }
  const std::int64_t last = static_cast<std::int64_t>(profiles.size()) - 1;
  const std::int64_t active = bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
  const PropertyList replaced = bundle.with(keys::Profiles, PropertyList::array(std::move(profiles)));
  return {active > last ? withActive(replaced, last) : replaced,
          complaints.empty() ? ReturnStatus::Done : ReturnStatus::PartlyRefused, std::move(complaints)};
}

ProfileChange withReorderedProfiles(const PropertyList& bundle, const PropertyList& order, const PropertyList& names) {
  const auto positions = orderOfRecord(order);
  if (!positions || order.size() != names.size() || !names.isArray()) {
    return refused(ReturnStatus::Malformed, takes(requestKeys::ProfileOrder, "each position once, as many as names"),
                   order.description(100));
  }
  const PropertyList& profiles = bundle[keys::Profiles];
  if (profileNames(profiles) != names) {
    return refused(ReturnStatus::Outdated, "the profiles are others than the client saw", names.description(100));
  }
  const std::int64_t active = bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
  return {
      withActive(bundle.with(keys::Profiles, profilesInOrder(profiles, *positions)), placeInOrder(*positions, active))};
}

bool areFactorySettings(const PropertyList& settings, const PropertyList& factoryProfile) {
  const auto isAsNew = [&](std::string_view key) {
    const PropertyList& given = settings[key];
    const PropertyList& asNew = factoryProfile[key];
    // A flag may be a boolean.
    const bool isSameFlag = given.isBoolean() && asNew.isNumber() && PropertyList(given.toInt()) == asNew;
    return key == keys::ProfileName || given == asNew || isSameFlag;
  };
  const std::vector<std::string_view> settingKeys = factoryProfile.keys();
  return !settingKeys.empty() && std::all_of(settingKeys.begin(), settingKeys.end(), isAsNew);
}

ProfileChange withoutProfile(const PropertyList& bundle, const PropertyList& profileID) {
  if (auto fault = faultOfProfileID(bundle, profileID)) return *fault;
  const PropertyList& profiles = bundle[keys::Profiles];
  if (profiles.size() == 1) return refused(ReturnStatus::OutOfRange, "the last profile stays");
  const std::int64_t removed = profileID.toInt64();
  const std::int64_t active = bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
  const PropertyList shorter = bundle.with(keys::Profiles, profiles.removing(removed));
  return {removed > active ? shorter : withActive(shorter, std::max<std::int64_t>(active - 1, 0))};
}

ProfileChange withActiveProfile(const PropertyList& bundle, const PropertyList& profileID) {
  if (auto fault = faultOfProfileID(bundle, profileID)) return *fault;
  return {withActive(bundle, profileID.toInt64())};
}

}  // namespace vorn::engine
