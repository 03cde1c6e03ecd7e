#include "model/HidUsages.h"

#include <algorithm>
#include <array>

namespace vorn::hid {

namespace {

// In the order of the usages, from firstKey on.
constexpr std::array<std::string_view, lastKey - firstKey + 1> keyNames = {
    // 4 to 39
    "A", "B", "C", "D", "E", "F", "G", "H", "I", "J", "K", "L", "M", "N", "O", "P", "Q", "R",  //
    "S", "T", "U", "V", "W", "X", "Y", "Z", "1", "2", "3", "4", "5", "6", "7", "8", "9", "0",
    // 40 to 57
    "Return", "Escape", "Delete", "Tab", "Space", "-", "=", "[", "]", "\\",  //
    "", ";", "'", "`", ",", ".", "/", "Caps Lock",
    // 58 to 69
    "F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12",
    // 70 to 82
    "Print Screen", "Screen Lock", "Pause", "Insert", "Home", "Page Up", "Delete", "End", "Page Down",  //
    "Right Arrow", "Left Arrow", "Down Arrow", "Up Arrow",
    // 83 to 103
    "Clear", "Numpad /", "Numpad *", "Numpad -", "Numpad +", "Numpad Enter",  //
    "Numpad 1", "Numpad 2", "Numpad 3", "Numpad 4", "Numpad 5", "Numpad 6", "Numpad 7", "Numpad 8", "Numpad 9",
    "Numpad 0", "Numpad .", "|", "Menu", "Power", "Numpad =",
    // 104 to 115
    "F13", "F14", "F15", "F16", "F17", "F18", "F19", "F20", "F21", "F22", "F23", "F24"};

constexpr std::array<std::string_view, lastModifier - firstModifier + 1> modifierNames = {
    "Left Control",  "Left Shift",  "Left Alt",  "Left Command",
    "Right Control", "Right Shift", "Right Alt", "Right Command"};

struct OtherName {
  std::string_view name;
  Usage usage = 0;
};
constexpr std::array<OtherName, 2> otherNames = {{{"Backspace", 42}, {"Delete Forward", 76}}};

// Not the library's conversion, which follows the user's language.
constexpr char lowerCase(char character) noexcept {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool isSameName(std::string_view left, std::string_view right) noexcept {
  return std::ranges::equal(left, right, {}, lowerCase, lowerCase);
}

template <std::size_t N>
std::optional<Usage> usageIn(const std::array<std::string_view, N>& names, Usage first,
                             std::string_view name) noexcept {
  const auto found = std::ranges::find_if(names, [name](std::string_view each) { return isSameName(each, name); });
  if (found == names.end()) return std::nullopt;
  return static_cast<Usage>(first + (found - names.begin()));
}

}  // namespace

std::string_view keyName(std::int64_t usage) noexcept {
  if (usage >= firstKey && usage <= lastKey) return keyNames[static_cast<std::size_t>(usage - firstKey)];
  if (usage >= firstModifier && usage <= lastModifier)
    return modifierNames[static_cast<std::size_t>(usage - firstModifier)];
  return {};
}

std::string_view otherKeyName(std::int64_t usage) noexcept {
  const auto found = std::ranges::find(otherNames, usage, &OtherName::usage);
  return found == otherNames.end() ? std::string_view() : found->name;
}

std::optional<Usage> keyNamed(std::string_view name) noexcept {
  if (name.empty()) return std::nullopt;
  if (const auto usage = usageIn(keyNames, firstKey, name)) return usage;
  if (const auto usage = usageIn(modifierNames, firstModifier, name)) return usage;
  for (const OtherName& other : otherNames)
    if (isSameName(other.name, name)) return other.usage;
  return std::nullopt;
}

}  // namespace vorn::hid
