#include "buttons/RepeatModes.h"

#include <array>

#include "buttons/AssignmentText.h"
#include "model/Assignments.h"

namespace skarn {

namespace {

constexpr std::array<RepeatMode, 12> allModes = {{{"lkeyPlayMacroOnce", playOnce},
                                                  {"lkeyRepeatUntilReleased", vorn::repeatUntilReleased},
                                                  {"lkeyRepeatUntilPressedAgain", vorn::repeatUntilPressedAgain},
                                                  {"lkeyRepeat2Times", 2},
                                                  {"lkeyRepeat3Times", 3},
                                                  {"lkeyRepeat4Times", 4},
                                                  {"lkeyRepeat5Times", 5},
                                                  {"lkeyRepeat6Times", 6},
                                                  {"lkeyRepeat7Times", 7},
                                                  {"lkeyRepeat8Times", 8},
                                                  {"lkeyRepeat9Times", 9},
                                                  {"lkeyRepeat10Times", mostRuns}}};

}  // namespace

std::vector<RepeatMode> repeatModes(bool isForWheelTurn) {
  std::vector<RepeatMode> modes;
  for (const RepeatMode& mode : allModes) {
    const bool isOpenEnded = mode.value == vorn::repeatUntilReleased || mode.value == vorn::repeatUntilPressedAgain;
    if (!isForWheelTurn || !isOpenEnded) modes.push_back(mode);
  }
  return modes;
}

}  // namespace skarn
