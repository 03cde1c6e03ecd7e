// The texts of numbers, dates and data in XML property lists; for the files of this folder only. Parsing gives
// nothing for what does not fit; blanks around the text are allowed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn::detail {

// Decimal, or hexadecimal after 0x, from -2^63 to 2^64 - 1.
std::optional<PropertyList> parseInteger(std::string_view text);
// Also "nan", "inf" and "infinity" in any case.
std::optional<double> parseReal(std::string_view text);
// ISO 8601 in whole seconds of UTC: "2012-02-29T13:05:00Z".
std::optional<PropertyList::Date> parseDate(std::string_view text);
// Base 64; blanks are allowed everywhere and padding may be missing.
std::optional<Bytes> parseBase64(std::string_view text);

// As parseDate() reads it, with milliseconds if there are any; a year beyond 0 to 9999 gives the number of seconds.
std::string formatDate(PropertyList::Date date);

}  // namespace vorn::detail
