// What the controls of the mouse can be made to do: the values of an assignment record, and what each control does as
// it leaves the factory. Pure; any thread.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/Controls.h"
#include "model/PropertyList.h"

namespace vorn {

// The values of "command", with their parameters. Where none are named, both are 0. Other values are kept and do
// nothing.
enum class AssignmentCommand : std::int32_t {
  LeftClick = 1,
  RightClick = 2,
  MouseButton3 = 3,
  MouseButton4 = 4,
  MouseButton5 = 5,
  MouseButton6 = 6,
  MouseButton7 = 7,
  MouseButton8 = 8,
  DoubleClick = 9,
  Macro = 10,  // position of the macro; repeat mode
  StageUp = 11,
  StageDown = 12,
  Forward = 13,
  Backward = 14,
  OnTheFlySensitivity = 15,
  SingleKey = 16,  // keyboard usage, 0 for modifiers alone; modifier byte of a keyboard report
  Profile = 17,    // position of the profile
  ScrollUp = 18,
  ScrollDown = 19,
  Disable = 20,
  DefaultKey = 45,     // keyboard usage, or the mouse's own code of a diagonal
  LaunchProgram = 46,  // path of an application, a string; the empty string
  TemporarySensitivity = 49,
  Keymap = 50,  // 0 to 7, or nextKeymap; 1 to switch back at the release
};

// The target of a keymap assignment that steps through the keymaps.
inline constexpr std::int32_t nextKeymap = 255;

// Repeat modes of a macro: 1 to 10 runs, or one of these two. Any other is one run.
inline constexpr std::int32_t repeatUntilPressedAgain = 254;
inline constexpr std::int32_t repeatUntilReleased = 255;

// "command", "param1" and "param2".
PropertyList assignmentRecord(AssignmentCommand command, const PropertyList& param1 = 0,
                              const PropertyList& param2 = 0);

// The "command" of a record; 0 where there is none.
AssignmentCommand commandOf(const PropertyList& record);

// The assignment of a control as it leaves the factory: a key sends its own usage, the wheel button and the two
// directions of the wheel do what their names say. Disabled for an unknown identifier.
PropertyList factoryAssignment(std::string_view identifier);
// Whether the control does with this record what it does from the factory.
bool isFactoryAssignment(const PropertyList& record, const Control& control);

}  // namespace vorn
