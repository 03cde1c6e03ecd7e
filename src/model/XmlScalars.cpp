#include "model/XmlScalars.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

namespace vorn::detail {

namespace {

using std::chrono::days;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;

constexpr sys_days referenceDay = std::chrono::year{2001} / 1 / 1;

constexpr std::string_view blanks = " \t\n\v\f\r";

std::string_view trimmed(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The whole text as one number, without a sign.
template <typename T, typename... Base>
std::optional<T> wholeNumber(std::string_view text, Base... base) {
  if (text.starts_with('-')) return std::nullopt;
  T value{};
  const char* end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, value, base...);
  return result.ec == std::errc() && result.ptr == end ? std::optional<T>(value) : std::nullopt;
}

// Takes the sign off the text.
bool takeSign(std::string_view& text) noexcept {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

// Value of a base-64 digit, or 64.
std::uint32_t base64Digit(char character) noexcept {
  static constexpr std::array<std::uint8_t, 256> table = [] {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 256> values{};
    values.fill(64);
    for (std::size_t i = 0; i < digits.size(); ++i) {
      values[static_cast<unsigned char>(digits[i])] = static_cast<std::uint8_t>(i);
    }
    return values;
  }();
  return table[static_cast<unsigned char>(character)];
}

}  // namespace

std::optional<PropertyList> parseInteger(std::string_view text) {
  text = trimmed(text);
  const bool negative = takeSign(text);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  const std::optional<std::uint64_t> magnitude = wholeNumber<std::uint64_t>(text, hexadecimal ? 16 : 10);
  if (!magnitude) return std::nullopt;
  if (!negative) return PropertyList(*magnitude);
  if (*magnitude > std::uint64_t{1} << 63) return std::nullopt;
  return PropertyList(static_cast<std::int64_t>(~*magnitude + 1));
}

std::optional<double> parseReal(std::string_view text) {
  text = trimmed(text);
  const bool negative = takeSign(text);
  const std::optional<double> magnitude = wholeNumber<double>(text);
  if (!magnitude) return std::nullopt;
  return negative ? -*magnitude : *magnitude;
}

std::optional<PropertyList::Date> parseDate(std::string_view text) {
  text = trimmed(text);
  constexpr std::string_view pattern = "dddd-dd-ddTdd:dd:ddZ";
  if (text.size() != pattern.size()) return std::nullopt;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const bool digit = text[i] >= '0' && text[i] <= '9';
    if (pattern[i] == 'd' ? !digit : text[i] != pattern[i]) return std::nullopt;
  }
  const auto field = [text](std::size_t start, std::size_t length) {
    return *wholeNumber<int>(text.substr(start, length));
  };
  const std::chrono::year_month_day day{std::chrono::year{field(0, 4)},
                                        std::chrono::month{static_cast<unsigned>(field(5, 2))},
                                        std::chrono::day{static_cast<unsigned>(field(8, 2))}};
  const int hour = field(11, 2);
  const int minute = field(14, 2);
  const int second = field(17, 2);
  // A leap second counts as the first second of the next minute.
  if (!day.ok() || hour > 23 || minute > 59 || second > 60) return std::nullopt;
  const auto dayCount = (sys_days{day} - referenceDay).count();
  return PropertyList::Date{static_cast<double>(dayCount) * 86400.0 + hour * 3600 + minute * 60 + second};
}

std::optional<Bytes> parseBase64(std::string_view text) {
  Bytes bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t pending = 0;
  unsigned bits = 0;
  std::size_t digits = 0;
  bool padded = false;
  for (const char character : text) {
    if (blanks.find(character) != std::string_view::npos) continue;
    if (character == '=') {
      padded = true;
      continue;
    }
    const std::uint32_t digit = base64Digit(character);
    if (digit == 64 || padded) return std::nullopt;
    ++digits;
    pending = (pending << 6) | digit;
    bits += 6;
    if (bits >= 8) {
      bits -= 8;
      bytes.push_back(static_cast<std::uint8_t>(pending >> bits));
    }
  }
  if (digits % 4 == 1) return std::nullopt;
  return bytes;
}

std::string formatDate(PropertyList::Date date) {
  std::array<char, 48> text{};
  const double first = static_cast<double>(seconds(sys_days{std::chrono::year{0} / 1 / 1} - referenceDay).count());
  const double last = static_cast<double>(seconds(sys_days{std::chrono::year{10000} / 1 / 1} - referenceDay).count());
  if (!(date.seconds >= first && date.seconds < last)) {
    std::snprintf(text.data(), text.size(), "%g s", date.seconds);
    return text.data();
  }
  const auto milliseconds = static_cast<std::int64_t>(std::floor(date.seconds * 1000));
  const sys_days day = std::chrono::floor<days>(sys_seconds{referenceDay} + std::chrono::milliseconds{milliseconds});
  const std::chrono::year_month_day calendar{day};
  const auto rest = std::chrono::milliseconds{milliseconds} - (day - referenceDay);
  const std::chrono::hh_mm_ss clock{rest};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(calendar.year()),
                static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  std::string result = text.data();
  if (const auto fraction = static_cast<int>(clock.subseconds().count()); fraction != 0) {
    std::snprintf(text.data(), text.size(), ".%03d", fraction);
    result += text.data();
  }
  return result + "Z";
}

}  // namespace vorn::detail
