#include "model/References.h"

#include <set>
#include <string_view>
#include <utility>

#include "model/SettingsKeys.h"

namespace vorn {

namespace {

constexpr keys::Key groups[] = {keys::Keys, keys::Buttons};

PropertyList defaultRecord(const PropertyList& defaultProfile, std::string_view group, std::string_view identifier) {
  const PropertyList& record = defaultProfile[group][identifier];
  return record.isDictionary() ? record : factoryAssignment(identifier);
}

// Keeps the references of a profile or of a keymap.
class Keeper {
 public:
  Keeper(const Deletion& deletion, const PropertyList& defaultProfile)
      : mDeletion(deletion), mDefaultProfile(defaultProfile) {}

  // before, after: a profile or a keymap.
  PropertyList keptGroups(const PropertyList& before, PropertyList after) const {
    for (const keys::Key group : groups) {
      const PropertyList& records = before[group];
      PropertyList kept = after[group];
      for (std::size_t entry = 0; entry < records.size() && records.isDictionary(); ++entry) {
        const std::string_view identifier = records.keyAt(entry);
        const PropertyList record = keptRecord(records.valueAt(entry), kept[identifier], group, identifier);
        if (record != kept[identifier]) kept = kept.with(identifier, record);
      }
      if (kept != after[group]) after = after.with(group, kept);
    }
    return after;
  }

  PropertyList keptProfile(const PropertyList& before, const PropertyList& after) const {
    // Another keymap may be in force by now.
    const PropertyList& keymapID = after[keys::KeymapID];
    const bool isSameKeymap = before[keys::KeymapID] == keymapID;
    const PropertyList kept = keptGroups(isSameKeymap ? before : before[keys::Keymap].at(keymapID.toInt64()), after);
    PropertyList keymaps = kept[keys::Keymap];
    for (std::size_t position = 0; position < keymaps.size() && keymaps.isArray(); ++position) {
      const auto index = static_cast<std::int64_t>(position);
      const PropertyList keymap = keptGroups(before[keys::Keymap].at(index), keymaps.at(index));
      if (keymap != keymaps.at(index)) keymaps = keymaps.replacing(index, keymap);
    }
    return keymaps == kept[keys::Keymap] ? kept : kept.with(keys::Keymap, keymaps);
  }

 private:
  PropertyList keptRecord(const PropertyList& before, const PropertyList& after, std::string_view group,
                          std::string_view identifier) const {
    if (commandOf(before) != mDeletion.command) return after;
    const std::int64_t target = before[keys::Param1].toInt64();
    if (target < mDeletion.position) return after;
    const PropertyList normal = defaultRecord(mDefaultProfile, group, identifier);
    if (after != before && after != normal) return after;
    const bool isLost = target == mDeletion.position || std::cmp_greater_equal(target, mDeletion.count);
    return isLost ? normal : before.with(keys::Param1, target - 1);
  }

  const Deletion& mDeletion;
  const PropertyList& mDefaultProfile;
};

void collectLost(const PropertyList& holder, const Deletion& deletion, std::set<std::string>& identifiers) {
  for (const keys::Key group : groups) {
    for (const std::string_view identifier : holder[group].keys()) {
      const PropertyList& record = holder[group][identifier];
      if (commandOf(record) != deletion.command || record[keys::Param1].toInt64() != deletion.position) continue;
      identifiers.emplace(identifier);
    }
  }
}

bool isDeleted(std::size_t profile, const Deletion& deletion) {
  return deletion.command == AssignmentCommand::Profile && std::cmp_equal(profile, deletion.position);
}

}  // namespace

PropertyList withReferencesKept(const PropertyList& before, const PropertyList& after, const Deletion& deletion,
                                const PropertyList& defaultProfile) {
  const bool isProfileDeleted = deletion.command == AssignmentCommand::Profile;
  if (before.size() != after.size() + (isProfileDeleted ? 1 : 0)) return after;
  const Keeper keeper(deletion, defaultProfile);
  PropertyList result = after;
  std::int64_t position = 0;
  for (std::size_t old = 0; old < before.size(); ++old) {
    if (isDeleted(old, deletion)) continue;
    const PropertyList profile = keeper.keptProfile(before.at(static_cast<std::int64_t>(old)), after.at(position));
    if (profile != after.at(position)) result = result.replacing(position, profile);
    ++position;
  }
  return result;
}

std::vector<Reference> referencesTo(const PropertyList& profiles, const Deletion& deletion) {
  std::vector<Reference> references;
  for (std::size_t position = 0; position < profiles.size(); ++position) {
    if (isDeleted(position, deletion)) continue;
    std::set<std::string> identifiers;
    const PropertyList& profile = profiles.at(static_cast<std::int64_t>(position));
    collectLost(profile, deletion, identifiers);
    for (const PropertyList& keymap : profile[keys::Keymap].elements()) collectLost(keymap, deletion, identifiers);
    for (const std::string& identifier : identifiers) references.push_back({position, identifier});
  }
  return references;
}

}  // namespace vorn
