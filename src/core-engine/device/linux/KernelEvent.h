// What the kernel tells of a mouse, and what of it a control sends. The numbers of types and codes are those of
// linux/input-event-codes.h; what they mean stands in the kernel's Documentation/input/event-codes.rst. Pure; any
// thread.
#pragma once

#include <linux/input-event-codes.h>

#include <cstdint>
#include <string>

namespace vorn::engine {

// One event of an event node, without its time. A node tells of all that happens at once in a report: some events and,
// as its end, one of type EV_SYN with the code SYN_REPORT.
struct KernelEvent {
  std::uint16_t type = 0;
  std::uint16_t code = 0;
  // EV_KEY: 1 for a press, 0 for a release, 2 while it repeats. EV_REL: how far, in the unit of the code; a wheel
  // counts steps, a high-resolution one highResolutionStep for a step, up and to the right as positive. EV_ABS: the
  // position; of a hat -1, 0 or 1, up and to the left as negative.
  std::int32_t value = 0;
  friend bool operator==(const KernelEvent&, const KernelEvent&) = default;
};

// What a high-resolution wheel counts for one step of the plain one.
inline constexpr std::int32_t highResolutionStep = 120;

constexpr bool isHighResolutionWheel(const KernelEvent& event) noexcept {
  return event.type == EV_REL && (event.code == REL_WHEEL_HI_RES || event.code == REL_HWHEEL_HI_RES);
}
constexpr bool isWheel(const KernelEvent& event) noexcept {
  return isHighResolutionWheel(event) ||
         (event.type == EV_REL && (event.code == REL_WHEEL || event.code == REL_HWHEEL));
}
// One of the four small pads of a game controller's kind, which some mice have: two axes, each with three positions.
constexpr bool isHat(const KernelEvent& event) noexcept {
  return event.type == EV_ABS && event.code >= ABS_HAT0X && event.code <= ABS_HAT3Y;
}
// -1, 0 or 1.
constexpr std::int8_t directionOf(std::int32_t value) noexcept {
  return static_cast<std::int8_t>((value > 0) - (value < 0));
}

// What a control of the mouse sends: a key or button, a direction of a wheel, or a direction of a hat.
struct EventSource {
  // Of the mouse's event nodes the one that it comes from, by its stable name: the number of its USB interface, a blank
  // and the name that the kernel gives it, "01 Acme Mouse Keyboard". UTF-8. Empty: whichever node.
  std::string node{};
  std::uint16_t type = 0;  // EV_KEY, EV_REL or EV_ABS
  std::uint16_t code =
      0;  // of EV_REL REL_WHEEL or REL_HWHEEL, also for what counts in high resolution; of EV_ABS a hat's
  std::int8_t direction = 0;  // of EV_REL and EV_ABS the sign of the value, -1 or 1; of EV_KEY 0
  friend bool operator==(const EventSource&, const EventSource&) = default;
};

}  // namespace vorn::engine
