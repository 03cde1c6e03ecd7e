#include "model/Assignments.h"

#include "model/Controls.h"
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
  const Control* control = controlOf(identifier);
  if (control == nullptr) return assignmentRecord(AssignmentCommand::Disable);
  return assignmentRecord(AssignmentCommand::DefaultKey, control->code());
}

}  // namespace vorn
