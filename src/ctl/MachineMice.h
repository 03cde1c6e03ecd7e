// The mice that are plugged into this machine and whether this user may use them, as the command line sees for itself.
#pragma once

#include <string>
#include <vector>

namespace vorn::ctl {

struct MachineMouse {
  std::string name;                     // as it tells itself
  std::vector<std::string> nodes;       // /dev/input/event5, all of them
  std::vector<std::string> forbidden;   // those of them that move the pointer and that this user may not read
  std::vector<std::string> closedKeys;  // those of the others
};

// By the places where they are plugged in. A mouse is all that is below one USB device or, where there is none, one HID
// device. Mice that programs make are none.
std::vector<MachineMouse> miceOfMachine();

enum class FileAccess { Missing, Forbidden, Allowed };
// Whether this user may read the file and write to it.
FileAccess accessTo(const char* path);

// The path of the udev rules that let people use their mice; empty where they are not installed.
std::string installedRules();
// The path of a copy of them that came with this program; their name alone where there is none.
std::string rulesAtHand();

}  // namespace vorn::ctl
