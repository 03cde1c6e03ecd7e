// Whether this user may use a device file, and what gives access, as the command line sees for itself.
#pragma once

#include <cstdint>
#include <string>

namespace vorn::ctl {

enum class FileAccess : std::uint8_t { Missing, Forbidden, Allowed };
// Whether this user may read the file and write to it.
FileAccess accessTo(const char* path);

// The path of the udev rules that let people use their mice; empty where they are not installed.
std::string installedRules();
// The path of a copy of them that came with this program; their name alone where there is none.
std::string rulesAtHand();

}  // namespace vorn::ctl
