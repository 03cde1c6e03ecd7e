// How often a control plays its macro: what is offered. Pure; any thread.
#pragma once

#include <vector>

namespace skarn {

struct RepeatMode {
  const char* nameKey;
  int value;
};

// In the order of the list. The directions of the wheel are never held: the open-ended modes are not for them.
std::vector<RepeatMode> repeatModes(bool isForWheelTurn);

}  // namespace skarn
