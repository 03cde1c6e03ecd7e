#include "model/Assignments.h"

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

bool isFactoryAssignment(const PropertyList& record, const Control& control) {
  const AssignmentCommand command = commandOf(record);
  if (command == AssignmentCommand::DefaultKey && control.group == keys::Buttons) return true;
  const PropertyList factory = factoryAssignment(control.identifier);
  return command == commandOf(factory) && record[keys::Param1].toInt64() == factory[keys::Param1].toInt64();
}

}  // namespace vorn
