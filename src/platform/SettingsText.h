// How settings reach a label: a value that is missing or of another type shows nothing.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string_view>

#include "model/PropertyList.h"

namespace skarn {

// The string under a key; empty when it is missing or no string.
QString textOf(const vorn::PropertyList& dictionary, std::string_view key);

// The number under a key, read as a signed 32-bit integer; nothing when it is missing or no number.
std::optional<std::int32_t> numberOf(const vorn::PropertyList& dictionary, std::string_view key);

}  // namespace skarn
