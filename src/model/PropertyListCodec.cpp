#include "model/PropertyListCodec.h"

#include <algorithm>
#include <cstring>

#include "model/BinaryPropertyListFormat.h"
#include "model/BinaryPropertyListReader.h"
#include "model/BinaryPropertyListWriter.h"
#include "model/RegularFile.h"

namespace vorn {

namespace {

void report(std::string* error, const std::string& message) {
  if (error != nullptr) *error = message;
}

bool startsWith(BytesView bytes, std::string_view start) {
  return bytes.size() >= start.size() && std::memcmp(bytes.data(), start.data(), start.size()) == 0;
}

// UTF-8 or UTF-16, with or without a byte-order mark, whose first character that is no blank opens a tag.
bool looksLikeXml(BytesView bytes) {
  const auto meaningless = [](std::uint8_t byte) {
    constexpr std::string_view skipped("\xEF\xBB\xBF\xFE\xFF\0 \t\r\n", 10);
    return skipped.find(static_cast<char>(byte)) != std::string_view::npos;
  };
  const auto first = std::find_if_not(bytes.begin(), bytes.end(), meaningless);
  return first != bytes.end() && *first == '<';
}

}  // namespace

std::optional<Bytes> encodeBinaryPropertyList(const PropertyList& value, std::string* error) {
  detail::BinaryPropertyListWriter writer;
  std::optional<Bytes> bytes = writer.write(value);
  if (!bytes) report(error, writer.error());
  return bytes;
}

std::optional<PropertyList> decodeBinaryPropertyList(BytesView bytes, std::string* error) {
  detail::BinaryPropertyListReader reader(bytes);
  std::optional<PropertyList> value = reader.read();
  if (!value) report(error, reader.error());
  return value;
}

std::optional<PropertyList> decodePropertyList(BytesView bytes, std::string* error) {
  if (startsWith(bytes, detail::binaryMagic)) return decodeBinaryPropertyList(bytes, error);
  if (looksLikeXml(bytes)) return decodeXmlPropertyList(bytes, error);
  if (bytes.empty()) {
    report(error, "there are no bytes");
  } else if (startsWith(bytes, "bplist")) {
    report(error, "this version of the binary property-list format is not supported");
  } else {
    report(error, "neither a binary nor an XML property list; the older text format is not supported");
  }
  return std::nullopt;
}

std::optional<PropertyList> readPropertyListFile(const std::string& path, std::string* error) {
  Bytes bytes;
  const std::error_code failure = readRegularFile(path, maximumSize, bytes);
  std::string reason = failure ? reasonOf(failure) : std::string();
  std::optional<PropertyList> value;
  if (!failure) value = decodePropertyList(bytes, &reason);
  if (!value) report(error, path + ": " + reason);
  return value;
}

}  // namespace vorn
