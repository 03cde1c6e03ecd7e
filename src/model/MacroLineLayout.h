// What is drawn beside the lines of a macro (model/MacroLines.h): which press and release belong together, the lines
// that join them, and the time of each row. It grows with a recording: the work of a batch is that of its own rows and
// of those between the presses and releases that it joins, however many stand before. Any thread, one at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

// The lines that join a press and its release, as they pass one row. Pairs that are nested or overlap lie in lanes of
// their own, the outer ones first; those that find no free lane have no line.
struct PairLanes {
  static constexpr std::size_t laneCount = 4;
  enum Part : std::uint8_t { None, Begins, Passes, Ends };
  std::array<Part, laneCount> parts{};

  friend bool operator==(const PairLanes&, const PairLanes&) = default;
};

class MacroLineLayout {
 public:
  void clear();
  // lines: strings, behind those that are there already; even rows are events, odd ones delays.
  void append(std::span<const PropertyList> lines);

  // row: of an appended line.
  // The row of the other event of its pair; nothing where it has none.
  std::optional<std::size_t> partnerOf(std::size_t row) const { return mPartners[row]; }
  const PairLanes& lanesOf(std::size_t row) const { return mLanes[row]; }
  // Milliseconds from the first event to the end of the row.
  std::int64_t elapsedOf(std::size_t row) const { return mElapsed[row]; }

  // How many rows have been laid out so far, each as often as it was: the work that it has been.
  std::size_t laidOutRows() const { return mLaidOutRows; }

 private:
  struct Pair {
    std::size_t first;  // rows
    std::size_t last;
  };

  // Returns the first row whose lanes become others.
  std::size_t appendLine(const PropertyList& line);
  void layOutFrom(std::size_t first);
  void draw(const Pair& pair, std::size_t lane, std::size_t from);

  std::map<std::string, std::size_t, std::less<>> mPressed;  // rows of presses, by the lines of their releases
  std::vector<std::optional<std::size_t>> mPartners;
  std::vector<std::int64_t> mElapsed;
  std::vector<PairLanes> mLanes;
  std::array<std::vector<Pair>, PairLanes::laneCount> mPairs;  // of each lane, one behind the other
  std::size_t mLaidOutRows = 0;
};

}  // namespace vorn
