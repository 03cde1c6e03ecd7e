#include "model/Assignments.h"

#include "model/SettingsKeys.h"

namespace vorn {

namespace {

struct Factory {
  AssignmentCommand command = AssignmentCommand::Disable;
  std::int32_t param1 = 0;
};

Factory factoryOf(const Control& control) {
  if (control.identifier == wheelButton) return {AssignmentCommand::MouseButton3};
  if (control.identifier == wheelUp) return {AssignmentCommand::ScrollUp};
  if (control.identifier == wheelDown) return {AssignmentCommand::ScrollDown};
  return {AssignmentCommand::DefaultKey, control.code()};
}

}  // namespace

PropertyList assignmentRecord(AssignmentCommand command, const PropertyList& param1, const PropertyList& param2) {
  return PropertyList::dictionary(
      {{keys::Command, static_cast<std::int32_t>(command)}, {keys::Param1, param1}, {keys::Param2, param2}});
}

AssignmentCommand commandOf(const PropertyList& record) {
  return static_cast<AssignmentCommand>(record[keys::Command].toInt());
}

PropertyList factoryAssignment(std::string_view identifier) {
  const Control* control = controlOf(identifier);
  const Factory factory = control != nullptr ? factoryOf(*control) : Factory();
  return assignmentRecord(factory.command, factory.param1);
}

bool isFactoryAssignment(const PropertyList& record, const Control& control) {
  const AssignmentCommand command = commandOf(record);
  if (command == AssignmentCommand::DefaultKey && control.group == keys::Buttons) return true;
  const Factory factory = factoryOf(control);
  return command == factory.command && record[keys::Param1].toInt64() == factory.param1;
}

}  // namespace vorn
