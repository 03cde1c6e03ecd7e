#include "ctl/References.h"

#include <vector>

#include "ctl/Settings.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

namespace {

struct Deletion {
  AssignmentCommand command;
  std::int64_t position;
};

PropertyList cleanedRecord(const PropertyList& record, std::string_view identifier, const Deletion& deletion) {
  if (commandOf(record) != deletion.command) return record;
  const std::int64_t target = record[keys::Param1].toInt64();
  if (target < deletion.position) return record;
  if (target > deletion.position) return record.with(keys::Param1, target - 1);
  return record.merging(factoryAssignment(identifier));
}

// holder: a profile or a keymap.
PropertyList cleanedGroups(PropertyList holder, const Deletion& deletion) {
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    const PropertyList before = holder[group];
    PropertyList after = before;
    for (const std::string_view identifier : before.keys()) {
      const PropertyList cleaned = cleanedRecord(before[identifier], identifier, deletion);
      if (cleaned != before[identifier]) after = after.with(identifier, cleaned);
    }
    if (after != before) holder = holder.with(group, after);
  }
  return holder;
}

PropertyList cleanedProfile(const PropertyList& profile, const Deletion& deletion) {
  std::vector<PropertyList> keymaps;
  for (const PropertyList& keymap : profile[keys::Keymap].elements()) {
    keymaps.push_back(cleanedGroups(keymap, deletion));
  }
  const PropertyList cleaned = cleanedGroups(profile, deletion);
  return keymaps.empty() ? cleaned : cleaned.with(keys::Keymap, PropertyList::array(std::move(keymaps)));
}

}  // namespace

PropertyList withoutReferencesTo(const PropertyList& profiles, AssignmentCommand command, std::int64_t deleted) {
  std::vector<PropertyList> cleaned;
  for (const PropertyList& profile : profiles.elements()) {
    cleaned.push_back(cleanedProfile(profile, {command, deleted}));
  }
  return PropertyList::array(std::move(cleaned));
}

Outcome removeReferences(EngineClient& engine, const PropertyList& bundle, AssignmentCommand command,
                         std::int64_t deleted) {
  const PropertyList& profiles = bundle[keys::Profiles];
  const PropertyList cleaned = withoutReferencesTo(profiles, command, deleted);
  if (profiles.isEmpty() || cleaned == profiles) return std::nullopt;
  return outcomeOf(
      change(engine, MessageID::ReplaceAllProfiles, PropertyList::dictionary({{requestKeys::AllProfiles, cleaned}})));
}

}  // namespace vorn::ctl
