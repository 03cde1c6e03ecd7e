// Numbers and names of the keys and buttons that the mouse sends and that macros hold. The numbers are those of the
// "HID Usage Tables for Universal Serial Bus" (usb.org): chapters "Keyboard/Keypad Page" and "Button Page". The names
// are the ones that a user reads; they are the same in every language. Stateless; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vorn::hid {

using UsagePage = std::uint16_t;
using Usage = std::uint16_t;

inline constexpr UsagePage genericDesktopPage = 0x01;
inline constexpr UsagePage keyboardPage = 0x07;
inline constexpr UsagePage buttonPage = 0x09;

// Generic desktop page
inline constexpr Usage wheel = 0x38;

// Button page. The number of a button is its usage; 0 is no button.
inline constexpr Usage primaryButton = 1;    // left
inline constexpr Usage secondaryButton = 2;  // right
inline constexpr Usage firstFurtherButton = 3;
inline constexpr Usage lastFurtherButton = 9;

// Keyboard page. 0 to 3 stand for no key and for errors of the keyboard; 116 to 223 are keys that nothing here names.
inline constexpr Usage firstKey = 4;           // A
inline constexpr Usage lastCharacterKey = 39;  // 0, the last of the letters and digits
inline constexpr Usage rightArrow = 79;
inline constexpr Usage leftArrow = 80;
inline constexpr Usage downArrow = 81;
inline constexpr Usage upArrow = 82;
inline constexpr Usage lastKey = 115;  // F24

// Modifier keys. Bit n of the modifier byte of a keyboard report belongs to the usage firstModifier + n.
inline constexpr Usage leftControl = 224;
inline constexpr Usage leftShift = 225;
inline constexpr Usage leftAlt = 226;
inline constexpr Usage leftCommand = 227;
inline constexpr Usage rightControl = 228;
inline constexpr Usage rightShift = 229;
inline constexpr Usage rightAlt = 230;
inline constexpr Usage rightCommand = 231;
inline constexpr Usage firstModifier = leftControl;
inline constexpr Usage lastModifier = rightCommand;

// What the mouse sends and macros hold: a key (page 7, usages 4 to 231) or a button (page 9, usages 1 to 9).
constexpr bool isKeyOrButton(std::int64_t usagePage, std::int64_t usage) noexcept {
  return (usagePage == keyboardPage && usage >= firstKey && usage <= lastModifier) ||
         (usagePage == buttonPage && usage >= primaryButton && usage <= lastFurtherButton);
}

// The name of a key of the keyboard page: "A", "Return", "Left Shift". Empty for a number that is no key, for a key
// that has no name, and for 50, whose key differs from keyboard to keyboard. Valid for the whole run.
std::string_view keyName(std::int64_t usage) noexcept;

// The other name by which keyNamed finds the key: "Backspace" for 42, "Delete Forward" for 76. Empty for the rest.
std::string_view otherKeyName(std::int64_t usage) noexcept;

// The key of that name; upper and lower case of the letters A to Z are the same, blanks count. Besides the names of
// keyName there are those of otherKeyName: both keys read "Delete", and "Delete" finds the lower
// usage, 42. Nothing for a name that no key has.
std::optional<Usage> keyNamed(std::string_view name) noexcept;

}  // namespace vorn::hid
