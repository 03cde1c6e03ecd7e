#include "mice/MouseIdentity.h"

#include <linux/input.h>

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "model/Utf8.h"

namespace vorn {

namespace {

bool isLetterOrDigit(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
         (character >= 'a' && character <= 'z');
}

}  // namespace

bool tells(std::string_view serialNumber) {
  return std::any_of(serialNumber.begin(), serialNumber.end(),
                     [](char character) { return isLetterOrDigit(character) && character != '0'; });
}

std::string cleanName(std::string_view name) {
  std::string result;
  while (!name.empty()) {
    const Utf8Character next = firstCharacter(name);
    if (result.size() + next.length > maximumNameLength) break;
    const bool isLeadingBlank = result.empty() && next.code == ' ';
    if (next.isValid && !isControlCharacter(next.code) && !isLeadingBlank) result += name.substr(0, next.length);
    name.remove_prefix(next.length);
  }
  result.erase(result.find_last_not_of(' ') + 1);
  return result;
}

std::string_view markOf(std::string_view serialNumber, std::string_view place) {
  return tells(serialNumber) ? serialNumber : place;
}

std::string plainMark(std::string_view mark) {
  constexpr std::size_t maximumMarkLength = 100;
  std::string plain(mark.substr(0, maximumMarkLength));
  for (char& character : plain) {
    const bool isPlain = isLetterOrDigit(character) || character == '.' || character == ':' || character == '-';
    if (!isPlain) character = '_';
  }
  return plain;
}

std::string mouseId(std::uint16_t bus, std::uint16_t vendor, std::uint16_t product, std::string_view mark) {
  char numbers[16];
  std::snprintf(numbers, sizeof numbers, "-%04x:%04x-", vendor, product);
  return (bus == BUS_BLUETOOTH ? "bluetooth" : "usb") + std::string(numbers) + plainMark(mark);
}

std::string nodeName(std::string_view interfaceNumber, std::string_view name, const std::vector<std::string>& former) {
  std::string result = cleanName(interfaceNumber);
  if (!result.empty()) result += ' ';
  result += cleanName(name);
  const std::string first = result;
  for (int count = 2; std::find(former.begin(), former.end(), result) != former.end(); ++count)
    result = first + ' ' + std::to_string(count);
  return result;
}

std::string firmwareText(std::string_view revision) {
  constexpr std::size_t digits = 4;
  const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
  if (revision.size() != digits || !std::all_of(revision.begin(), revision.end(), isDigit)) return {};
  const std::string_view major = revision.substr(revision.front() == '0' ? 1 : 0, revision.front() == '0' ? 1 : 2);
  return std::string(major) + '.' + std::string(revision.substr(2));
}

std::int32_t resolutionOf(std::string_view mouseDpi) {
  const std::size_t star = mouseDpi.find('*');
  const std::string_view value = mouseDpi.substr(star == std::string_view::npos ? 0 : star + 1);
  std::int32_t resolution = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), resolution);
  const bool isWhole = end == value.data() + value.size() || *end == '@' || *end == ' ';
  return error == std::errc() && isWhole && resolution >= 1 && resolution <= maximumResolution ? resolution : 0;
}

}  // namespace vorn
