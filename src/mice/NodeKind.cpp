#include "mice/NodeKind.h"

#include <linux/input.h>

#include <algorithm>

namespace vorn {

bool isBusOfMice(unsigned bus) {
  return bus == BUS_USB || bus == BUS_BLUETOOTH;
}

bool beginsWithMouse(std::string_view usbInterfaces, std::string_view reportDescriptor) {
  // Class 03 (HID), subclass 01 (boot interface), protocol 02 (mouse), by the Device Class Definition for HID.
  constexpr std::string_view bootMouse = ":030102:";
  // Usage page 01 (generic desktop), usage 02 (mouse), an application collection.
  constexpr std::string_view mouse = "\x05\x01\x09\x02\xa1\x01";
  return usbInterfaces.starts_with(bootMouse) || reportDescriptor.starts_with(mouse);
}

bool isMouse(const std::vector<NodeKind>& nodes) {
  return std::ranges::any_of(nodes, &NodeKind::isMouse) && std::ranges::none_of(nodes, &NodeKind::isTouched);
}

bool isOfMouse(const NodeKind& node) {
  return node.isNamedAsMouse || node.isBehindMouse || (node.isMouse && !node.isKeyboard);
}

}  // namespace vorn
