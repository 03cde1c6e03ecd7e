// What makes hardware a mouse: what udev says of its event nodes. Pure; any thread.
#pragma once

#include <vector>

namespace vorn {

struct NodeKind {
  bool isMouse = false;    // it moves the pointer, as a mouse does
  bool isTouched = false;  // a touchpad or a tablet
};

// Whether mice come by this bus, one of the kernel's numbers (linux/input.h): USB or Bluetooth. No rule opens others.
bool isBusOfMice(unsigned bus);

// Whether hardware with these event nodes is a mouse. A touchpad or a tablet is none, whatever else it says it is.
bool isMouse(const std::vector<NodeKind>& nodes);

}  // namespace vorn
