// UTF-8 that may come from anywhere, character by character, and what of it a terminal must not get. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vorn {

struct Utf8Character {
  static constexpr char32_t replacement = 0xFFFD;

  char32_t code = replacement;  // replacement for a byte that begins no valid sequence, too
  std::size_t length = 1;       // bytes of the text that it takes
  bool isValid = false;
};

// The first character of a text that is not empty (The Unicode Standard, table 3-7).
inline Utf8Character firstCharacter(std::string_view text) noexcept {
  const auto byte = [text](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
  const std::uint8_t lead = byte(0);
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {};
  char32_t code = lead & (0x7Fu >> length);
  for (std::size_t index = 1; index < length; ++index) {
    if ((byte(index) & 0xC0) != 0x80) return {};
    code = (code << 6) | (byte(index) & 0x3Fu);
  }
  constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < smallest[length] || code > 0x10FFFF || isSurrogate) return {};
  return {code, length, true};
}

// What moves the cursor, breaks the line or turns the order of what follows, and so may forge what a person reads: the
// C0 and C1 control characters, the separators of lines and paragraphs, and the directional embeddings, overrides and
// isolates (Unicode Standard Annex #9).
constexpr bool isControlCharacter(char32_t code) noexcept {
  return code < 0x20 || (code >= 0x7F && code <= 0x9F) || (code >= 0x2028 && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

}  // namespace vorn
