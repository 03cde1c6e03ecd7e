// Tells bytes from others. The same on every machine and in every version, since files hold it; no protection against
// somebody who looks for two of the same.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "model/PropertyList.h"

namespace vorn::engine {

// Eight bytes at a time, so that large settings cost next to nothing beside their way to the disk.
inline std::uint64_t fingerprintOf(BytesView bytes, std::uint64_t seed = 0) {
  constexpr std::uint64_t first = 0x9E37'79B9'7F4A'7C15;
  constexpr std::uint64_t second = 0xC2B2'AE3D'27D4'EB4F;
  constexpr std::size_t wordSize = 8;
  constexpr int byteBits = 8;
  constexpr int rotation = 31;
  const auto wordAt = [](BytesView part) {
    std::uint64_t word = 0;
    for (std::size_t each = part.size(); each-- > 0;) word = word << byteBits | part[each];
    return word;
  };
  const auto mixed = [](std::uint64_t value) {
    value = (value ^ value >> 29) * first;
    return (value ^ value >> 32) * second;
  };
  std::uint64_t hash = mixed(seed ^ bytes.size() * first);
  for (; bytes.size() >= wordSize; bytes = bytes.subspan(wordSize)) {
    hash = std::rotl(hash ^ wordAt(bytes.first<wordSize>()) * second, rotation) * first;
  }
  hash = std::rotl(hash ^ wordAt(bytes) * second, rotation) * first;
  return mixed(hash ^ hash >> 33);
}

}  // namespace vorn::engine
