#include "model/MacroEvents.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <utility>
#include <vector>

namespace vorn {
namespace {

using Events = std::vector<PropertyList>;

PropertyList macroEvent(int command, int delay, int page, int argument) {
  return PropertyList::dictionary({{"command", command}, {"delay", delay}, {"page", page}, {"argument", argument}});
}

PropertyList keyPress(int usage) {
  return macroEvent(1, 0, 7, usage);
}

PropertyList keyRelease(int usage) {
  return macroEvent(0, 20, 7, usage);
}

Events threeEvents() {
  return {keyPress(4), keyRelease(4), macroEvent(1, 300, 9, 1)};
}

PropertyList macro(Events events) {
  const PropertyList sequence = PropertyList::dictionary({{"events", PropertyList::array(std::move(events))}});
  return PropertyList::dictionary({{"MacroName", "m"}, {"sequence", sequence}});
}

TEST(MacroEventsTest, ArePressesAndReleasesOfKeysAndButtons) {
  for (const auto& [page, first, last] : {std::tuple(7, 4, 231), std::tuple(9, 1, 9)}) {
    for (const int command : {0, 1}) {
      EXPECT_TRUE(isMacroEvent(macroEvent(command, 0, page, first)));
      EXPECT_TRUE(isMacroEvent(macroEvent(command, 999'999, page, last)));
      EXPECT_FALSE(isMacroEvent(macroEvent(command, 0, page, first - 1)));
      EXPECT_FALSE(isMacroEvent(macroEvent(command, 0, page, last + 1)));
    }
  }
  EXPECT_TRUE(isMacroEvent(keyPress(4).with("comment", "aim")));
}

TEST(MacroEventsTest, AreNothingElse) {
  const std::vector<PropertyList> others = {
      macroEvent(2, 0, 7, 4),
      macroEvent(-1, 0, 7, 4),
      macroEvent(257, 0, 7, 4),
      macroEvent(1, -1, 7, 4),
      macroEvent(1, 1'000'000, 7, 4),
      macroEvent(1, 0, 8, 4),
      macroEvent(1, 0, 263, 4),
      keyPress(4).with("command", true),
      keyPress(4).with("delay", 1.0),
      keyPress(4).with("argument", "4"),
      keyPress(4).with("argument", std::numeric_limits<std::uint64_t>::max()),
      keyPress(4).with("argument", std::int64_t{1} << 32 | 4),
      keyPress(4).without("command"),
      keyPress(4).without("delay"),
      keyPress(4).without("page"),
      keyPress(4).without("argument"),
      PropertyList::dictionary(),
      PropertyList::array({1, 0, 7, 4}),
      PropertyList("press"),
      PropertyList(),
  };
  for (const PropertyList& other : others) EXPECT_FALSE(isMacroEvent(other)) << other.description();
}

TEST(MacroEventsTest, AreReadFromWhateverStandsInARecord) {
  EXPECT_EQ(macroEvents(macro(threeEvents())), PropertyList::array(threeEvents()));
  EXPECT_EQ(macroEvents(macro({keyPress(4), 7, macroEvent(2, 0, 7, 4), keyRelease(4)})),
            PropertyList::array({keyPress(4), keyRelease(4)}));
  for (const PropertyList& sequence :
       {PropertyList(), PropertyList("x"), PropertyList::dictionary(), PropertyList::array({keyPress(4)}),
        PropertyList::dictionary({{"events", "x"}}), PropertyList::dictionary({{"events", keyPress(4)}})}) {
    EXPECT_EQ(macroEvents(macro({}).with("sequence", sequence)), PropertyList::array()) << sequence.description();
  }
}

TEST(MacroEventsTest, WaitAtMostAThousandSeconds) {
  for (const PropertyList& delay : {PropertyList(0), PropertyList(999'999)}) EXPECT_TRUE(isMacroDelay(delay));
  for (const PropertyList& delay :
       {PropertyList(), PropertyList(-1), PropertyList(1'000'000), PropertyList(1.0), PropertyList("20"),
        PropertyList(true), PropertyList(std::numeric_limits<std::uint64_t>::max())}) {
    EXPECT_FALSE(isMacroDelay(delay)) << delay.description();
  }
}

TEST(MacroEventsTest, AReleaseBelongsToThePressOfTheSameKeyOrButton) {
  EXPECT_TRUE(isReleaseOf(keyPress(4), keyRelease(4)));
  EXPECT_TRUE(isReleaseOf(macroEvent(1, 0, 9, 1), macroEvent(0, 5, 9, 1)));
  EXPECT_FALSE(isReleaseOf(keyPress(42), keyRelease(76)));
  EXPECT_FALSE(isReleaseOf(macroEvent(1, 0, 7, 4), macroEvent(0, 0, 9, 4)));
  EXPECT_FALSE(isReleaseOf(keyPress(4), keyPress(4)));
  EXPECT_FALSE(isReleaseOf(keyRelease(4), keyRelease(4)));
  EXPECT_FALSE(isReleaseOf(keyPress(4), PropertyList()));
  EXPECT_FALSE(isReleaseOf(PropertyList(), PropertyList()));
}

}  // namespace
}  // namespace vorn
