#include "model/NumberTable.h"

#include <cstring>
#include <random>
#include <utility>

namespace vorn::detail {

namespace {

__extension__ using Product = unsigned __int128;

struct Seed {
  std::uint64_t first = random();
  std::uint64_t second = random();

  static std::uint64_t random() {
    std::random_device device;
    return (std::uint64_t{device()} << 32) | device() | 1;
  }
};

const Seed& seed() noexcept {
  static const Seed value;
  return value;
}

// Both halves of the 128-bit product folded together.
std::uint64_t fold(std::uint64_t left, std::uint64_t right) noexcept {
  const Product product = Product{left} * right;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

std::uint64_t wordAt(const char* text, std::size_t size) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, text, size);
  return word;
}

}  // namespace

std::uint64_t hashBits(std::uint64_t bits, std::uint64_t kind) noexcept {
  return fold(bits ^ seed().first, (kind << 40) ^ seed().second);
}

std::uint64_t hashText(std::string_view text) noexcept {
  std::uint64_t hash = seed().first ^ text.size();
  const char* at = text.data();
  std::size_t left = text.size();
  for (; left > sizeof(std::uint64_t); left -= sizeof(std::uint64_t), at += sizeof(std::uint64_t)) {
    hash = fold(hash ^ wordAt(at, sizeof(std::uint64_t)), seed().second);
  }
  return fold(hash ^ wordAt(at, left), seed().second);
}

void NumberTable::grow() {
  std::vector<Entry> old = std::exchange(mEntries, std::vector<Entry>(mEntries.empty() ? 256 : 2 * mEntries.size()));
  for (const Entry& entry : old) {
    if (!entry.used) continue;
    std::size_t place = placeOf(entry.bits, entry.kind);
    while (mEntries[place].used) place = (place + 1) & (mEntries.size() - 1);
    mEntries[place] = entry;
  }
}

}  // namespace vorn::detail
