#include "mice/NodeKind.h"

#include <linux/input.h>

#include <algorithm>

namespace vorn {

bool isBusOfMice(unsigned bus) {
  return bus == BUS_USB || bus == BUS_BLUETOOTH;
}

bool isMouse(const std::vector<NodeKind>& nodes) {
  return std::ranges::any_of(nodes, &NodeKind::isMouse) && std::ranges::none_of(nodes, &NodeKind::isTouched);
}

}  // namespace vorn
