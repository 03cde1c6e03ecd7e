// The lines of a macro, as clients see its events: even rows are events, odd rows the delays between them
// (model/eventParser.h makes them). lines: an array of strings. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

// The names of the keys and buttons that are pressed and not let go, in the order of the presses: "A", "Left Button".
std::vector<std::string> namesPressedAtEnd(const PropertyList& lines);

// Whether the lines of the part stand in a row among the lines.
bool holdsLines(const PropertyList& lines, const PropertyList& part);

// A line that somebody edits while others change the macro.
class RememberedLine {
 public:
  // Also of a row that does not exist.
  RememberedLine(PropertyList lines, std::int64_t row);

  // Where the line stands now: it is the same as long as everything before it is, or everything behind it. Nothing when
  // it is gone or has become another one.
  std::optional<std::int64_t> placeIn(const PropertyList& lines) const;

 private:
  PropertyList mLines;
  std::int64_t mRow;
};

}  // namespace vorn
