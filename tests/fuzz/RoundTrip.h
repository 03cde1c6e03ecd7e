// What every decoded value has to stand: it encodes, and decodes again to an equal value.
#pragma once

#include <optional>
#include <string>

#include "model/PropertyListCodec.h"

namespace vorn::test {

// Empty when the bytes decode to nothing with a reason or to a value that goes round; otherwise what went wrong.
inline std::string faultOfRoundTrip(const std::optional<PropertyList>& value, const std::string& error) {
  if (!value) return error.empty() ? "refused without a reason" : "";
  if (!error.empty()) return "decoded, and yet with a reason: " + error;
  std::string reason;
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(*value, &reason);
  if (!bytes) return "not encoded: " + reason;
  const std::optional<PropertyList> again = decodeBinaryPropertyList(*bytes, &reason);
  if (!again) return "not decoded again: " + reason;
  if (*again != *value) return "another value: " + value->description() + " and " + again->description();
  return "";
}

}  // namespace vorn::test
