#include "model/MacroLines.h"

#include <algorithm>
#include <string>
#include <utility>

#include "model/eventParser.h"

namespace vorn {

std::optional<std::int64_t> releaseRowOf(const PropertyList& lines, std::int64_t press) {
  const std::string release = eventParser::releaseLineOf(lines.at(press).string());
  if (release.empty()) return std::nullopt;
  for (std::int64_t row = press + 2; std::cmp_less(row, lines.size()); row += 2) {
    if (lines.at(row).string() == release) return row;
    if (lines.at(row) == lines.at(press)) break;
  }
  return std::nullopt;
}

bool holdsLines(const PropertyList& lines, const PropertyList& part) {
  const auto all = lines.elements();
  const auto sought = part.elements();
  return sought.empty() || std::search(all.begin(), all.end(), sought.begin(), sought.end()) != all.end();
}

RememberedLine::RememberedLine(PropertyList lines, std::int64_t row) : mLines(std::move(lines)), mRow(row) {}

std::optional<std::int64_t> RememberedLine::placeIn(const PropertyList& lines) const {
  const auto before = mLines.elements();
  const auto now = lines.elements();
  if (mRow < 0 || std::cmp_greater_equal(mRow, before.size())) return std::nullopt;
  const auto row = static_cast<std::size_t>(mRow);
  if (now.size() > row && std::ranges::equal(before.first(row + 1), now.first(row + 1))) return mRow;
  const std::size_t behind = before.size() - row;
  if (now.size() < behind || !std::ranges::equal(before.last(behind), now.last(behind))) return std::nullopt;
  const auto place = static_cast<std::int64_t>(now.size() - behind);
  // An event has not become a delay.
  return place % 2 == mRow % 2 ? std::optional(place) : std::nullopt;
}

}  // namespace vorn
