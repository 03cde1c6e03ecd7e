// Which keys type a text, and what a key types: a keyboard of the United States, as everywhere here where a key stands
// for a character (USB HID Usage Tables, chapter "Keyboard/Keypad Page"). Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/HidUsages.h"
#include "model/MacroEdits.h"

namespace vorn {

struct CharacterKey {
  hid::Usage usage = 0;
  bool isShifted = false;
  friend bool operator==(const CharacterKey&, const CharacterKey&) = default;
};

// Printable ASCII, a line feed (Return) and a tab; nothing for any other character.
std::optional<CharacterKey> keyOfCharacter(char32_t character) noexcept;
// The character; nothing for a key that types none. The number pad types its digits.
std::optional<char> characterOfKey(hid::Usage usage, bool isShifted) noexcept;

struct TypedText {
  MacroEventList events;      // with the delay before each of them
  std::string cannotBeTyped;  // the characters that no key types, each once, in their order, as UTF-8
};

// text: UTF-8; a carriage return before a line feed is passed over. Characters in a row that need Shift are typed under
// one press of it.
TypedText typedText(std::string_view text, std::int64_t delay);

}  // namespace vorn
