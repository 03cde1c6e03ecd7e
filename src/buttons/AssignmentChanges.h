// How assignments change: one record, the one change that concerns every keymap, and what becomes of assignments whose
// macro or profile was deleted. Pure; any thread.
#pragma once

#include <array>
#include <string_view>

#include "buttons/ControlTable.h"
#include "model/Assignments.h"
#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace skarn {

// A record that is put back when what it plays or switches to is deleted. Not every control of the mouse is among
// them, and not all of these are controls of this mouse.
struct AssignmentReset {
  std::string_view groupKey;
  std::string_view identifier;
  vorn::AssignmentCommand command;
  int param1;
  int groupIdentifier;
};

// clang-format off
inline constexpr std::array<AssignmentReset, 15> assignmentResets = {{
    {vorn::keys::Buttons, "01", vorn::AssignmentCommand::LeftClick, 0, buttonsGroupIdentifier},
    {vorn::keys::Buttons, "02", vorn::AssignmentCommand::RightClick, 0, buttonsGroupIdentifier},
    {vorn::keys::Buttons, vorn::wheelButton, vorn::AssignmentCommand::MouseButton3, 0, buttonsGroupIdentifier},
    {vorn::keys::Buttons, "04", vorn::AssignmentCommand::MouseButton4, 0, buttonsGroupIdentifier},
    {vorn::keys::Buttons, "05", vorn::AssignmentCommand::MouseButton5, 0, buttonsGroupIdentifier},
    {vorn::keys::Buttons, vorn::wheelUp, vorn::AssignmentCommand::ScrollUp, 0, buttonsGroupIdentifier},
    {vorn::keys::Buttons, vorn::wheelDown, vorn::AssignmentCommand::ScrollDown, 0, buttonsGroupIdentifier},
    {vorn::keys::Keys, "30", vorn::AssignmentCommand::SingleKey, 30, keysGroupIdentifier},
    {vorn::keys::Keys, "31", vorn::AssignmentCommand::SingleKey, 31, keysGroupIdentifier},
    {vorn::keys::Keys, "32", vorn::AssignmentCommand::SingleKey, 32, keysGroupIdentifier},
    {vorn::keys::Keys, "33", vorn::AssignmentCommand::SingleKey, 33, keysGroupIdentifier},
    {vorn::keys::Keys, "34", vorn::AssignmentCommand::SingleKey, 34, keysGroupIdentifier},
    {vorn::keys::Keys, "35", vorn::AssignmentCommand::SingleKey, 35, keysGroupIdentifier},
    {vorn::keys::Keys, "36", vorn::AssignmentCommand::SingleKey, 36, keysGroupIdentifier},
    {vorn::keys::Keys, "37", vorn::AssignmentCommand::SingleKey, 37, keysGroupIdentifier},
}};
// clang-format on

// The group with a changed record; what else the record holds stays.
vorn::PropertyList withAssignment(const vorn::PropertyList& group, std::string_view button, int command,
                                  const vorn::PropertyList& param1, const vorn::PropertyList& param2);

// The keymaps with the button stepping through them in each. Elements that are no dictionaries are kept as they are.
vorn::PropertyList keymapsWithCycle(const vorn::PropertyList& keymaps, std::string_view groupKey,
                                    std::string_view button);

// The profiles with every record of "Keys" and "Buttons" reset whose command is the mapping and whose param1 is the
// deleted index or past the end of a list of listSize elements. A reset record is the default profile's for the same
// identifier; where that has none, the record is kept. Identifiers are looked up by their number, in the buttons group
// with at least two digits. Elements that are no dictionaries are kept as they are.
vorn::PropertyList remappedProfiles(const vorn::PropertyList& profiles, const vorn::PropertyList& defaultProfile,
                                    int mapping, int deletedIndex, int listSize);

}  // namespace skarn
