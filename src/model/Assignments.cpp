#include "model/Assignments.h"

#include <algorithm>

#include "model/SettingsKeys.h"

namespace vorn {

PropertyList assignmentRecord(AssignmentCommand command, const PropertyList& param1, const PropertyList& param2) {
  return PropertyList::dictionary(
      {{keys::Command, static_cast<std::int32_t>(command)}, {keys::Param1, param1}, {keys::Param2, param2}});
}

AssignmentCommand commandOf(const PropertyList& record) {
  return static_cast<AssignmentCommand>(record[keys::Command].toInt());
}

PropertyList factoryAssignment(std::string_view identifier) {
  if (identifier == wheelButton) return assignmentRecord(AssignmentCommand::MouseButton3);
  if (identifier == wheelUp) return assignmentRecord(AssignmentCommand::ScrollUp);
  if (identifier == wheelDown) return assignmentRecord(AssignmentCommand::ScrollDown);
  if (std::ranges::find(keys::keyIdentifiers, identifier) == keys::keyIdentifiers.end()) {
    return assignmentRecord(AssignmentCommand::Disable);
  }
  return assignmentRecord(AssignmentCommand::DefaultKey, PropertyList(identifier).toInt());
}

}  // namespace vorn
