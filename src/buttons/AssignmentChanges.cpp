#include "buttons/AssignmentChanges.h"

#include <string>
#include <string_view>
#include <vector>

#include "model/SettingsKeys.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

// Identifiers of the buttons group have two digits.
std::string buttonsIdentifier(int number) {
  const std::string digits = std::to_string(number);
  return number <= 9 ? "0" + digits : digits;
}

PropertyList withCycle(const PropertyList& group, std::string_view button) {
  return withAssignment(group, button, static_cast<int>(vorn::AssignmentCommand::Keymap), vorn::nextKeymap, 0);
}

struct Deletion {
  int mapping;
  int deletedIndex;
  int listSize;

  bool concerns(const PropertyList& record) const {
    if (record[keys::Command].toInt() != mapping) return false;
    const int target = record[keys::Param1].toInt();
    return target == deletedIndex || target > listSize - 1;
  }
};

PropertyList remappedGroup(const PropertyList& group, const PropertyList& defaults, bool isButtons,
                           const Deletion& deletion) {
  PropertyList changed = group;
  for (const std::string_view key : group.keys()) {
    const int number = PropertyList(key).toInt();
    const std::string identifier = isButtons ? buttonsIdentifier(number) : std::to_string(number);
    if (!deletion.concerns(group[identifier]) || !defaults.contains(identifier)) continue;
    changed = changed.with(identifier, defaults[identifier]);
  }
  return changed;
}

}  // namespace

PropertyList withAssignment(const PropertyList& group, std::string_view button, int command, const PropertyList& param1,
                            const PropertyList& param2) {
  return group.with(button,
                    group[button].with(keys::Command, command).with(keys::Param1, param1).with(keys::Param2, param2));
}

PropertyList keymapsWithCycle(const PropertyList& keymaps, std::string_view groupKey, std::string_view button) {
  std::vector<PropertyList> changed;
  changed.reserve(keymaps.size());
  for (const PropertyList& keymap : keymaps.elements()) {
    changed.push_back(keymap.isDictionary() ? keymap.with(groupKey, withCycle(keymap[groupKey], button)) : keymap);
  }
  return PropertyList::array(std::move(changed));
}

PropertyList remappedProfiles(const PropertyList& profiles, const PropertyList& defaultProfile, int mapping,
                              int deletedIndex, int listSize) {
  const Deletion deletion{mapping, deletedIndex, listSize};
  std::vector<PropertyList> changed;
  changed.reserve(profiles.size());
  for (const PropertyList& profile : profiles.elements()) {
    PropertyList copy = profile;
    for (const auto group : {keys::Keys, keys::Buttons}) {
      if (!profile[group].isDictionary()) continue;
      copy = copy.with(group, remappedGroup(profile[group], defaultProfile[group], group == keys::Buttons, deletion));
    }
    changed.push_back(std::move(copy));
  }
  return PropertyList::array(std::move(changed));
}

}  // namespace skarn
