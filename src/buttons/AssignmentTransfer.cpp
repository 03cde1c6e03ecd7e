#include "buttons/AssignmentTransfer.h"

#include <algorithm>
#include <array>

#include "buttons/AssignmentChanges.h"
#include "buttons/AssignmentText.h"
#include "model/Assignments.h"
#include "model/HidUsages.h"
#include "model/RememberedRecord.h"
#include "model/SettingsKeys.h"

namespace skarn {

using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

Assignment made(AssignmentCommand command, const PropertyList& param1 = 0, const PropertyList& param2 = 0) {
  return {static_cast<int>(command), param1, param2};
}

// A modifier alone is told by its bit.
Assignment keyAssignment(int usage) {
  const bool isModifier = usage >= vorn::hid::firstModifier;
  return isModifier ? made(AssignmentCommand::SingleKey, 0, 1 << (usage - vorn::hid::firstModifier))
                    : made(AssignmentCommand::SingleKey, usage);
}

const PropertyList& factoryRecord(const ControlDescriptor& control, const PropertyList& defaultProfile) {
  return defaultProfile[control.group][control.identifier];
}

// What a control does out of the box, for another one; nothing for a diagonal.
std::optional<Assignment> spelledOut(const ControlDescriptor& control, const PropertyList& defaultProfile) {
  const PropertyList& factory = factoryRecord(control, defaultProfile);
  if (control.isButton() || vorn::commandOf(factory) != AssignmentCommand::DefaultKey) return assignmentOf(factory);
  const int usage = factory[keys::Param1].toInt();
  if (vorn::diagonalOf(usage) != nullptr) return std::nullopt;
  return keyAssignment(usage);
}

bool needsRelease(const Assignment& assignment) {
  const int mode = assignment.param2.toInt();
  switch (static_cast<AssignmentCommand>(assignment.command)) {
    case AssignmentCommand::Macro:
      return mode == vorn::repeatUntilReleased || mode == vorn::repeatUntilPressedAgain;
    case AssignmentCommand::Keymap:
      return mode != 0;
    default:
      return false;
  }
}

bool isCycle(const PropertyList& record) {
  return vorn::commandOf(record) == AssignmentCommand::Keymap && record[keys::Param1].toInt() == vorn::nextKeymap;
}

bool isLeftClick(const PropertyList& groups, const ControlDescriptor& control) {
  return vorn::commandOf(recordIn(groups, control)) == AssignmentCommand::LeftClick;
}

const ControlDescriptor* firstLeftClick(const PropertyList& groups) {
  const auto end = controlTable.begin() + leftClickCandidates;
  const auto* const found = std::find_if(
      controlTable.begin(), end, [&](const ControlDescriptor& control) { return isLeftClick(groups, control); });
  return found == end ? nullptr : found;
}

Transfer without(TransferProblem problem) {
  return {std::nullopt, problem};
}

}  // namespace

Assignment assignmentOf(const PropertyList& record) {
  return {record[keys::Command].toInt(), record[keys::Param1], record[keys::Param2]};
}

PropertyList withAssignment(const PropertyList& group, std::string_view button, const Assignment& assignment) {
  return withAssignment(group, button, assignment.command, assignment.param1, assignment.param2);
}

Assignment defaultAssignment(std::string_view groupKey, std::string_view button, const PropertyList& defaultProfile) {
  const PropertyList& factory = defaultProfile[groupKey][button];
  if (groupKey == keys::Keys) return made(AssignmentCommand::DefaultKey, factory[keys::Param1].toInt());
  return {factory[keys::Command].toInt()};
}

Assignment disabledAssignment(std::string_view groupKey, std::string_view button, const PropertyList& defaultProfile) {
  const int param1 =
      AssignmentText::checkForDiagonals(button) ? defaultProfile[groupKey][button][keys::Param1].toInt() : 0;
  return made(AssignmentCommand::Disable, param1);
}

bool isFactory(const PropertyList& record, const PropertyList& factory) {
  if (!record.isDictionary() || vorn::commandOf(record) == AssignmentCommand::DefaultKey) return true;
  return std::ranges::all_of(std::array{keys::Command, keys::Param1, keys::Param2},
                             [&](keys::Key key) { return record[key].toInt() == factory[key].toInt(); });
}

Transfer transferred(const PropertyList& record, const ControlDescriptor& from, const ControlDescriptor& to,
                     const PropertyList& defaultProfile) {
  const Assignment usual = defaultAssignment(to.group, to.identifier, defaultProfile);
  const bool isUsual = isFactory(record, factoryRecord(from, defaultProfile));
  if (isUsual && from.number == to.number) return {usual};
  const std::optional<Assignment> meant =
      isUsual ? spelledOut(from, defaultProfile) : std::optional(assignmentOf(record));
  if (!meant) return without(TransferProblem::Diagonal);
  if (vorn::isWheelTurn(to.identifier) && needsRelease(*meant)) return without(TransferProblem::NeverHeld);
  if (static_cast<AssignmentCommand>(meant->command) == AssignmentCommand::Disable)
    return {disabledAssignment(to.group, to.identifier, defaultProfile)};
  return {meant == spelledOut(to, defaultProfile) ? usual : *meant};
}

Transfer retargeted(const Assignment& assignment, const Lists& then, const Lists& now) {
  const auto command = static_cast<AssignmentCommand>(assignment.command);
  const bool isMacro = command == AssignmentCommand::Macro;
  if (!isMacro && command != AssignmentCommand::Profile) return {assignment};
  const vorn::RememberedRecord target(isMacro ? then.macros : then.profiles, assignment.param1.toInt64(),
                                      isMacro ? keys::MacroName : keys::ProfileName);
  const auto place = target.placeIn(isMacro ? now.macros : now.profiles);
  if (!place) return {std::nullopt, TransferProblem::Gone, target.name()};
  if (!isMacro && *place == now.activeProfile) return without(TransferProblem::OwnProfile);
  return {Assignment{assignment.command, *place, assignment.param2}};
}

const PropertyList& recordIn(const PropertyList& groups, const ControlDescriptor& control) {
  return groups[control.group][control.identifier];
}

PropertyList withAssignment(const PropertyList& groups, const ControlDescriptor& control,
                            const Assignment& assignment) {
  return groups.with(control.group, withAssignment(groups[control.group], control.identifier, assignment));
}

bool givesAwayLeftClick(const PropertyList& before, const PropertyList& after) {
  return firstLeftClick(before) != nullptr && firstLeftClick(after) == nullptr;
}

GroupsChange swapped(const PropertyList& groups, const ControlDescriptor& one, const ControlDescriptor& other,
                     const PropertyList& defaultProfile) {
  const PropertyList& first = recordIn(groups, one);
  const PropertyList& second = recordIn(groups, other);
  if (isCycle(first) || isCycle(second)) return {groups, TransferProblem::Cycle};
  const Transfer toOther = transferred(first, one, other, defaultProfile);
  const Transfer toOne = transferred(second, other, one, defaultProfile);
  for (const Transfer* transfer : {&toOther, &toOne}) {
    if (!transfer->assignment) return {groups, transfer->problem};
  }
  if (*toOther.assignment == assignmentOf(second) && *toOne.assignment == assignmentOf(first))
    return {groups, TransferProblem::NoChange};
  const PropertyList changed =
      withAssignment(withAssignment(groups, other, *toOther.assignment), one, *toOne.assignment);
  if (givesAwayLeftClick(groups, changed)) return {groups, TransferProblem::LastLeftClick};
  return {changed};
}

GroupsChange cleared(const PropertyList& groups, const PropertyList& defaultProfile) {
  const ControlDescriptor* kept = firstLeftClick(groups);
  GroupsChange change{groups};
  for (const ControlDescriptor& control : controlTable) {
    const PropertyList& record = recordIn(groups, control);
    if (&control == kept || isFactory(record, factoryRecord(control, defaultProfile))) continue;
    if (isCycle(record)) {
      change.leftOut.push_back({&control, TransferProblem::Cycle});
      continue;
    }
    change.groups =
        withAssignment(change.groups, control, defaultAssignment(control.group, control.identifier, defaultProfile));
  }
  if (change.groups == groups) change.problem = TransferProblem::NoChange;
  return change;
}

GroupsChange pasted(const PropertyList& groups, const PropertyList& copy, const Lists& then, const Lists& now,
                    const PropertyList& defaultProfile) {
  GroupsChange change{groups};
  for (const ControlDescriptor& control : controlTable) {
    const PropertyList& present = recordIn(groups, control);
    const PropertyList& record = recordIn(copy, control);
    if (isCycle(present) && !isCycle(record)) {
      change.leftOut.push_back({&control, TransferProblem::Cycle});
      continue;
    }
    const Assignment usual = defaultAssignment(control.group, control.identifier, defaultProfile);
    const Transfer transfer = isFactory(record, factoryRecord(control, defaultProfile))
                                  ? Transfer{usual}
                                  : retargeted(assignmentOf(record), then, now);
    if (!transfer.assignment) change.leftOut.push_back({&control, transfer.problem, transfer.gone});
    const Assignment& assignment = transfer.assignment ? *transfer.assignment : usual;
    if (assignment == assignmentOf(present)) continue;
    change.groups = withAssignment(change.groups, control, assignment);
  }
  if (change.groups == groups) {
    change.problem = TransferProblem::NoChange;
  } else if (givesAwayLeftClick(groups, change.groups)) {
    return {groups, TransferProblem::LastLeftClick};
  }
  return change;
}

std::vector<const ControlDescriptor*> newCycles(const PropertyList& before, const PropertyList& after) {
  std::vector<const ControlDescriptor*> found;
  for (const ControlDescriptor& control : controlTable) {
    if (isCycle(recordIn(after, control)) && !isCycle(recordIn(before, control))) found.push_back(&control);
  }
  return found;
}

}  // namespace skarn
