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

// An event node of the kernel, as udev knows it.
struct MachineNode {
  std::string hardware;  // what it belongs to: the path of the device in sysfs
  std::string hidID;     // "0003:00001209:00000001", the bus first; empty where it is no HID device
  std::string path;      // /dev/input/event5
  std::string name;
  bool isMouse = false;
  bool isTouched = false;  // a touchpad or a tablet
  bool isForbidden = false;
};

// The mice among them, by what they belong to. As for the engine, a laptop's touchpad is none, whatever else it says it
// is, and neither is what has neither USB nor Bluetooth: no rule opens those.
std::vector<MachineMouse> miceOf(const std::vector<MachineNode>& nodes);

// A mouse is all that is below one USB device or, where there is none, and behind a receiver that the kernel takes
// apart, one HID device. Mice that programs make are none.
std::vector<MachineMouse> miceOfMachine();

enum class FileAccess { Missing, Forbidden, Allowed };
// Whether this user may read the file and write to it.
FileAccess accessTo(const char* path);

// The path of the udev rules that let people use their mice; empty where they are not installed.
std::string installedRules();
// The path of a copy of them that came with this program; their name alone where there is none.
std::string rulesAtHand();

}  // namespace vorn::ctl
