#include "model/RememberedRecord.h"

#include <algorithm>

namespace vorn {

RememberedRecord::RememberedRecord(const PropertyList& records, std::int64_t index, std::string_view nameKey)
    : mIndex(index), mName(records.at(index)[nameKey].toString()), mNameKey(nameKey) {}

std::optional<std::int64_t> RememberedRecord::placeIn(const PropertyList& records) const {
  const auto size = static_cast<std::int64_t>(records.size());
  const auto isIt = [&](std::int64_t place) {
    return place >= 0 && place < size && records.at(place)[mNameKey].toString() == mName;
  };
  // As far as the farther end of the list.
  for (std::int64_t distance = 0; distance <= std::max(mIndex, size); ++distance) {
    for (const std::int64_t place : {mIndex - distance, mIndex + distance}) {
      if (isIt(place)) return place;
    }
  }
  return std::nullopt;
}

}  // namespace vorn
