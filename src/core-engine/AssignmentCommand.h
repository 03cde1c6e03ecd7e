// The values of "command" in an assignment record, with their parameters. Where none are named, both are 0.
#pragma once

#include <cstdint>

namespace vorn::engine {

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
  Macro = 10,  // position of the macro; repeat mode (MacroPlayer.h)
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
  Keymap = 50,  // 0 to 7, 255 for the next one; 1 to switch back at the release
};

}  // namespace vorn::engine
