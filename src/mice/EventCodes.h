// Which events a node of the kernel can tell of. Pure; any thread.
#pragma once

#include <linux/input-event-codes.h>

#include <bitset>
#include <cstddef>
#include <string_view>

namespace vorn {

struct EventCodes {
  std::bitset<KEY_CNT> keys;
  std::bitset<REL_CNT> relative;
  std::bitset<ABS_CNT> absolute;

  bool has(std::uint16_t type, std::uint16_t code) const;
  // It moves the pointer.
  bool isPointer() const;
  // It tells of nothing but keys that a keyboard has, and of no button.
  bool isKeyboard() const;
  friend bool operator==(const EventCodes&, const EventCodes&) = default;
};

// Whether a keyboard has such a key; the others are buttons of mice, tablets and game controllers.
bool isKeyboardKey(std::uint16_t code);

// What the files "capabilities/key" and their like in sysfs hold: words of as many bits as the kernel's long has, in
// hexadecimal digits, the highest first. What is none of this, and what is beyond count, counts as zeros.
template <std::size_t count>
std::bitset<count> codesOf(std::string_view text) {
  constexpr std::size_t wordBits = 8 * sizeof(long);
  std::bitset<count> codes;
  for (std::size_t word = 0; !text.empty(); ++word) {
    const std::size_t blank = text.find_last_of(' ');
    const std::string_view digits = blank == std::string_view::npos ? text : text.substr(blank + 1);
    for (std::size_t index = 0; index < digits.size(); ++index) {
      const char digit = digits[digits.size() - 1 - index];
      const int value = digit >= '0' && digit <= '9'   ? digit - '0'
                        : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
                                                       : 0;
      for (std::size_t bit = 0; bit < 4; ++bit) {
        const std::size_t code = word * wordBits + index * 4 + bit;
        if (((value >> bit) & 1) != 0 && code < count) codes.set(code);
      }
    }
    text = blank == std::string_view::npos ? std::string_view() : text.substr(0, blank);
  }
  return codes;
}

}  // namespace vorn
