// The controls of the mouse, as they are named on the command line.
#pragma once

#include <string_view>

#include "model/Controls.h"

namespace vorn::ctl {

// The control with this number (1 to 27), identifier ("id:20"; also plain where it is no number of a control, "233",
// "03") or name ("Tab", "Caps Lock", "wheel-up"; upper and lower case, blanks and hyphens are the same).
const Control* controlNamed(std::string_view word);

// Whether both are the same but for upper and lower case and blanks written as hyphens.
bool isSameWord(std::string_view left, std::string_view right);

}  // namespace vorn::ctl
