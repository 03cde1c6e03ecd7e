#include "model/MacroLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/eventParser.h"

namespace vorn::test {
namespace {

struct Event {
  int command, page, argument;
};

// The lines of these events, 20 ms apart.
PropertyList linesOf(std::initializer_list<Event> events) {
  std::vector<PropertyList> records;
  for (const Event& event : events) {
    records.push_back(PropertyList::dictionary(
        {{"command", event.command}, {"delay", 20}, {"page", event.page}, {"argument", event.argument}}));
  }
  return eventParser::getMessagesArray(PropertyList::array(std::move(records)));
}

constexpr Event pressA{1, 7, 4}, releaseA{0, 7, 4}, pressB{1, 7, 5}, releaseB{0, 7, 5}, pressC{1, 7, 6};
constexpr Event pressLeft{1, 9, 1};

TEST(MacroLinesTest, WhatStaysPressedIsToldByName) {
  using Names = std::vector<std::string>;
  EXPECT_EQ(namesPressedAtEnd(linesOf({pressA, releaseA})), Names());
  EXPECT_EQ(namesPressedAtEnd(linesOf({pressLeft, pressB, pressA, pressB, releaseA, {0, 7, 6}})),
            (Names{"Left Button", "B"}));
  EXPECT_EQ(namesPressedAtEnd({}), Names());
}

TEST(MacroLinesTest, APartStandsAmongTheLinesOnlyInOnePiece) {
  const PropertyList lines = PropertyList::array({"a", "b", "a", "c"});
  EXPECT_TRUE(holdsLines(lines, PropertyList::array({"a", "c"})));
  EXPECT_TRUE(holdsLines(lines, lines));
  EXPECT_TRUE(holdsLines(lines, PropertyList::array()));
  EXPECT_FALSE(holdsLines(lines, PropertyList::array({"b", "c"})));
  EXPECT_FALSE(holdsLines(lines, PropertyList::array({"a", "b", "a", "c", "d"})));
  EXPECT_FALSE(holdsLines(PropertyList::array(), PropertyList::array({"a"})));
}

TEST(MacroLinesTest, ALineStaysWhereItIsWhileWhatComesBehindItChanges) {
  const RememberedLine line(linesOf({pressA, pressB, releaseB}), 2);
  EXPECT_EQ(line.placeIn(linesOf({pressA, pressB, releaseB})), 2);
  EXPECT_EQ(line.placeIn(linesOf({pressA, pressB})), 2);
  EXPECT_EQ(line.placeIn(linesOf({pressA, pressB, releaseA, releaseA})), 2);
}

TEST(MacroLinesTest, ALineMovesWithWhatComesBehindIt) {
  const PropertyList lines = linesOf({pressA, pressB, releaseB, releaseA});
  EXPECT_EQ(RememberedLine(lines, 4).placeIn(linesOf({pressB, releaseB, releaseA})), 2);
  EXPECT_EQ(RememberedLine(lines, 5).placeIn(linesOf({pressB, releaseB, releaseA})), 3);
  EXPECT_EQ(RememberedLine(lines, 6).placeIn(linesOf({pressC, pressA, pressB, releaseB, releaseA})), 8);
}

TEST(MacroLinesTest, ALineThatIsGoneOrAnotherOneIsNotFound) {
  const PropertyList lines = linesOf({pressA, pressB, releaseB});
  EXPECT_EQ(RememberedLine(lines, 2).placeIn(linesOf({pressA, pressC, releaseB})), std::nullopt);
  EXPECT_EQ(RememberedLine(lines, 2).placeIn(PropertyList::array()), std::nullopt);
  EXPECT_EQ(RememberedLine(lines, 4).placeIn(linesOf({pressA, pressB})), std::nullopt);
  EXPECT_EQ(RememberedLine(lines, 5).placeIn(lines), std::nullopt);
  EXPECT_EQ(RememberedLine(lines, -1).placeIn(lines), std::nullopt);
  // Between changes on both sides it cannot be told from another.
  EXPECT_EQ(RememberedLine(lines, 2).placeIn(linesOf({pressC, pressB, pressC})), std::nullopt);
}

TEST(MacroLinesTest, AnEventIsNoDelay) {
  const RememberedLine line(PropertyList::array({"x", "y", "x"}), 2);
  EXPECT_EQ(line.placeIn(PropertyList::array({"y", "x"})), std::nullopt);
}

}  // namespace
}  // namespace vorn::test
