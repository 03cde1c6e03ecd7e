#include "model/MacroEdits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>

#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"

namespace vorn::test {
namespace {

// A list written down: "+a20 -a30" presses A after 20 ms and lets go of it after 30. Capital letters are mouse buttons.
MacroEventList listOf(const std::string& text) {
  MacroEventList events;
  std::size_t at = 0;
  while (at < text.size()) {
    const bool isPress = text[at] == '+';
    const char name = text[at + 1];
    const std::size_t end = std::min(text.find(' ', at), text.size());
    const HidUsage usage = name >= 'a' ? HidUsage{hid::keyboardPage, static_cast<hid::Usage>(name - 'a' + 4)}
                                       : HidUsage{hid::buttonPage, static_cast<hid::Usage>(name - 'A' + 1)};
    const std::string delay = text.substr(at + 2, end - at - 2);
    events.push_back(macroEvent(isPress, delay.empty() ? 0 : std::stoi(delay), usage));
    at = end + 1;
  }
  return events;
}

std::string written(const MacroEventList& events) {
  std::string text;
  for (const PropertyList& event : events) {
    const HidUsage usage = usageOfEvent(event);
    if (!text.empty()) text += ' ';
    text += event[keys::Command].toInt() == 1 ? '+' : '-';
    text += static_cast<char>(usage.page == hid::keyboardPage ? 'a' + usage.usage - 4 : 'A' + usage.usage - 1);
    if (const int delay = event[keys::Delay].toInt(); delay != 0) text += std::to_string(delay);
  }
  return text;
}

// What an edit makes of the list, and which places it leaves chosen; "nothing" where it is none.
std::string told(const std::optional<EditedEvents>& edited) {
  if (!edited) return "nothing";
  std::string text = written(edited->events) + " |";
  for (const std::size_t place : edited->chosen) text += ' ' + std::to_string(place);
  return text;
}

TEST(MacroEditsTest, AnEventIsOneThatTheEngineTakes) {
  for (const PropertyList& event : stroke({hid::buttonPage, 2}, 999'999)) EXPECT_TRUE(isMacroEvent(event));
  EXPECT_EQ(written(stroke({hid::keyboardPage, 5}, 20)), "+b20 -b20");
}

TEST(MacroEditsTest, RowsAreEventsAndTheDelaysBeforeThem) {
  for (std::size_t event = 0; event < 300; ++event) {
    EXPECT_EQ(eventOfRow(rowOfEvent(event)), event);
    if (event > 0) {
      EXPECT_EQ(eventOfRow(rowOfEvent(event) - 1), event);
    }
  }
}

TEST(MacroEditsTest, APairIsAPressAndTheNextReleaseOfTheSameKeyOrButton) {
  using Partners = std::vector<std::optional<std::size_t>>;
  EXPECT_EQ(pairsOf(listOf("+a +b -a -b")), (Partners{2, 3, 0, 1}));
  EXPECT_EQ(pairsOf(listOf("+a +a -a -a")), (Partners{std::nullopt, 2, 1, std::nullopt}));
  // The key and the button of one number differ.
  EXPECT_EQ(pairsOf({macroEvent(true, 0, {hid::keyboardPage, 4}), macroEvent(false, 0, {hid::buttonPage, 4})}),
            (Partners{std::nullopt, std::nullopt}));
  EXPECT_EQ(withPartners(listOf("+a +b -a -b +c"), {0, 4, 17}), (Places{0, 2, 4}));
}

TEST(MacroEditsTest, WhatIsStillPressedAtTheEndIsToldInTheOrderOfThePresses) {
  EXPECT_EQ(pressedAtEnd(listOf("+a -a")), std::vector<HidUsage>());
  EXPECT_EQ(pressedAtEnd(listOf("+b +a +c -a +b -d")), (std::vector<HidUsage>{{7, 5}, {7, 6}}));
}

TEST(MacroEditsTest, RemovedEventsLeaveTheNextOneChosen) {
  const MacroEventList events = listOf("+a -a20 +b30 -b40");
  EXPECT_EQ(told(withoutEvents(events, {1, 2})), "+a -b40 | 1");
  EXPECT_EQ(told(withoutEvents(events, {2, 3})), "+a -a20 | 1");
  EXPECT_EQ(told(withoutEvents(events, {0, 1, 2, 3})), " |");
  EXPECT_EQ(told(withoutEvents(events, {})), "nothing");
  EXPECT_EQ(told(withoutEvents(events, {4, 9})), "nothing");
}

TEST(MacroEditsTest, DelaysAreSetWhereTheyAreChosen) {
  const MacroEventList events = listOf("+a -a20 +b30 -b40");
  EXPECT_EQ(told(withDelays(events, {1, 3}, 7)), "+a -a7 +b30 -b7 | 1 3");
  EXPECT_EQ(told(withDelays(events, {1}, 20)), "nothing");
}

TEST(MacroEditsTest, InsertedEventsAreChosen) {
  const MacroEventList events = listOf("+a -a20");
  EXPECT_EQ(told(withInserted(events, 0, listOf("+c5 -c5"))), "+c5 -c5 +a -a20 | 0 1");
  EXPECT_EQ(told(withInserted(events, 1, listOf("+c5"))), "+a +c5 -a20 | 1");
  EXPECT_EQ(told(withInserted(events, 99, listOf("+c5"))), "+a -a20 +c5 | 2");
  EXPECT_EQ(told(withInserted(events, 0, {})), "nothing");
}

TEST(MacroEditsTest, DuplicatesStandBehindTheLastOfTheirOriginals) {
  const MacroEventList events = listOf("+a -a20 +b30 -b40");
  EXPECT_EQ(told(withDuplicates(events, {0, 1})), "+a -a20 +a -a20 +b30 -b40 | 2 3");
  EXPECT_EQ(told(withDuplicates(events, {0, 3})), "+a -a20 +b30 -b40 +a -b40 | 4 5");
  EXPECT_EQ(told(withDuplicates(events, {7})), "nothing");
}

TEST(MacroEditsTest, AnotherKeyLeavesPressesAndDelaysAsTheyAre) {
  const MacroEventList events = listOf("+a -a20 +b30 -b40");
  EXPECT_EQ(told(withUsage(events, {0, 1}, {hid::keyboardPage, 6})), "+c -c20 +b30 -b40 | 0 1");
  EXPECT_EQ(told(withUsage(events, {2}, {hid::buttonPage, 1})), "+a -a20 +A30 -b40 | 2");
  EXPECT_EQ(told(withUsage(events, {2}, {hid::keyboardPage, 5})), "nothing");
}

TEST(MacroEditsTest, AMovedRunKeepsItsTimesAndTheTimeBesideItStays) {
  const MacroEventList events = listOf("+x +a100 -a50 -x200");
  EXPECT_EQ(told(movedUp(events, {1, 2}, true)), "+a -a50 +x100 -x200 | 0 1");
  EXPECT_EQ(told(movedDown(events, {1, 2}, true)), "+x -x100 +a200 -a50 | 2 3");
  EXPECT_EQ(told(movedUp(events, {1}, false)), "+a +x100 -a50 -x200 | 0");
  EXPECT_EQ(told(movedDown(events, {0}, false)), "+a +x100 -a50 -x200 | 1");
}

TEST(MacroEditsTest, AMoveBackPutsEverythingWhereItWas) {
  const MacroEventList events = listOf("+x +a100 -a50 -x200 +b10 -b20");
  const auto up = movedUp(events, {1, 2, 4}, false);
  EXPECT_EQ(told(up), "+a -a50 +x100 +b200 -x10 -b20 | 0 1 3");
  EXPECT_EQ(movedDown(up->events, up->chosen, false), (EditedEvents{events, {1, 2, 4}}));
}

TEST(MacroEditsTest, NothingMovesBeyondTheEnds) {
  const MacroEventList events = listOf("+a -a20 +b30 -b40");
  EXPECT_EQ(told(movedUp(events, {0, 2}, false)), "nothing");
  EXPECT_EQ(told(movedDown(events, {1, 3}, false)), "nothing");
  EXPECT_EQ(told(movedUp(events, {}, true)), "nothing");
  EXPECT_EQ(told(movedDown({}, {0}, true)), "nothing");
}

TEST(MacroEditsTest, AMovePassesAPairOfTheSameKeyWhole) {
  const MacroEventList events = listOf("+a1 -a2 +a3 -a4 +b5");
  EXPECT_EQ(told(movedUp(events, {2, 3}, true)), "+a1 -a4 +a2 -a3 +b5 | 0 1");
  EXPECT_EQ(told(movedUp(events, {2, 3}, false)), "+a1 +a2 -a4 -a3 +b5 | 1 2");
  EXPECT_EQ(told(movedDown(events, {0, 1}, true)), "+a1 -a3 +a4 -a2 +b5 | 2 3");
}

// What a person sees as one: a press and its release.
std::size_t pairCount(const MacroEventList& events) {
  const auto partners = pairsOf(events);
  return static_cast<std::size_t>(std::ranges::count_if(partners, [](const auto& each) { return each.has_value(); })) /
         2;
}

std::int64_t wholeTime(const MacroEventList& events) {
  std::int64_t time = 0;
  for (const PropertyList& event : events) time += event[keys::Delay].toInt64();
  return time;
}

// How often each key is pressed and let go.
std::map<std::string, int> eventCounts(const MacroEventList& events) {
  std::map<std::string, int> counts;
  for (const PropertyList& event : events) ++counts[written({event.with(keys::Delay, 0)})];
  return counts;
}

// Edits of pairs, at random, of macros in which every press has its release: none is ever left without the other.
TEST(MacroEditsTest, EditsOfWholePairsNeverPartThem) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t limit) {
      return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    MacroEventList events = listOf("+a1 +b2 -a3 +c4 -c5 -b6 +a7 -a8");
    for (int step = 0; step < 150; ++step) {
      Places chosen;
      for (std::size_t count = 0; count < 1 + below(3) && !events.empty(); ++count) chosen.insert(below(events.size()));
      chosen = withPartners(events, chosen);
      const std::size_t pairs = pairCount(events);
      std::optional<EditedEvents> edited;
      switch (below(5)) {
        case 0:
          edited = events.size() > 4 ? withoutEvents(events, chosen) : std::nullopt;
          break;
        case 1:
        case 2: {
          edited = below(2) == 0 ? movedUp(events, chosen, true) : movedDown(events, chosen, true);
          if (!edited) break;
          ASSERT_EQ(pairCount(edited->events), pairs) << "seed " << seed << ", step " << step;
          ASSERT_EQ(wholeTime(edited->events), wholeTime(events));
          ASSERT_EQ(eventCounts(edited->events), eventCounts(events));
          ASSERT_EQ(withPartners(edited->events, edited->chosen), edited->chosen);
          break;
        }
        case 3:
          edited = events.size() < 40 ? withInserted(events, events.size(), stroke({7, 4}, 9)) : std::nullopt;
          break;
        default:
          edited = withDelays(events, chosen, static_cast<std::int64_t>(below(100)));
      }
      if (edited) events = edited->events;
      ASSERT_EQ(2 * pairCount(events), events.size())
          << "seed " << seed << ", step " << step << ": " << written(events);
      ASSERT_TRUE(pressedAtEnd(events).empty());
    }
  }
}

}  // namespace
}  // namespace vorn::test
