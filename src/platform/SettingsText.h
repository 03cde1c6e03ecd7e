// How settings reach a label: a value that is missing or of another type shows nothing.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "model/PropertyList.h"

namespace skarn {

// The string under a key; empty when it is missing or no string.
QString textOf(const vorn::PropertyList& dictionary, std::string_view key);

// The number under a key, read as a signed 32-bit integer; nothing when it is missing or no number.
std::optional<std::int32_t> numberOf(const vorn::PropertyList& dictionary, std::string_view key);

// A flag as a word of the interface; empty for none.
QString onOffText(std::optional<std::int32_t> flag);

// The text whose key stands at a position of a labelled scale; positions count from 1. Empty for none and for a
// position outside the scale.
QString scaleText(std::span<const char* const> keys, std::optional<std::int32_t> position);

// The same for the scale of brightness that the light has in use and on battery: off, dim, normal, bright.
QString brightnessText(std::optional<std::int32_t> position);

}  // namespace skarn
