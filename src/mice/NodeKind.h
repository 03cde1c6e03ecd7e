// What makes hardware a mouse, and which of its event nodes are the mouse's: by what udev says of the nodes, and the
// hardware of itself. The rules in resources/udev open nodes to people by the same. Pure; any thread.
#pragma once

#include <string_view>
#include <vector>

namespace vorn {

struct NodeKind {
  bool isMouse = false;         // it moves the pointer, as a mouse does
  bool isTouched = false;       // a touchpad or a tablet
  bool isKeyboard = false;      // it has the keys of one, perhaps beside the mouse
  bool isBehindMouse = false;   // what it belongs to says of itself first that it is a mouse, see beginsWithMouse()
  bool isNamedAsMouse = false;  // whoever runs this machine has said so, in a rule of their own (SKARN_MOUSE)
};

// Whether mice come by this bus, one of the kernel's numbers (linux/input.h): USB or Bluetooth. No rule opens others.
bool isBusOfMice(unsigned bus);

// Whether a device says of itself first that it is a mouse: the first of its USB interfaces, as udev writes them
// (":030102:030101:"), is a mouse that a firmware can use, or its HID report descriptor begins with a mouse. Not for
// what stands behind a receiver that the kernel takes apart: that one says nothing of the devices.
bool beginsWithMouse(std::string_view usbInterfaces, std::string_view reportDescriptor);

// Whether hardware with these event nodes is a mouse, perhaps with a keyboard. A touchpad or a tablet is none, whatever
// else it says it is.
bool isMouse(const std::vector<NodeKind>& nodes);

// Whether the node of such hardware is the mouse's. Many keyboards, and receivers of a keyboard and a mouse, are a
// mouse as well, but begin with the keyboard: of those only what moves the pointer and is no keyboard at the same time.
bool isOfMouse(const NodeKind& node);

}  // namespace vorn
