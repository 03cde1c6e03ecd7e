#include "ctl/Text.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

#include "model/Utf8.h"

namespace vorn::ctl {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

void appendHex(std::string& text, std::uint32_t number, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) text += hexDigits[number >> shift & 15];
}

// Calls take(character, its bytes) for each character of the text.
template <typename Take>
void forEachCharacter(std::string_view text, Take take) {
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    take(next, text.substr(0, next.length));
    text.remove_prefix(next.length);
  }
}

// The library's own table of letters, whatever the language of the user.
wint_t lowerCase(char32_t code) {
  static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return unicode == nullptr ? std::towlower(static_cast<wint_t>(code))
                            : ::towlower_l(static_cast<wint_t>(code), unicode);
}

}  // namespace

std::string escapeOf(char32_t character) {
  if (character == U'\n') return "\\n";
  if (character == U'\t') return "\\t";
  std::string escape = "\\u";
  appendHex(escape, character, 4);
  return escape;
}

std::string printable(std::string_view text) {
  std::string result;
  forEachCharacter(text, [&](const Utf8Character& next, std::string_view bytes) {
    if (!next.isValid) {
      appendHex(result += "\\x", static_cast<unsigned char>(bytes[0]), 2);
    } else if (isControlCharacter(next.code)) {
      result += escapeOf(next.code);
    } else {
      result += bytes;
    }
  });
  return result;
}

std::string withoutLineBreak(std::string_view line) {
  while (line.ends_with('\n')) line.remove_suffix(1);
  return std::string(line);
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size() + 1, width), ' ');
  return text;
}

std::u32string foldedCase(std::string_view text) {
  constexpr char32_t beyondUnicode = 0x110000;
  std::u32string result;
  forEachCharacter(text, [&](const Utf8Character& next, std::string_view bytes) {
    const char32_t byte = beyondUnicode + static_cast<unsigned char>(bytes[0]);
    result += next.isValid ? static_cast<char32_t>(lowerCase(next.code)) : byte;
  });
  return result;
}

}  // namespace vorn::ctl
