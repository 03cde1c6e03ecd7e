// The kernel's numbers of keys and mouse buttons (linux/input-event-codes.h) and the HID usages that they stand for, as
// the kernel's own HID driver pairs them (drivers/hid/hid-input.c, table hid_keyboard; USB HID Usage Tables). X11 and
// Wayland tell a key by its kernel number plus xkbOffset. Stateless; any thread.
#pragma once

#include <cstdint>
#include <optional>

#include "model/HidUsages.h"

namespace vorn {

using KernelKey = std::uint16_t;

// What the X keyboard extension, and after it Wayland, adds to a kernel number to make a key code.
inline constexpr std::uint32_t xkbOffset = 8;

struct HidUsage {
  hid::UsagePage page = 0;
  hid::Usage usage = 0;
  friend bool operator==(const HidUsage&, const HidUsage&) = default;
};

// The key (page 7) or button (page 9) that the mouse and macros know by this kernel number. Where several usages have
// one number, the lowest. Nothing for any other.
std::optional<HidUsage> usageOfKernelKey(std::uint32_t number) noexcept;

// The kernel's number of a key or button that the mouse and macros know. Nothing where the kernel has none.
std::optional<KernelKey> kernelKeyOfUsage(HidUsage usage) noexcept;

}  // namespace vorn
