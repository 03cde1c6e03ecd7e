// The binary property-list format, version 1.0, as far as its reader and its writer share it; for the files of this
// folder only. The layout is public: 8 bytes of magic, the objects, a table of their offsets, and a trailer of 32
// bytes (6 unused, width of an offset, width of a reference, and as 64-bit numbers the count of the objects, the
// number of the top object and the offset of the table). All numbers are big-endian. The high half of an object's
// first byte is its kind, the low half its length or the power of two of its width; a low half of 15 says that the
// length follows as an integer object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vorn::detail {

inline constexpr std::string_view binaryMagic = "bplist00";
inline constexpr std::size_t trailerSize = 32;

enum BinaryKind : std::uint8_t {
  SingletonKind = 0x0,
  IntegerKind = 0x1,
  RealKind = 0x2,
  DateKind = 0x3,
  DataKind = 0x4,
  AsciiKind = 0x5,
  Utf16Kind = 0x6,
  UidKind = 0x8,
  ArrayKind = 0xA,
  SetKind = 0xC,
  DictionaryKind = 0xD
};

inline constexpr std::uint8_t falseMarker = 0x08;
inline constexpr std::uint8_t trueMarker = 0x09;
inline constexpr std::uint8_t dateMarker = 0x33;
inline constexpr std::uint8_t longLength = 0x0F;

inline std::uint64_t readBigEndian(const std::uint8_t* bytes, std::size_t width) noexcept {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < width; ++i) value = (value << 8) | bytes[i];
  return value;
}

inline std::uint8_t* writeBigEndian(std::uint64_t value, std::size_t width, std::uint8_t* out) noexcept {
  for (std::size_t i = width; i-- > 0; value >>= 8) out[i] = static_cast<std::uint8_t>(value);
  return out + width;
}

}  // namespace vorn::detail
