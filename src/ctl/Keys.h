// Keys of a keyboard, as they are named on the command line.
#pragma once

#include <optional>
#include <string>

#include "model/HidUsages.h"

namespace vorn::ctl {

// By the names that the configurator shows ("Left Shift", "F5", "Page Up"); hyphens may stand for blanks, upper and
// lower case are the same. Also "usage:N" for keyboard usage N, 4 to 231.
std::optional<hid::Usage> keyUsage(const std::string& name);

// As keyUsage, but modifiers only; "Control", "Shift", "Alt" and "Command" are the left ones.
std::optional<hid::Usage> modifierUsage(const std::string& name);

}  // namespace vorn::ctl
