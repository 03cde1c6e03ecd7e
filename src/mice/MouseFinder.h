// Which mice are plugged into this machine, by what udev knows. One thread at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mice/EventCodes.h"

namespace vorn {

// One of the event nodes of a mouse.
struct MouseNode {
  std::string path;  // /dev/input/event5
  std::string name;  // its own among the nodes of the mouse, see nodeName()
  EventCodes codes;
  bool isForbidden = false;  // this user may not read it
  friend bool operator==(const MouseNode&, const MouseNode&) = default;
};

// All that belongs to one mouse: what is below one USB device or, where there is none (Bluetooth LE), one HID device.
// Behind a receiver that the kernel takes apart each HID device is one of its own, so that the keys of a keyboard there
// are not the mouse's; any other receiver is one mouse with all that it receives.
struct MouseHardware {
  std::string id;                // the same whenever this mouse is plugged in, and no other's, see mouseId()
  bool isMarkedByPlace = false;  // it has no serial number, so in another socket its ID is another one
  std::string name;              // as it tells itself, see cleanName()
  bool isWireless = false;       // by Bluetooth or a receiver
  std::string firmwareVersion;   // of its USB descriptor; empty where there is none
  std::int32_t resolution = 0;   // DPI; 0 where udev does not know it
  std::string systemPath;        // of the USB or HID device, /sys/devices/...
  std::vector<MouseNode> nodes;
  std::vector<std::string> otherNodes;     // paths of those that may be a keyboard's, and so are left alone
  std::vector<std::string> rawNodes;       // /dev/hidraw3
  std::vector<std::string> powerSupplies;  // their names in /sys/class/power_supply
  friend bool operator==(const MouseHardware&, const MouseHardware&) = default;
};

struct Found {
  std::vector<MouseHardware> mice;       // by name, then by ID
  std::vector<MouseHardware> leftAlone;  // mice that may be keyboards in all their nodes
  bool isComplete = true;                // udev knows each event node that there is
};

// Touchpads, tablets and what programs make (uinput) are no mice, nor what has neither USB nor Bluetooth. What may be a
// keyboard's is no part of a mouse, also for a user who may read everything.
Found findMice();

// Whether udev is done with this event node, so that others have heard of it.
bool isKnownToUdev(const std::string& node);

}  // namespace vorn
