// Property lists to bytes and back: the binary format, version 1.0 ("bplist00"), and the XML format (reading only).
//
// All functions take hostile bytes: input is bounds-checked, nesting is limited to maximumDepth levels, input and
// output to maximumSize bytes, and a value whose shared parts would expand to more than maximumExpandedCount
// elements is refused. Nothing recurses on input. Failures are values; error, if given, receives one English line.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "model/PropertyList.h"

namespace vorn {

inline constexpr std::size_t maximumDepth = 512;
inline constexpr std::size_t maximumSize = std::size_t{64} * 1024 * 1024;
inline constexpr std::size_t maximumExpandedCount = std::size_t{16} * 1024 * 1024;

// Format 1.0 with the smallest integer, reference and offset widths; equal scalars and strings are written once, as
// the platform's writer does. Nothing when the value is none, holds a none or is too deep or too large. Bytes that
// are no UTF-8 in a string are written as U+FFFD.
std::optional<Bytes> encodeBinaryPropertyList(const PropertyList& value, std::string* error = nullptr);

std::optional<PropertyList> decodeBinaryPropertyList(BytesView bytes, std::string* error = nullptr);
std::optional<PropertyList> decodeXmlPropertyList(BytesView bytes, std::string* error = nullptr);

// Tells the format by its first bytes. The older text format is refused with a clear error.
std::optional<PropertyList> decodePropertyList(BytesView bytes, std::string* error = nullptr);

// Reads a whole file of at most maximumSize bytes and decodes it.
std::optional<PropertyList> readPropertyListFile(const std::string& path, std::string* error = nullptr);

}  // namespace vorn
