#include "mice/EventCodes.h"

namespace vorn {

namespace {

struct Range {
  std::uint16_t first;
  std::uint16_t last;
};

// linux/input-event-codes.h: all that is called BTN_.
constexpr Range buttons[] = {
    {BTN_MISC, KEY_OK - 1}, {BTN_DPAD_UP, BTN_DPAD_RIGHT}, {BTN_TRIGGER_HAPPY, BTN_TRIGGER_HAPPY40}};

}  // namespace

bool isKeyboardKey(std::uint16_t code) {
  if (code == KEY_RESERVED || code >= BTN_TRIGGER_HAPPY) return false;
  for (const Range& range : buttons) {
    if (code >= range.first && code <= range.last) return false;
  }
  return true;
}

bool EventCodes::has(std::uint16_t type, std::uint16_t code) const {
  switch (type) {
    case EV_KEY:
      return code < keys.size() && keys[code];
    case EV_REL:
      return code < relative.size() && relative[code];
    case EV_ABS:
      return code < absolute.size() && absolute[code];
    default:
      return false;
  }
}

bool EventCodes::isPointer() const {
  return (relative[REL_X] && relative[REL_Y]) || (absolute[ABS_X] && absolute[ABS_Y]);
}

bool EventCodes::isKeyboard() const {
  if (relative.any() || absolute.any()) return false;
  for (std::uint16_t code = 0; code < KEY_CNT; ++code) {
    if (keys[code] && !isKeyboardKey(code)) return false;
  }
  return true;
}

}  // namespace vorn
