#include <vector>

#include "ctl/Assignment.h"
#include "ctl/Commands.h"
#include "ctl/Controls.h"
#include "ctl/Settings.h"

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

}  // namespace vorn::ctl
