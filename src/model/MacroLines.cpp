#include "model/MacroLines.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "model/eventParser.h"

namespace vorn {

std::vector<std::string> namesPressedAtEnd(const PropertyList& lines) {
  std::map<std::string, std::size_t, std::less<>> open;  // rows of presses, by the lines of their releases
  for (std::size_t row = 0; row < lines.size(); row += 2) {
    const std::string_view line = lines.elements()[row].string();
    if (std::string release = eventParser::releaseLineOf(line); !release.empty()) {
      open.try_emplace(std::move(release), row);
    } else if (const auto press = open.find(line); press != open.end()) {
      open.erase(press);
    }
  }
  std::vector<std::size_t> rows;
  rows.reserve(open.size());
  for (const auto& entry : open) rows.push_back(entry.second);
  std::ranges::sort(rows);
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const std::size_t row : rows) names.push_back(eventParser::nameInLine(lines.elements()[row].string()));
  return names;
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
