// A record of a list that somebody is busy with (a sheet, an alert, a panel, a recording) while others change the list.
// Records have no identity of their own but their place and their name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn {

class RememberedRecord {
 public:
  // records: an array; nameKey: the key of a record's name, a literal. Also of a place that does not exist.
  RememberedRecord(const PropertyList& records, std::int64_t index, std::string_view nameKey);

  const std::string& name() const { return mName; }
  // Where the record stands in the list now: at its place, else at the nearest one with its name, of two equally near
  // ones the earlier. Nothing when it is gone or has another name.
  std::optional<std::int64_t> placeIn(const PropertyList& records) const;

 private:
  std::int64_t mIndex;
  std::string mName;
  std::string_view mNameKey;
};

}  // namespace vorn
