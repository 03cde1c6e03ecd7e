#include "model/MacroLineLayout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/MacroLines.h"
#include "model/eventParser.h"

namespace vorn::test {
namespace {

struct Event {
  int command, page, argument;
};

// The lines of these events, 20 ms apart.
PropertyList linesOf(const std::vector<Event>& events) {
  std::vector<PropertyList> records;
  for (const Event& event : events) {
    records.push_back(PropertyList::dictionary(
        {{"command", event.command}, {"delay", 20}, {"page", event.page}, {"argument", event.argument}}));
  }
  return eventParser::getMessagesArray(PropertyList::array(std::move(records)));
}

constexpr Event pressA{1, 7, 4}, releaseA{0, 7, 4}, pressB{1, 7, 5}, releaseB{0, 7, 5}, pressC{1, 7, 6};
constexpr Event pressLeft{1, 9, 1}, releaseLeft{0, 9, 1}, pressShift{1, 7, 225}, releaseShift{0, 7, 225};
constexpr Event pressThird{1, 9, 3}, releaseThird{0, 9, 3};

MacroLineLayout laidOut(const PropertyList& lines) {
  MacroLineLayout layout;
  layout.append(lines.elements());
  return layout;
}

// Per row a character per lane.
std::vector<std::string> lanesOf(const MacroLineLayout& layout, std::size_t rows) {
  std::vector<std::string> lanes(rows);
  for (std::size_t row = 0; row < rows; ++row) {
    for (const PairLanes::Part part : layout.lanesOf(row).parts) lanes[row] += ".b|e"[part];
  }
  return lanes;
}

// What a person types: one key behind the other, each let go before the next but one is pressed.
std::vector<Event> typed(int strokes) {
  std::vector<Event> events;
  for (int stroke = 0; stroke < strokes; ++stroke) {
    events.push_back({1, 7, 4 + stroke % 20});
    if (stroke > 0) events.push_back({0, 7, 4 + (stroke - 1) % 20});
  }
  return events;
}

TEST(MacroLineLayoutTest, PairsAreToldForAllRows) {
  const PropertyList lines = linesOf({pressA, pressB, releaseA, pressLeft, releaseB, releaseLeft, pressC, releaseA});
  const MacroLineLayout layout = laidOut(lines);
  for (const auto& [press, release] : {std::pair{0U, 4U}, std::pair{2U, 8U}, std::pair{6U, 10U}}) {
    EXPECT_EQ(layout.partnerOf(press), release);
    EXPECT_EQ(layout.partnerOf(release), press);
  }
  EXPECT_EQ(layout.partnerOf(12), std::nullopt);
  EXPECT_EQ(layout.partnerOf(14), std::nullopt);
  EXPECT_EQ(layout.partnerOf(1), std::nullopt);
}

TEST(MacroLineLayoutTest, TheReleaseOfAPressIsTheNextOneOfTheSameKeyOrButton) {
  const MacroLineLayout layout =
      laidOut(linesOf({pressA, pressLeft, pressB, releaseLeft, releaseB, releaseA, pressThird, releaseThird}));
  EXPECT_EQ(layout.partnerOf(0), 10);
  EXPECT_EQ(layout.partnerOf(2), 6);
  EXPECT_EQ(layout.partnerOf(4), 8);
  EXPECT_EQ(layout.partnerOf(12), 14);
}

TEST(MacroLineLayoutTest, APressWithoutAReleaseBeforeTheNextPressIsInNoPair) {
  EXPECT_EQ(laidOut(linesOf({pressA, pressA, releaseA})).partnerOf(0), std::nullopt);
  EXPECT_EQ(laidOut(linesOf({pressA, releaseB})).partnerOf(0), std::nullopt);
  EXPECT_EQ(laidOut(linesOf({releaseA, pressA})).partnerOf(2), std::nullopt);
}

TEST(MacroLineLayoutTest, ADelayAndAFurtherReleaseAreInNoPair) {
  const MacroLineLayout layout = laidOut(linesOf({pressA, releaseA, releaseA}));
  EXPECT_EQ(layout.partnerOf(1), std::nullopt);
  EXPECT_EQ(layout.partnerOf(4), std::nullopt);
}

TEST(MacroLineLayoutTest, PairsThatOverlapLieInLanesOfTheirOwn) {
  const PropertyList lines = linesOf({pressA, pressB, pressC, releaseB, releaseA, pressLeft, releaseLeft});
  EXPECT_EQ(lanesOf(laidOut(lines), lines.size()),
            (std::vector<std::string>{"b...", "|...", "|b..", "||..", "||..", "||..", "|e..", "|...", "e...", "....",
                                      "b...", "|...", "e..."}));
}

TEST(MacroLineLayoutTest, APairThatFindsNoFreeLaneHasNoLine) {
  std::vector<Event> events;
  for (int key = 4; key < 9; ++key) events.push_back({1, 7, key});
  for (int key = 4; key < 9; ++key) events.push_back({0, 7, key});
  const PropertyList lines = linesOf(events);
  const MacroLineLayout layout = laidOut(lines);
  EXPECT_EQ(layout.partnerOf(8), 18U);
  EXPECT_EQ(lanesOf(layout, lines.size())[8], "||||");
  EXPECT_EQ(lanesOf(layout, lines.size())[18], "....");
}

TEST(MacroLineLayoutTest, TheTimeOfARowCountsFromTheFirstEvent) {
  const MacroLineLayout layout = laidOut(linesOf({pressA, releaseA, pressB}));
  const std::vector<std::int64_t> times{0, 20, 20, 40, 40};
  for (std::size_t row = 0; row < times.size(); ++row) EXPECT_EQ(layout.elapsedOf(row), times[row]);
}

TEST(MacroLineLayoutTest, BatchesMakeTheSameAsAllLinesAtOnce) {
  std::vector<Event> events = typed(9);
  events.insert(events.begin() + 3, {pressShift, pressLeft, pressA});
  events.insert(events.end() - 2, {releaseShift, releaseB, releaseLeft, pressB});
  const PropertyList lines = linesOf(events);
  const auto all = lines.elements();
  const MacroLineLayout whole = laidOut(lines);
  for (const std::size_t batch : {1U, 2U, 3U, 7U}) {
    MacroLineLayout layout;
    for (std::size_t at = 0; at < all.size(); at += batch)
      layout.append(all.subspan(at, std::min<std::size_t>(batch, all.size() - at)));
    EXPECT_EQ(lanesOf(layout, all.size()), lanesOf(whole, all.size()));
    for (std::size_t row = 0; row < all.size(); ++row) {
      EXPECT_EQ(layout.partnerOf(row), whole.partnerOf(row));
      EXPECT_EQ(layout.elapsedOf(row), whole.elapsedOf(row));
    }
  }
}

TEST(MacroLineLayoutTest, ALongRecordingIsLaidOutInWorkThatGrowsWithItsLength) {
  for (const int strokes : {100, 1000}) {
    std::vector<Event> events = typed(strokes);
    // A key that is held all the time counts once, when it is let go.
    events.insert(events.begin(), pressShift);
    events.push_back(releaseShift);
    const PropertyList lines = linesOf(events);
    const auto all = lines.elements();
    MacroLineLayout layout;
    layout.append(all.first(1));
    for (std::size_t at = 1; at < all.size(); at += 2) layout.append(all.subspan(at, 2));
    EXPECT_LE(layout.laidOutRows(), 6 * all.size());
  }
}

TEST(MacroLineLayoutTest, AClearedLayoutBeginsAnew) {
  MacroLineLayout layout = laidOut(linesOf({pressA}));
  layout.clear();
  const PropertyList lines = linesOf({releaseA, pressB});
  layout.append(lines.elements());
  EXPECT_EQ(layout.partnerOf(0), std::nullopt);
  EXPECT_EQ(layout.elapsedOf(2), 20);
}

}  // namespace
}  // namespace vorn::test
