// Numbers on the command line.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vorn::ctl {

// The whole word as a decimal number; nothing where it is none or does not fit.
inline std::optional<std::int64_t> numberOf(std::string_view word) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (word.empty() || error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return number;
}

inline std::optional<std::int64_t> numberOf(std::string_view word, std::int64_t minimum, std::int64_t maximum) {
  const auto number = numberOf(word);
  return number && *number >= minimum && *number <= maximum ? number : std::nullopt;
}

}  // namespace vorn::ctl
