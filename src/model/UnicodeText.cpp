#include "model/UnicodeText.h"

#include <cstring>

#include "model/Utf8.h"

namespace vorn::detail {

namespace {

constexpr char32_t replacement = Utf8Character::replacement;

struct Decoded {
  char32_t character;
  std::size_t length;  // bytes of input that it takes
};

// The first character of a text of whole units that is not empty.
Decoded decodeUtf16(std::span<const std::uint8_t> utf16) noexcept {
  const auto unit = [utf16](std::size_t index) {
    return static_cast<char32_t>((utf16[index] << 8) | utf16[index + 1]);
  };
  const char32_t first = unit(0);
  if (first < 0xD800 || first > 0xDFFF) return {first, 2};
  if (first > 0xDBFF || utf16.size() < 4) return {replacement, 2};
  const char32_t second = unit(2);
  if (second < 0xDC00 || second > 0xDFFF) return {replacement, 2};
  return {0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00), 4};
}

std::size_t utf8Bytes(char32_t character) noexcept {
  return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

std::uint8_t* writeUnit(char32_t unit, std::uint8_t* out) noexcept {
  out[0] = static_cast<std::uint8_t>(unit >> 8);
  out[1] = static_cast<std::uint8_t>(unit);
  return out + 2;
}

}  // namespace

bool isAscii(std::string_view text) noexcept {
  const char* at = text.data();
  std::size_t left = text.size();
  for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t), at += sizeof(std::uint64_t)) {
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    if ((word & 0x8080808080808080u) != 0) return false;
  }
  for (; left > 0; --left, ++at) {
    if (static_cast<std::uint8_t>(*at) >= 0x80) return false;
  }
  return true;
}

std::size_t utf16Length(std::string_view text) noexcept {
  std::size_t units = 0;
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    units += next.code >= 0x10000 ? 2 : 1;
    text.remove_prefix(next.length);
  }
  return units;
}

std::uint8_t* writeUtf16(std::string_view text, std::uint8_t* out) noexcept {
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (next.code >= 0x10000) {
      out = writeUnit(0xD800 + ((next.code - 0x10000) >> 10), out);
      out = writeUnit(0xDC00 + ((next.code - 0x10000) & 0x3FF), out);
    } else {
      out = writeUnit(next.code, out);
    }
    text.remove_prefix(next.length);
  }
  return out;
}

std::size_t utf8Length(std::span<const std::uint8_t> utf16) noexcept {
  std::size_t bytes = 0;
  while (!utf16.empty()) {
    const Decoded next = decodeUtf16(utf16);
    bytes += utf8Bytes(next.character);
    utf16 = utf16.subspan(next.length);
  }
  return bytes;
}

void writeUtf8(std::span<const std::uint8_t> utf16, char* out) noexcept {
  while (!utf16.empty()) {
    const Decoded next = decodeUtf16(utf16);
    const std::size_t length = utf8Bytes(next.character);
    char32_t rest = next.character;
    for (std::size_t i = length; i-- > 1; rest >>= 6) out[i] = static_cast<char>(0x80 | (rest & 0x3F));
    constexpr unsigned leads[] = {0, 0, 0xC0, 0xE0, 0xF0};
    out[0] = static_cast<char>(leads[length] | rest);
    out += length;
    utf16 = utf16.subspan(next.length);
  }
}

}  // namespace vorn::detail
