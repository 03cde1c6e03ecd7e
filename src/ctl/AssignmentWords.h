// What a control does, in the words of `vornctl assign`.
#pragma once

#include <string>

#include "ctl/Controls.h"
#include "model/Assignments.h"

namespace vorn::ctl {

// The action behind the control, as `assign` takes it: `key Control+K`, `macro "Quick save" --repeat held`. A word with
// blanks stands between quotation marks. What `assign` cannot say is told with its number: `command 47`.
std::string wordsOf(const PropertyList& record, const Control& control, const PropertyList& bundle);

}  // namespace vorn::ctl
