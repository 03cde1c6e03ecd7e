#include "model/RecordRules.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "model/MacroEvents.h"

namespace vorn {
namespace {

using Kind = RecordFault::Kind;

const PropertyList profile = PropertyList::dictionary({{"ProfileName", "Work"},
                                                       {"Keys", PropertyList::dictionary()},
                                                       {"Buttons", PropertyList::dictionary()},
                                                       {"from another version", 1.5}});
const PropertyList press = PropertyList::dictionary({{"command", 1}, {"delay", 0}, {"page", 7}, {"argument", 4}});

PropertyList macro(std::vector<PropertyList> events) {
  const PropertyList sequence = PropertyList::dictionary({{"events", PropertyList::array(std::move(events))}});
  return PropertyList::dictionary({{"MacroName", "Jump"}, {"delay", 20}, {"sequence", sequence}, {"further", 1}});
}

void expectFault(const PropertyList& record, RecordKind recordKind, Kind kind, const std::string& reason,
                 const std::string& member = "", std::size_t event = 0) {
  const auto fault = faultOfRecord(record, recordKind);
  ASSERT_TRUE(fault) << record.description();
  EXPECT_EQ(fault->kind, kind) << reason;
  EXPECT_EQ(fault->reason, reason);
  EXPECT_EQ(fault->member, member) << reason;
  EXPECT_EQ(fault->event, event) << reason;
}

TEST(RecordRulesTest, TakeRecordsThatHaveWhatTheirKindNeedsAndMore) {
  EXPECT_FALSE(faultOfRecord(profile, RecordKind::Profile));
  EXPECT_FALSE(faultOfRecord(macro({press, press.with("comment", "aim")}), RecordKind::Macro));
  EXPECT_FALSE(faultOfRecord(PropertyList::dictionary({{"MacroName", "Jump"}}), RecordKind::Macro));
  EXPECT_FALSE(faultOfRecord(macro({}).with("sequence", PropertyList::dictionary()), RecordKind::Macro));
}

TEST(RecordRulesTest, LeaveTheValuesOfAProfileToTheEngine) {
  EXPECT_FALSE(faultOfRecord(profile.with("DPIX", -1).with("Keymap", "x"), RecordKind::Profile));
}

TEST(RecordRulesTest, RefuseWhatIsNoDictionary) {
  for (const PropertyList& record : {PropertyList(), PropertyList(3), PropertyList::array({profile})}) {
    expectFault(record, RecordKind::Profile, Kind::NoDictionary, "there is no profile record");
    expectFault(record, RecordKind::Macro, Kind::NoDictionary, "there is no macro record");
  }
}

TEST(RecordRulesTest, RefuseARecordWithoutAName) {
  for (const PropertyList& name : {PropertyList(""), PropertyList(7), PropertyList::array({"x"})}) {
    expectFault(profile.with("ProfileName", name), RecordKind::Profile, Kind::NoName, "the profile has no name",
                "ProfileName");
    expectFault(macro({}).with("MacroName", name), RecordKind::Macro, Kind::NoName, "the macro has no name",
                "MacroName");
  }
  expectFault(macro({}), RecordKind::Profile, Kind::NoName, "the profile has no name", "ProfileName");
  expectFault(profile, RecordKind::Macro, Kind::NoName, "the macro has no name", "MacroName");
}

TEST(RecordRulesTest, RefuseAProfileWithoutItsGroups) {
  for (const std::string group : {"Keys", "Buttons"}) {
    expectFault(profile.without(group), RecordKind::Profile, Kind::Missing, "the profile has no \"" + group + "\"",
                group);
    for (const PropertyList& value : {PropertyList(1), PropertyList(""), PropertyList::array()}) {
      expectFault(profile.with(group, value), RecordKind::Profile, Kind::Unusable,
                  "its \"" + group + "\" is no dictionary", group);
    }
  }
}

TEST(RecordRulesTest, RefuseMembersOfAMacroThatCannotStandThere) {
  for (const PropertyList& delay : {PropertyList(-1), PropertyList(1'000'000), PropertyList("20")}) {
    expectFault(macro({}).with("delay", delay), RecordKind::Macro, Kind::Unusable, "its delay is out of range",
                "delay");
  }
  expectFault(macro({}).with("sequence", PropertyList::array()), RecordKind::Macro, Kind::Unusable,
              "its sequence is no dictionary", "sequence");
  expectFault(macro({}).with("sequence", PropertyList::dictionary({{"events", 1}})), RecordKind::Macro, Kind::Unusable,
              "its events are no array", "events");
}

TEST(RecordRulesTest, TellWhichEventOfAMacroIsNone) {
  expectFault(macro({press.with("argument", 3)}), RecordKind::Macro, Kind::NoEvent, "its event 1 is none", "events", 1);
  expectFault(macro({press, press, 5, 6}), RecordKind::Macro, Kind::NoEvent, "its event 3 is none", "events", 3);
}

TEST(RecordRulesTest, BoundARecord) {
  const std::string large(1024 * 1024, 'x');
  expectFault(profile.with("comment", large), RecordKind::Profile, Kind::TooLarge, "the profile is too large");
  PropertyList deep = 1;
  for (int level = 0; level < 32; ++level) deep = PropertyList::array({deep});
  expectFault(macro({}).with("comment", deep), RecordKind::Macro, Kind::TooLarge, "the macro is too large");

  std::vector<PropertyList> events(maximumMacroEvents, press);
  EXPECT_FALSE(faultOfRecord(macro(events), RecordKind::Macro));
  events.push_back(press);
  expectFault(macro(events), RecordKind::Macro, Kind::TooManyEvents, "the macro has too many events");
}

}  // namespace
}  // namespace vorn
