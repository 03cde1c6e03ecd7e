// How much a record from a client may hold, so that no request makes settings that cannot be saved, sent or decoded.
#pragma once

#include <cstddef>

#include "model/PropertyList.h"

namespace vorn {

// A record's size is 8 bytes for each value in it, itself included, and the bytes of its keys, texts and data.
inline constexpr std::size_t maximumRecordSize = std::size_t{1024} * 1024;
// So many containers may lie one in another, the record itself included. An empty one does not count.
inline constexpr std::size_t maximumRecordDepth = 32;

// In bytes, as above, however large it is.
std::size_t recordSize(const PropertyList& record);

// Takes a time bounded by the limits, whatever the record holds.
bool isWithinRecordLimits(const PropertyList& record);

}  // namespace vorn
