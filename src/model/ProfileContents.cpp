#include "model/ProfileContents.h"

#include <set>
#include <string_view>

#include "model/Assignments.h"
#include "model/ProfileComparison.h"
#include "model/ProfileKeys.h"
#include "model/SettingsKeys.h"

namespace vorn {

ProfileContents contentsOf(const PropertyList& profile) {
  ProfileContents contents;
  std::set<std::string_view> changed;
  std::set<std::int64_t> changedKeymaps;
  std::set<std::int64_t> macros;
  std::set<std::int64_t> profiles;
  for (std::int64_t keymap = 0; keymap < static_cast<std::int64_t>(keys::keymapCount); ++keymap) {
    for (const Control& control : controls) {
      const PropertyList& record = assignmentIn(profile, keymap, control);
      if (!record.isDictionary() || isFactoryAssignment(record, control)) continue;
      changed.insert(control.identifier);
      changedKeymaps.insert(keymap);
      const std::int64_t target = record[keys::Param1].toInt64();
      if (commandOf(record) == AssignmentCommand::Macro) macros.insert(target);
      if (commandOf(record) == AssignmentCommand::Profile) profiles.insert(target);
    }
  }
  contents.controls = changed.size();
  contents.keymaps = changedKeymaps.size();
  contents.macros.assign(macros.begin(), macros.end());
  contents.profiles.assign(profiles.begin(), profiles.end());
  contents.application = profile[keys::AppInfo][keys::Application].toString();
  for (const ProfileKey& setting : profileKeys) {
    if (profile.contains(setting.key) && !fits(setting, profile[setting.key])) {
      contents.unusable.emplace_back(setting.key);
    }
  }
  return contents;
}

}  // namespace vorn
