// UTF-8 and UTF-16 for the codecs, for the files of this folder only. What is malformed becomes U+FFFD.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vorn::detail {

bool isAscii(std::string_view text) noexcept;

// Number of UTF-16 units that a UTF-8 text needs; a byte that is no part of valid UTF-8 counts as one U+FFFD.
std::size_t utf16Length(std::string_view text) noexcept;
// Writes the text as big-endian UTF-16 of utf16Length(text) units and returns the end of what was written.
std::uint8_t* writeUtf16(std::string_view text, std::uint8_t* out) noexcept;

// Number of UTF-8 bytes that big-endian UTF-16 of an even number of bytes needs; lone surrogates count as U+FFFD.
std::size_t utf8Length(std::span<const std::uint8_t> utf16) noexcept;
void writeUtf8(std::span<const std::uint8_t> utf16, char* out) noexcept;

}  // namespace vorn::detail
