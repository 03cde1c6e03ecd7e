#include "core-engine/storage/Fingerprint.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace vorn::engine {

namespace {

constexpr std::uint64_t first = 0x9E37'79B9'7F4A'7C15;
constexpr std::uint64_t second = 0xC2B2'AE3D'27D4'EB4F;
constexpr std::size_t wordSize = 8;
constexpr std::size_t lanes = 4;

// Of at most eight bytes, the lowest first.
std::uint64_t wordIn(BytesView bytes) {
  std::uint64_t word = 0;
  if constexpr (std::endian::native == std::endian::little) {
    if (!bytes.empty()) std::memcpy(&word, bytes.data(), bytes.size());
  } else {
    constexpr int byteBits = 8;
    for (std::size_t each = bytes.size(); each-- > 0;) word = word << byteBits | bytes[each];
  }
  return word;
}

std::uint64_t taken(std::uint64_t hash, std::uint64_t word) {
  constexpr int rotation = 31;
  return std::rotl(hash ^ word * second, rotation) * first;
}

std::uint64_t mixed(std::uint64_t value) {
  value = (value ^ value >> 29) * first;
  return (value ^ value >> 32) * second;
}

}  // namespace

std::uint64_t fingerprintOf(BytesView bytes, std::uint64_t seed) {
  std::uint64_t hash = mixed(seed ^ bytes.size() * first);
  if (bytes.size() >= lanes * wordSize) {
    // Each word waits for the one before it in its own lane only.
    std::array<std::uint64_t, lanes> hashes{};
    for (std::size_t lane = 0; lane < lanes; ++lane) hashes[lane] = mixed(hash + lane);
    for (; bytes.size() >= lanes * wordSize; bytes = bytes.subspan(lanes * wordSize)) {
      for (std::size_t lane = 0; lane < lanes; ++lane) {
        hashes[lane] = taken(hashes[lane], wordIn(bytes.subspan(lane * wordSize, wordSize)));
      }
    }
    for (const std::uint64_t each : hashes) hash = taken(hash, each);
  }
  for (; bytes.size() >= wordSize; bytes = bytes.subspan(wordSize)) {
    hash = taken(hash, wordIn(bytes.first(wordSize)));
  }
  hash = taken(hash, wordIn(bytes));
  return mixed(hash ^ hash >> 33);
}

}  // namespace vorn::engine
