#include "model/MacroLineLayout.h"

#include <algorithm>
#include <utility>

#include "model/eventParser.h"

namespace vorn {

void MacroLineLayout::clear() {
  *this = MacroLineLayout();
}

void MacroLineLayout::append(std::span<const PropertyList> lines) {
  std::size_t first = mPartners.size();
  for (const PropertyList& line : lines) first = std::min(first, appendLine(line));
  layOutFrom(first);
}

std::size_t MacroLineLayout::appendLine(const PropertyList& line) {
  const std::size_t row = mPartners.size();
  const std::string_view text = line.string();
  const bool isDelay = row % 2 == 1;
  const std::int64_t before = mElapsed.empty() ? 0 : mElapsed.back();
  mElapsed.push_back(before + (isDelay ? eventParser::delayOfLine(text).value_or(0) : 0));
  mPartners.emplace_back();
  mLanes.emplace_back();
  if (isDelay) return row;
  if (std::string release = eventParser::releaseLineOf(text); !release.empty()) {
    mPressed[std::move(release)] = row;
    return row;
  }
  const auto press = mPressed.find(text);
  if (press == mPressed.end()) return row;
  const std::size_t first = press->second;
  mPressed.erase(press);
  mPartners[row] = first;
  mPartners[first] = row;
  return first;
}

void MacroLineLayout::layOutFrom(std::size_t first) {
  const std::size_t end = mPartners.size();
  mLaidOutRows += end - first;
  std::fill(mLanes.begin() + static_cast<std::ptrdiff_t>(first), mLanes.end(), PairLanes());
  std::array<std::size_t, PairLanes::laneCount> freeFrom{};  // the first row that each lane is free at
  for (std::size_t lane = 0; lane < PairLanes::laneCount; ++lane) {
    std::vector<Pair>& pairs = mPairs[lane];
    while (!pairs.empty() && pairs.back().first >= first) pairs.pop_back();
    if (pairs.empty()) continue;
    freeFrom[lane] = pairs.back().last + 1;
    draw(pairs.back(), lane, first);
  }
  for (std::size_t row = first; row < end; ++row) {
    if (!mPartners[row] || *mPartners[row] < row) continue;
    const auto* const free = std::ranges::find_if(freeFrom, [row](std::size_t from) { return from <= row; });
    if (free == freeFrom.end()) continue;
    const auto lane = static_cast<std::size_t>(free - freeFrom.begin());
    const Pair pair{row, *mPartners[row]};
    freeFrom[lane] = pair.last + 1;
    mPairs[lane].push_back(pair);
    draw(pair, lane, row);
  }
}

void MacroLineLayout::draw(const Pair& pair, std::size_t lane, std::size_t from) {
  for (std::size_t row = std::max(pair.first, from); row <= pair.last; ++row)
    mLanes[row].parts[lane] = row == pair.first  ? PairLanes::Begins
                              : row == pair.last ? PairLanes::Ends
                                                 : PairLanes::Passes;
}

}  // namespace vorn
