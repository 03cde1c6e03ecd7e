// A hash table from 64 bits and a kind to an object's number; for the files of this folder only. The hash is seeded
// once per process, so that nobody can prepare content that makes it slow.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vorn::detail {

std::uint64_t hashBits(std::uint64_t bits, std::uint64_t kind) noexcept;
std::uint64_t hashText(std::string_view text) noexcept;

class NumberTable {
 public:
  static constexpr std::uint32_t unset = ~std::uint32_t{0};

  // The number of the entry with these bits and this kind for which same(number) holds: unset when the entry is new.
  // The reference is valid until the next call.
  template <typename Same>
  std::uint32_t& lookUp(std::uint64_t bits, std::uint32_t kind, const Same& same) {
    if (2 * mUsed >= mEntries.size()) grow();
    std::size_t place = placeOf(bits, kind);
    while (mEntries[place].used) {
      Entry& entry = mEntries[place];
      if (entry.bits == bits && entry.kind == kind && same(entry.number)) return entry.number;
      place = (place + 1) & (mEntries.size() - 1);
    }
    ++mUsed;
    mEntries[place] = {bits, unset, static_cast<std::uint16_t>(kind), true};
    return mEntries[place].number;
  }
  std::uint32_t& lookUp(std::uint64_t bits, std::uint32_t kind) {
    return lookUp(bits, kind, [](std::uint32_t) { return true; });
  }

 private:
  struct Entry {
    std::uint64_t bits = 0;
    std::uint32_t number = unset;
    std::uint16_t kind = 0;
    bool used = false;
  };

  std::size_t placeOf(std::uint64_t bits, std::uint32_t kind) const noexcept {
    return static_cast<std::size_t>(hashBits(bits, kind)) & (mEntries.size() - 1);
  }
  void grow();

  std::vector<Entry> mEntries;  // a power of two of them
  std::size_t mUsed = 0;
};

}  // namespace vorn::detail
