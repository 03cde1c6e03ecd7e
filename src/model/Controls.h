// The controls of the mouse: the 27 that can be assigned to and three keys that always do the same. Every list of them
// elsewhere is derived from here or compared with it by a test. Pure; any thread.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "model/HidUsages.h"
#include "model/SettingsKeys.h"

namespace vorn {

// The controls of the wheel. Its two directions are never held down.
inline constexpr std::string_view wheelButton = "03";
inline constexpr std::string_view wheelUp = "06";
inline constexpr std::string_view wheelDown = "07";

// Keys of the mouse that always do the same and belong to no profile.
inline constexpr std::string_view keymapKey = "keymap";  // the next keymap
inline constexpr std::string_view stageUpKey = "stage-up";
inline constexpr std::string_view stageDownKey = "stage-down";
inline constexpr std::array fixedKeys = {keymapKey, stageUpKey, stageDownKey};

enum class ControlFamily : std::uint8_t { ThumbGrid, Wheel, DirectionPad };

struct Control {
  int number;                   // 1 to 27, as printed on the mouse
  std::string_view identifier;  // key of its record in the group
  keys::Key group;              // keys::Keys or keys::Buttons
  std::string_view name;        // of what it sends from the factory; for a key that of hid::keyName
  ControlFamily family;
  std::array<hid::Usage, 2> arrows = {};  // that a diagonal holds, in this order; 0 elsewhere

  constexpr bool isDiagonal() const { return arrows[0] != 0; }
  // The number that the identifier spells: for a key the keyboard usage (HID usage page 7) that it sends from the
  // factory, or the mouse's own code of a diagonal.
  constexpr int code() const {
    int value = 0;
    for (const char digit : identifier) value = value * 10 + (digit - '0');
    return value;
  }
};

// clang-format off
inline constexpr std::array<Control, 27> controls = {{
    {1, "43", keys::Keys, "Tab", ControlFamily::ThumbGrid},
    {2, "20", keys::Keys, "Q", ControlFamily::ThumbGrid},
    {3, "26", keys::Keys, "W", ControlFamily::ThumbGrid},
    {4, "8", keys::Keys, "E", ControlFamily::ThumbGrid},
    {5, "21", keys::Keys, "R", ControlFamily::ThumbGrid},
    {6, "57", keys::Keys, "Caps Lock", ControlFamily::ThumbGrid},
    {7, "4", keys::Keys, "A", ControlFamily::ThumbGrid},
    {8, "22", keys::Keys, "S", ControlFamily::ThumbGrid},
    {9, "7", keys::Keys, "D", ControlFamily::ThumbGrid},
    {10, "9", keys::Keys, "F", ControlFamily::ThumbGrid},
    {11, "225", keys::Keys, "Left Shift", ControlFamily::ThumbGrid},
    {12, "29", keys::Keys, "Z", ControlFamily::ThumbGrid},
    {13, "27", keys::Keys, "X", ControlFamily::ThumbGrid},
    {14, "6", keys::Keys, "C", ControlFamily::ThumbGrid},
    {15, "44", keys::Keys, "Space", ControlFamily::ThumbGrid},
    {16, "226", keys::Keys, "Left Alt", ControlFamily::ThumbGrid},
    {17, wheelButton, keys::Buttons, "Wheel", ControlFamily::Wheel},
    {18, wheelUp, keys::Buttons, "Wheel Up", ControlFamily::Wheel},
    {19, wheelDown, keys::Buttons, "Wheel Down", ControlFamily::Wheel},
    {20, "82", keys::Keys, "Up Arrow", ControlFamily::DirectionPad},
    {21, "233", keys::Keys, "Up Right", ControlFamily::DirectionPad, {hid::upArrow, hid::rightArrow}},
    {22, "79", keys::Keys, "Right Arrow", ControlFamily::DirectionPad},
    {23, "235", keys::Keys, "Down Right", ControlFamily::DirectionPad, {hid::downArrow, hid::rightArrow}},
    {24, "81", keys::Keys, "Down Arrow", ControlFamily::DirectionPad},
    {25, "234", keys::Keys, "Down Left", ControlFamily::DirectionPad, {hid::downArrow, hid::leftArrow}},
    {26, "80", keys::Keys, "Left Arrow", ControlFamily::DirectionPad},
    {27, "232", keys::Keys, "Up Left", ControlFamily::DirectionPad, {hid::upArrow, hid::leftArrow}},
}};
// clang-format on

namespace detail {

template <std::size_t count>
constexpr std::array<keys::Key, count> identifiersOf(keys::Key group) {
  std::array<keys::Key, count> identifiers;
  std::size_t size = 0;
  for (const Control& control : controls) {
    if (control.group == group) identifiers[size++] = control.identifier;
  }
  return identifiers;
}

template <typename Predicate>
constexpr const Control* firstControl(Predicate predicate) {
  const auto* found = std::find_if(controls.begin(), controls.end(), predicate);
  return found == controls.end() ? nullptr : found;
}

}  // namespace detail

namespace keys {

// The keys of the two groups of assignments, in the order of the controls.
inline constexpr std::array<Key, 24> keyIdentifiers = detail::identifiersOf<24>(Keys);
inline constexpr std::array<Key, 3> buttonIdentifiers = detail::identifiersOf<3>(Buttons);

}  // namespace keys

// The control of this identifier; nullptr for any other text.
constexpr const Control* controlOf(std::string_view identifier) {
  return detail::firstControl([identifier](const Control& control) { return control.identifier == identifier; });
}

// The diagonal of this code; nullptr for any other number.
constexpr const Control* diagonalOf(std::int64_t code) {
  return detail::firstControl(
      [code](const Control& control) { return control.isDiagonal() && control.code() == code; });
}

constexpr bool isWheelTurn(std::string_view identifier) {
  return identifier == wheelUp || identifier == wheelDown;
}

}  // namespace vorn
