#include <utility>
#include <vector>

#include "ctl/Assignment.h"
#include "ctl/AssignmentWords.h"
#include "ctl/Commands.h"
#include "ctl/Controls.h"
#include "ctl/Keys.h"
#include "ctl/Numbers.h"
#include "ctl/Settings.h"
#include "ctl/Text.h"

namespace vorn::ctl {

namespace {

// The group with the record's values under the control; what else is there stays.
PropertyList withAssignment(const PropertyList& group, const Control& control, const PropertyList& record) {
  return group.with(control.identifier, group[control.identifier].merging(record));
}

// A control that steps through the keymaps has to do so in all of them.
PropertyList withAssignmentInAll(const PropertyList& keymaps, const Control& control, const PropertyList& record) {
  std::vector<PropertyList> changed;
  for (const PropertyList& keymap : keymaps.elements()) {
    changed.push_back(keymap.with(control.group, withAssignment(keymap[control.group], control, record)));
  }
  return PropertyList::array(std::move(changed));
}

std::string lineOf(const Control& control, const std::string& action) {
  constexpr std::size_t numberWidth = 4;
  constexpr std::size_t nameWidth = 13;
  std::string line = padded((control.number < 10 ? " " : "") + std::to_string(control.number), numberWidth);
  line += padded(std::string(control.name), nameWidth);
  return line += action;
}

PropertyList described(const Control& control, const std::string& action, const PropertyList& record) {
  return PropertyList::dictionary({{"number", control.number},
                                   {"control", control.name},
                                   {"identifier", control.identifier},
                                   {"action", action},
                                   {keys::Command, record[keys::Command]},
                                   {keys::Param1, record[keys::Param1]},
                                   {keys::Param2, record[keys::Param2]}});
}

}  // namespace

Outcome assign(Context& context, const Arguments& arguments) {
  const Control* control = controlNamed(arguments[0]);
  if (control == nullptr) return Failure{ExitStatus::Usage, "there is no control \"" + arguments[0] + "\""};
  const auto action = parseAction(*control, Arguments(arguments.begin() + 1, arguments.end()), context.line);
  if (!action) return action.failure();
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto profileID = chosenProfile(*bundle, context.line);
  if (!profileID) return profileID.failure();
  const auto record = resolvedAction(*action, *bundle);
  if (!record) return record.failure();

  const PropertyList& profile = (*bundle)[keys::Profiles].at(*profileID);
  PropertyList settings =
      PropertyList::dictionary({{control->group, withAssignment(profile[control->group], *control, *record)}});
  const bool isCycle = commandOf(*record) == AssignmentCommand::Keymap && (*record)[keys::Param1].toInt() == nextKeymap;
  if (isCycle) settings = settings.with(keys::Keymap, withAssignmentInAll(profile[keys::Keymap], *control, *record));
  // In another profile, the keymap that is in force there by now counts.
  if (isCycle || *profileID == activeProfileID(*bundle)) {
    settings = settings.with(keys::KeymapID, profile[keys::KeymapID].toInt());
  }
  return updateProfile(context.engine, *profileID, settings);
}

Outcome listAssignments(Context& context, const Arguments&) {
  const auto& wanted = context.line.keymap;
  const auto keymapNumber = numberOf(wanted.value_or("1"), 1, static_cast<std::int64_t>(keys::keymapCount));
  if (!keymapNumber) return Failure{ExitStatus::Usage, "--keymap takes 1 to 8"};
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto profileID = chosenProfile(*bundle, context.line);
  if (!profileID) return profileID.failure();
  const PropertyList& profile = (*bundle)[keys::Profiles].at(*profileID);
  const PropertyList& groups = wanted ? profile[keys::Keymap].at(*keymapNumber - 1) : profile;

  std::vector<std::string> lines;
  std::vector<PropertyList> list;
  for (const Control& control : controls) {
    const PropertyList& record = groups[control.group][control.identifier];
    const std::string action = wordsOf(record, control, *bundle);
    lines.push_back(lineOf(control, action));
    list.push_back(described(control, action, record));
  }
  context.output.either(lines, PropertyList::array(std::move(list)));
  return std::nullopt;
}

Outcome listKeys(Context& context, const Arguments&) {
  const Names names = keyWords();
  std::vector<PropertyList> list;
  for (const std::string& name : names) {
    list.push_back(PropertyList::dictionary({{"name", name}, {"usage", *hid::keyNamed(name)}}));
  }
  context.output.either(names, PropertyList::array(std::move(list)));
  return std::nullopt;
}

}  // namespace vorn::ctl
