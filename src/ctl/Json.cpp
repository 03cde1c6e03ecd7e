#include "ctl/Json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "ctl/Text.h"
#include "model/Utf8.h"

namespace vorn::ctl {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

void appendText(std::string& json, std::string_view text) {
  json += '"';
  while (!text.empty()) {
    const Utf8Character next = firstCharacter(text);
    if (next.code == U'"' || next.code == U'\\') {
      (json += '\\') += text[0];
    } else if (!next.isValid || isControlCharacter(next.code)) {
      json += escapeOf(next.code);
    } else {
      json += text.substr(0, next.length);
    }
    text.remove_prefix(next.length);
  }
  json += '"';
}

void appendReal(std::string& json, double value) {
  if (!std::isfinite(value)) {
    json += "null";
    return;
  }
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  json.append(text.data(), end);
}

void append(std::string& json, const PropertyList& value, std::size_t depth);

void appendContainer(std::string& json, const PropertyList& value, std::size_t depth) {
  const bool isArray = value.isArray();
  json += isArray ? '[' : '{';
  for (std::size_t index = 0; index < value.size(); ++index) {
    if (index > 0) json += ',';
    if (!isArray) {
      appendText(json, value.keyAt(index));
      json += ':';
    }
    append(json, isArray ? value.at(static_cast<std::int64_t>(index)) : value.valueAt(index), depth + 1);
  }
  json += isArray ? ']' : '}';
}

void append(std::string& json, const PropertyList& value, std::size_t depth) {
  using Type = PropertyList::Type;
  // Deeper than anything that can be received.
  if (depth > 512) {
    json += "null";
    return;
  }
  switch (value.type()) {
    case Type::None:
      json += "null";
      return;
    case Type::Boolean:
      json += value.toBool() ? "true" : "false";
      return;
    case Type::Integer:
      json += std::to_string(value.toInt64());
      return;
    case Type::Unsigned:
      json += std::to_string(value.toUnsigned());
      return;
    case Type::Real:
      return appendReal(json, value.toDouble());
    case Type::String:
      return appendText(json, value.string());
    case Type::Data:
      json += '"';
      for (const std::uint8_t byte : value.bytes()) (json += hexDigits[byte >> 4]) += hexDigits[byte & 15];
      json += '"';
      return;
    case Type::Date:
      return appendReal(json, value.date().seconds);
    case Type::Uid:
      json += std::to_string(value.uid().value);
      return;
    case Type::Array:
    case Type::Dictionary:
      return appendContainer(json, value, depth);
  }
}

}  // namespace

std::string jsonOf(const PropertyList& value) {
  std::string json;
  append(json, value, 0);
  return json;
}

}  // namespace vorn::ctl
