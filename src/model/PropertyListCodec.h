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

// Format 1.0 with the smallest of the widths 1, 2, 4 and 8 (16 for integers above 2^63 - 1); equal scalars, strings and
// data are written once, and so is a container however often it is shared. Nothing when the value is none, holds a none
// or a date that is not finite, or is too deep or too large. Bytes that are no UTF-8 in a string are written as U+FFFD.
std::optional<Bytes> encodeBinaryPropertyList(const PropertyList& value, std::string* error = nullptr);

// Reads the whole of format 1.0: integers of all widths whose value fits into 64 bits, reals of 4 and 8 bytes, lengths,
// references and offsets of any width. Lone surrogates become U+FFFD; of a key that comes twice the last value is kept;
// an object that is referred to twice is shared. Refused are null objects, sets, keys that are no strings, ASCII
// strings with other bytes, dates that are not finite, containers that hold themselves, and objects that overlap so
// much that their strings and data would exceed maximumSize.
std::optional<PropertyList> decodeBinaryPropertyList(BytesView bytes, std::string* error = nullptr);

// UTF-8 and UTF-16; a document type is allowed, entities other than XML's own are refused. The plist element may be
// missing. Dates are ISO 8601 in UTC and whole seconds.
std::optional<PropertyList> decodeXmlPropertyList(BytesView bytes, std::string* error = nullptr);

// Tells the format by its first bytes. The older text format is refused with a clear error.
std::optional<PropertyList> decodePropertyList(BytesView bytes, std::string* error = nullptr);

// Reads a whole file of at most maximumSize bytes and decodes it.
std::optional<PropertyList> readPropertyListFile(const std::string& path, std::string* error = nullptr);

}  // namespace vorn
