#include "core-engine/storage/Fingerprint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <set>

namespace vorn::engine {
namespace {

// 0, 1, 2, ...
Bytes bytesOf(std::size_t size) {
  Bytes bytes(size);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  return bytes;
}

TEST(FingerprintTest, IsTheSameOnEveryMachineAndInEveryVersion) {
  EXPECT_EQ(fingerprintOf({}), 0U);
  EXPECT_EQ(fingerprintOf(bytesOf(3)), 18207687956111417252U);
  EXPECT_EQ(fingerprintOf(bytesOf(31)), 10948641106073734869U);
  EXPECT_EQ(fingerprintOf(bytesOf(107)), 3465592128216466736U);
  EXPECT_EQ(fingerprintOf(bytesOf(107), 1), 16717825827380873496U);
}

TEST(FingerprintTest, TellsBytesOfWhichOneIsAnotherOrIsMissing) {
  for (const std::size_t size : {1U, 8U, 31U, 32U, 33U, 64U, 107U}) {
    const Bytes bytes = bytesOf(size);
    std::set<std::uint64_t> found = {fingerprintOf(bytes), fingerprintOf(BytesView(bytes).first(size - 1))};
    for (std::size_t each = 0; each < size; ++each) {
      Bytes other = bytes;
      other[each] ^= 1;
      found.insert(fingerprintOf(other));
    }
    EXPECT_EQ(found.size(), size + 2) << size;
  }
}

TEST(FingerprintTest, TellsWordsInAnotherOrder) {
  const Bytes bytes = bytesOf(128);
  std::set<std::uint64_t> found = {fingerprintOf(bytes)};
  constexpr std::ptrdiff_t word = 8;
  for (std::ptrdiff_t each = word; each < 128; each += word) {
    Bytes other = bytes;
    std::swap_ranges(other.begin(), other.begin() + word, other.begin() + each);
    found.insert(fingerprintOf(other));
  }
  EXPECT_EQ(found.size(), 16U);
}

TEST(FingerprintTest, DependsOnWhatCameBefore) {
  EXPECT_NE(fingerprintOf(bytesOf(40)), fingerprintOf(bytesOf(40), 1));
}

}  // namespace
}  // namespace vorn::engine
