// The actions of `vornctl assign`, as assignment records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ctl/Context.h"
#include "ctl/Controls.h"

namespace vorn::ctl {

// Values of "command" in an assignment record.
enum class AssignmentCommand : std::int32_t {
  LeftClick = 1,  // to 8: that button of the mouse
  DoubleClick = 9,
  Macro = 10,  // position of the macro; repeat mode
  StageUp = 11,
  StageDown = 12,
  Forward = 13,
  Backward = 14,
  OnTheFlySensitivity = 15,
  SingleKey = 16,  // keyboard usage; modifier byte of a keyboard report
  Profile = 17,    // position of the profile
  ScrollUp = 18,
  ScrollDown = 19,
  Disable = 20,
  DefaultKey = 45,     // keyboard usage, or the mouse's own code of a diagonal
  LaunchProgram = 46,  // path, the empty string
  TemporarySensitivity = 49,
  Keymap = 50,  // 0 to 7, 255 for the next one; 1 to switch back at the release
};

inline constexpr std::int32_t nextKeymap = 255;

// "command", "param1" and "param2".
PropertyList assignmentRecord(AssignmentCommand command, const PropertyList& param1 = 0,
                              const PropertyList& param2 = 0);

// What the control does as it leaves the factory. For an identifier that is none of a control: nothing (disabled).
PropertyList factoryAssignment(std::string_view identifier);

struct ParsedAction {
  PropertyList record;  // without "param1" where there is a target
  std::string target;   // the macro or profile that it names, a number from 1 or a name
};

// The words of an action, and its options, for the control.
Result<ParsedAction> parseAction(const Control& control, const Arguments& action, const CommandLine& line);

// The assignment record of the action. A failure when its target is not there.
Result<PropertyList> resolvedAction(const ParsedAction& action, const PropertyList& bundle);

}  // namespace vorn::ctl
