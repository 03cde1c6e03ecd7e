#include "model/MacroLines.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <string_view>
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

namespace {

using Pressed = std::map<std::string, std::size_t, std::less<>>;  // rows of presses, by the lines of their releases

}  // namespace

std::vector<std::optional<std::size_t>> pairRowsOf(const PropertyList& lines) {
  const auto all = lines.elements();
  std::vector<std::optional<std::size_t>> partners(all.size());
  Pressed open;
  for (std::size_t row = 0; row < all.size(); row += 2) {
    if (std::string release = eventParser::releaseLineOf(all[row].string()); !release.empty()) {
      open[std::move(release)] = row;
    } else if (const auto press = open.find(all[row].string()); press != open.end()) {
      partners[row] = press->second;
      partners[press->second] = row;
      open.erase(press);
    }
  }
  return partners;
}

std::vector<std::string> namesPressedAtEnd(const PropertyList& lines) {
  Pressed open;
  for (std::size_t row = 0; row < lines.size(); row += 2) {
    const std::string_view line = lines.elements()[row].string();
    if (std::string release = eventParser::releaseLineOf(line); !release.empty()) {
      open.try_emplace(std::move(release), row);
    } else if (const auto press = open.find(line); press != open.end()) {
      open.erase(press);
    }
  }
  std::vector<std::size_t> rows;
  for (const auto& entry : open) rows.push_back(entry.second);
  std::ranges::sort(rows);
  std::vector<std::string> names;
  for (const std::size_t row : rows) names.push_back(eventParser::nameInLine(lines.elements()[row].string()));
  return names;
}

std::vector<PairLine> pairLinesOf(const PropertyList& lines, std::size_t laneCount) {
  const auto partners = pairRowsOf(lines);
  std::vector<PairLine> pairs;
  std::vector<std::size_t> freeFrom(laneCount, 0);  // the first row that each lane is free at
  for (std::size_t row = 0; row < partners.size(); ++row) {
    if (!partners[row] || *partners[row] < row) continue;
    const auto lane = std::ranges::find_if(freeFrom, [row](std::size_t from) { return from <= row; });
    if (lane == freeFrom.end()) continue;
    *lane = *partners[row] + 1;
    pairs.push_back({row, *partners[row], static_cast<std::size_t>(lane - freeFrom.begin())});
  }
  return pairs;
}

std::vector<std::int64_t> elapsedOf(const PropertyList& lines) {
  std::vector<std::int64_t> times;
  times.reserve(lines.size());
  std::int64_t time = 0;
  for (const PropertyList& line : lines.elements()) {
    if (times.size() % 2 == 1) time += eventParser::delayOfLine(line.string()).value_or(0);
    times.push_back(time);
  }
  return times;
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
