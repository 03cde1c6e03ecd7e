#include "ports/BusValue.h"

#include <concepts>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "ports/BusCall.h"

namespace vorn::bus {

namespace {

template <std::integral Number>
bool appendNumber(sd_bus_message* message, char type, const PropertyList& value) {
  if (!value.isInteger()) return false;
  const bool isLarge = value.type() == PropertyList::Type::Unsigned;
  if (isLarge ? !std::in_range<Number>(value.toUnsigned()) : !std::in_range<Number>(value.toInt64())) return false;
  const auto number = static_cast<Number>(value.toUnsigned());
  return sd_bus_message_append_basic(message, type, &number) >= 0;
}

bool appendBasicValue(sd_bus_message* message, char type, const PropertyList& value) {
  switch (type) {
    case SD_BUS_TYPE_BOOLEAN: {
      const int isTrue = value.toBool() ? 1 : 0;
      return value.isBoolean() && sd_bus_message_append_basic(message, type, &isTrue) >= 0;
    }
    case SD_BUS_TYPE_BYTE:
      return appendNumber<std::uint8_t>(message, type, value);
    case SD_BUS_TYPE_INT16:
      return appendNumber<std::int16_t>(message, type, value);
    case SD_BUS_TYPE_UINT16:
      return appendNumber<std::uint16_t>(message, type, value);
    case SD_BUS_TYPE_INT32:
      return appendNumber<std::int32_t>(message, type, value);
    case SD_BUS_TYPE_UINT32:
      return appendNumber<std::uint32_t>(message, type, value);
    case SD_BUS_TYPE_INT64:
      return appendNumber<std::int64_t>(message, type, value);
    case SD_BUS_TYPE_UINT64:
      return appendNumber<std::uint64_t>(message, type, value);
    case SD_BUS_TYPE_STRING: {
      const std::string text = value.toString();
      return value.isString() && isWithoutNul(text) && sd_bus_message_append_basic(message, type, text.c_str()) >= 0;
    }
    default:
      return false;
  }
}

// The length of the first complete type; the types come from our own descriptions, which sd-bus has checked.
std::size_t lengthOfType(std::string_view types) {
  std::size_t length = 0;
  int depth = 0;
  while (length < types.size()) {
    const char type = types[length++];
    depth += type == '(' || type == '{' ? 1 : 0;
    depth -= type == ')' || type == '}' ? 1 : 0;
    if (depth == 0 && type != 'a') break;
  }
  return length;
}

bool appendArray(sd_bus_message* message, std::string_view elementType, const PropertyList& value) {
  if (!value.isArray()) return false;
  if (sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, std::string(elementType).c_str()) < 0) return false;
  for (const PropertyList& element : value.elements()) {
    if (!appendValue(message, elementType, element)) return false;
  }
  return sd_bus_message_close_container(message) >= 0;
}

bool appendStructure(sd_bus_message* message, std::string_view types, const PropertyList& value) {
  if (sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, std::string(types).c_str()) < 0) return false;
  for (const PropertyList& field : value.elements()) {
    const std::size_t length = lengthOfType(types);
    if (length == 0 || !appendValue(message, types.substr(0, length), field)) return false;
    types.remove_prefix(length);
  }
  return types.empty() && sd_bus_message_close_container(message) >= 0;
}

const char* variantTypeOf(const PropertyList& value) {
  if (value.isBoolean()) return "b";
  if (value.isInteger()) return "x";
  return value.isArray() ? "as" : "s";
}

// The type of the contents is between the brackets.
bool appendVariant(sd_bus_message* message, std::string_view contents, const PropertyList& value) {
  const std::string signature = contents.starts_with("v<") ? "v" : std::string(contents);
  return sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, signature.c_str()) >= 0 &&
         appendValue(message, contents, value) && sd_bus_message_close_container(message) >= 0;
}

template <typename Number>
std::optional<PropertyList> readNumber(sd_bus_message* message, char type) {
  Number number{};
  if (sd_bus_message_read_basic(message, type, &number) <= 0) return std::nullopt;
  return PropertyList(number);
}

std::optional<PropertyList> readDictionary(sd_bus_message* message) {
  std::vector<PropertyList> entries;
  while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, nullptr) > 0) {
    auto entry = readValues(message);
    if (!entry || entry->size() != 2 || sd_bus_message_exit_container(message) < 0) return std::nullopt;
    entries.push_back(PropertyList::array(std::move(*entry)));
  }
  std::vector<PropertyList::Pair> pairs;
  pairs.reserve(entries.size());
  for (const PropertyList& entry : entries) pairs.emplace_back(entry.at(0).string(), entry.at(1));
  return PropertyList::dictionary(std::move(pairs));
}

// An array, a structure or a variant. Their depth is limited by the bus.
std::optional<PropertyList> readContainer(sd_bus_message* message, char type, const char* contents) {
  if (sd_bus_message_enter_container(message, type, contents) < 0) return std::nullopt;
  std::optional<PropertyList> result;
  const std::string_view types(contents);
  if (type == SD_BUS_TYPE_ARRAY && (types.starts_with("{s") || types.starts_with("{o"))) {
    result = readDictionary(message);
  } else if (auto values = readValues(message)) {
    if (type != SD_BUS_TYPE_VARIANT) result = PropertyList::array(std::move(*values));
    if (type == SD_BUS_TYPE_VARIANT && values->size() == 1) result = values->front();
  }
  if (!result || sd_bus_message_exit_container(message) < 0) return std::nullopt;
  return result;
}

}  // namespace

std::optional<std::vector<PropertyList>> readValues(sd_bus_message* message) {
  std::vector<PropertyList> values;
  char type = 0;
  const char* contents = nullptr;
  int result = sd_bus_message_peek_type(message, &type, &contents);
  for (; result > 0; result = sd_bus_message_peek_type(message, &type, &contents)) {
    const bool isContainer = type == SD_BUS_TYPE_ARRAY || type == SD_BUS_TYPE_STRUCT || type == SD_BUS_TYPE_VARIANT;
    auto value = isContainer ? readContainer(message, type, contents) : readBasicValue(message, type);
    if (!value) return std::nullopt;
    values.push_back(std::move(*value));
  }
  return result < 0 ? std::nullopt : std::optional(std::move(values));
}

bool appendDictionary(sd_bus_message* message, const PropertyList& value, const BusEntryTypes& types) {
  if (!value.isDictionary() || sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "{sv}") < 0) return false;
  for (std::size_t index = 0; index < value.size(); ++index) {
    const PropertyList& entry = value.valueAt(index);
    const auto own = types.find(value.keyAt(index));
    const std::string type = own == types.end() ? variantTypeOf(entry) : own->second;
    const bool isAppended = sd_bus_message_open_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") >= 0 &&
                            appendBasicValue(message, SD_BUS_TYPE_STRING, value.keyAt(index)) &&
                            appendVariant(message, type, entry) && sd_bus_message_close_container(message) >= 0;
    if (!isAppended) return false;
  }
  return sd_bus_message_close_container(message) >= 0;
}

bool appendValue(sd_bus_message* message, std::string_view type, const PropertyList& value) {
  if (type == "a{sv}") return appendDictionary(message, value, {});
  if (type.starts_with("v<"))
    return type.ends_with('>') && appendVariant(message, type.substr(2, type.size() - 3), value);
  if (type.starts_with('a')) return appendArray(message, type.substr(1), value);
  if (type.starts_with('(')) return appendStructure(message, type.substr(1, type.size() - 2), value);
  return type.size() == 1 && appendBasicValue(message, type.front(), value);
}

std::optional<PropertyList> readBasicValue(sd_bus_message* message, char type) {
  switch (type) {
    case SD_BUS_TYPE_BOOLEAN: {
      int isTrue = 0;
      if (sd_bus_message_read_basic(message, type, &isTrue) <= 0) return std::nullopt;
      return PropertyList(isTrue != 0);
    }
    case SD_BUS_TYPE_BYTE:
      return readNumber<std::uint8_t>(message, type);
    case SD_BUS_TYPE_INT16:
      return readNumber<std::int16_t>(message, type);
    case SD_BUS_TYPE_UINT16:
      return readNumber<std::uint16_t>(message, type);
    case SD_BUS_TYPE_INT32:
      return readNumber<std::int32_t>(message, type);
    case SD_BUS_TYPE_UINT32:
      return readNumber<std::uint32_t>(message, type);
    case SD_BUS_TYPE_INT64:
      return readNumber<std::int64_t>(message, type);
    case SD_BUS_TYPE_UINT64:
      return readNumber<std::uint64_t>(message, type);
    case SD_BUS_TYPE_DOUBLE:
      return readNumber<double>(message, type);
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
    case SD_BUS_TYPE_SIGNATURE:
      return readNumber<const char*>(message, type);
    default:
      return std::nullopt;
  }
}

}  // namespace vorn::bus
