// Number conversions of property-list values.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "model/PropertyList.h"

namespace vorn {

namespace {

// A real without its fraction, clamped to the range of T.
template <typename T>
T truncated(double value) noexcept {
  if (std::isnan(value)) return 0;
  // The upper bound itself may not be representable as a real, the power of two above it always is.
  if (value >= std::ldexp(1.0, std::numeric_limits<T>::digits)) return std::numeric_limits<T>::max();
  if (value <= static_cast<double>(std::numeric_limits<T>::min())) return std::numeric_limits<T>::min();
  return static_cast<T>(value);
}

// The text after leading blanks and a plus sign, when a decimal number may follow.
std::string_view numberText(std::string_view text) noexcept {
  constexpr std::string_view blanks = " \t\n\v\f\r";
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return {};
  }
  return text;
}

// A decimal integer at the start of the text, clamped to the range of T.
template <typename T>
T parsedInteger(std::string_view text) noexcept {
  text = numberText(text);
  T value = 0;
  const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  return text.starts_with('-') ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
}

double parsedReal(std::string_view text) noexcept {
  text = numberText(text);
  const std::size_t start = text.starts_with('-') ? 1 : 0;
  if (text.size() <= start || std::string_view("0123456789.").find(text[start]) == std::string_view::npos) return 0;
  double value = 0;
  const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  // Too large or too small for a real: the sign of the exponent tells which.
  const std::string_view number(text.data(), static_cast<std::size_t>(result.ptr - text.data()));
  const std::size_t exponent = number.find_first_of("eE");
  const bool small = exponent != std::string_view::npos && number.substr(exponent + 1).starts_with('-');
  return std::copysign(small ? 0.0 : std::numeric_limits<double>::infinity(), start == 1 ? -1.0 : 1.0);
}

}  // namespace

std::int32_t PropertyList::toInt() const noexcept {
  switch (mType) {
    case Type::Real:
      return truncated<std::int32_t>(std::bit_cast<double>(mBits));
    case Type::String:
      return parsedInteger<std::int32_t>(string());
    default:
      return static_cast<std::int32_t>(toInt64());
  }
}

std::int64_t PropertyList::toInt64() const noexcept {
  switch (mType) {
    case Type::Boolean:
    case Type::Integer:
    case Type::Unsigned:
      return static_cast<std::int64_t>(mBits);
    case Type::Real:
      return truncated<std::int64_t>(std::bit_cast<double>(mBits));
    case Type::String:
      return parsedInteger<std::int64_t>(string());
    default:
      return 0;
  }
}

std::uint64_t PropertyList::toUnsigned() const noexcept {
  switch (mType) {
    case Type::Real:
      return truncated<std::uint64_t>(std::bit_cast<double>(mBits));
    case Type::String:
      return numberText(string()).starts_with('-') ? static_cast<std::uint64_t>(toInt64())
                                                   : parsedInteger<std::uint64_t>(string());
    default:
      return static_cast<std::uint64_t>(toInt64());
  }
}

double PropertyList::toDouble() const noexcept {
  switch (mType) {
    case Type::Boolean:
    case Type::Integer:
      return static_cast<double>(static_cast<std::int64_t>(mBits));
    case Type::Unsigned:
      return static_cast<double>(mBits);
    case Type::Real:
      return std::bit_cast<double>(mBits);
    case Type::String:
      return parsedReal(string());
    default:
      return 0;
  }
}

bool PropertyList::toBool() const noexcept {
  if (isString()) {
    const std::string_view text = numberText(string());
    if (!text.empty() && std::string_view("YyTt").find(text.front()) != std::string_view::npos) return true;
  }
  return toDouble() != 0;
}

}  // namespace vorn
