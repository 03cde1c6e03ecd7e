#include "core-engine/history/SettingsEdits.h"

#include <gtest/gtest.h>

#include <random>

#include "core-engine/TestBundle.h"
#include "core-engine/history/SettingsComparison.h"
#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/MacroRules.h"
#include "core-engine/rules/ProfileRules.h"
#include "core-engine/rules/SensitivityRules.h"
#include "support/StandardBundle.h"

namespace vorn::engine {

// For the messages of failed tests.
void PrintTo(const Edit& edit, std::ostream* stream) {
  *stream << edit.place.description() << (edit.isSplice ? " splice " : " ") << edit.before.description() << " -> "
          << edit.after.description();
}

namespace test {
namespace {

// Stands in what an edit keeps for what follows from other values.
constexpr const char* derived = "derived from other values";

PropertyList place(std::initializer_list<PropertyList> steps) {
  return PropertyList::array(steps);
}

PropertyList named(std::initializer_list<const char*> names, std::int32_t active = 0) {
  std::vector<PropertyList> records;
  for (const char* name : names) records.push_back(profile(name));
  return bundleOf(std::move(records), active);
}

PropertyList names(const PropertyList& bundle) {
  std::vector<PropertyList> result;
  for (const PropertyList& each : bundle["Profiles"].elements()) result.push_back(each["ProfileName"]);
  return PropertyList::array(std::move(result));
}

PropertyList activeIn(const PropertyList& bundle) {
  return bundle["DeviceSettings"]["ActiveProfile"];
}

// The bundle after settings for one profile, by the rules of the engine.
PropertyList updated(const PropertyList& bundle, std::int32_t profileID, const PropertyList& settings) {
  return withUpdatedProfile(bundle, profileID, settings).bundle.value();
}

PropertyList keysOf(std::string_view identifier, const PropertyList& assignment) {
  return PropertyList::dictionary({{"Keys", PropertyList::dictionary({{identifier, assignment}})}});
}

void expectBothWays(const PropertyList& before, const PropertyList& after) {
  const Edits edits = editsBetween(before, after);
  const EditedBundle back = withEditsTakenBack(after, edits);
  EXPECT_EQ(back.bundle, before);
  EXPECT_EQ(back.conflicts, Edits());
  const EditedBundle again = withEditsMadeAgain(before, edits);
  EXPECT_EQ(again.bundle, after);
  EXPECT_EQ(again.conflicts, Edits());
}

TEST(SettingsEditsTest, EqualBundlesAreNoEdits) {
  EXPECT_EQ(editsBetween(standardBundle(), standardBundle()), Edits());
}

TEST(SettingsEditsTest, AnAssignmentIsOneEditInItsKeymapAndNoneInTheGroupsThatRepeatIt) {
  const PropertyList before = bundle();
  const PropertyList after = updated(before, 0, keysOf("43", assignment(10, 2)));

  const Edits expected = {{place({"Profiles", 0, "Keymap", 0, "Keys", "43", "command"}), 45, 10},
                          {place({"Profiles", 0, "Keymap", 0, "Keys", "43", "param1"}), 43, 2}};
  EXPECT_EQ(editsBetween(before, after), expected);
  expectBothWays(before, after);
}

TEST(SettingsEditsTest, ADeletedProfileIsTheOnlyRecordThatIsKept) {
  const PropertyList before = named({"a", "b", "c"}, 2);
  const PropertyList after = withoutProfile(before, 1).bundle.value();

  const PropertyList gone = profile("b").with("Keys", derived).with("Buttons", derived);
  const Edits expected = {{place({"DeviceSettings", "ActiveProfile"}), 2, 1},
                          {place({"Profiles", 1}), PropertyList::array({gone}), PropertyList::array(), true}};
  EXPECT_EQ(editsBetween(before, after), expected);
  expectBothWays(before, after);
}

TEST(SettingsEditsTest, RecordsAreFollowedByTheirNameWhenOthersGoAndComeAndChangeBetweenThem) {
  const PropertyList before = named({"a", "b", "c", "d"});
  const PropertyList after = updated(named({"x", "a", "c", "y", "d"}), 2, keysOf("43", assignment(3)));

  const Edits expected = {
      {place({"Profiles", 2, "Keymap", 0, "Keys", "43", "command"}), 45, 3},
      {place({"Profiles", 2, "Keymap", 0, "Keys", "43", "param1"}), 43, 0},
      {place({"Profiles", 3}), PropertyList::array(),
       PropertyList::array({profile("y").with("Keys", derived).with("Buttons", derived)}), true},
      {place({"Profiles", 1}), PropertyList::array({profile("b").with("Keys", derived).with("Buttons", derived)}),
       PropertyList::array(), true},
      {place({"Profiles", 0}), PropertyList::array(),
       PropertyList::array({profile("x").with("Keys", derived).with("Buttons", derived)}), true},
      {place({"DeviceSettings", "ActiveProfile"}), 0, 0}};
  EXPECT_EQ(editsBetween(before, after), expected);
  expectBothWays(before, after);
}

TEST(SettingsEditsTest, ADeletedMacroTakesNoOtherMacroAlong) {
  const PropertyList before = largeBundle();
  const PropertyList after = withoutMacro(before, 3).value;

  const Edits edits = editsBetween(before, after);
  ASSERT_EQ(edits.size(), 1U);
  EXPECT_EQ(edits[0].place, place({"Macros", 3}));
  EXPECT_EQ(edits[0].before, PropertyList::array({before["Macros"].at(3).with("macroID", derived)}));
  EXPECT_EQ(edits[0].after, PropertyList::array());
  expectBothWays(before, after);
}

TEST(SettingsEditsTest, ARecordInTheNewOrderOfProfilesMovesAlone) {
  const PropertyList before = named({"a", "b", "c"});
  const PropertyList after = named({"b", "c", "a"});

  const PropertyList moved = PropertyList::array({profile("a").with("Keys", derived).with("Buttons", derived)});
  const Edits expected = {{place({"Profiles", 3}), PropertyList::array(), moved, true},
                          {place({"Profiles", 0}), moved, PropertyList::array(), true},
                          {place({"DeviceSettings", "ActiveProfile"}), 0, 0}};
  EXPECT_EQ(editsBetween(before, after), expected);
  expectBothWays(before, after);
}

TEST(SettingsEditsTest, ManyEventsAreKeptWholeAndComeBack) {
  const PropertyList before = bundleWithMacros(3);
  PropertyList many = PropertyList::array();
  for (int each = 0; each < 300; ++each) many = many.appending(macroEvent(each % 2, each, 7, 4 + each % 20));
  const PropertyList after = withRecordedEvents(before, 1, many, false).value;
  EXPECT_EQ(editsBetween(before, after).size(), 1U);
  expectBothWays(before, after);
}

TEST(SettingsEditsTest, GroupsThatAreNotThoseOfTheKeymapInForceComeBackAsTheyWere) {
  const PropertyList odd = profile("odd").with("Keys", factoryGroup(1).with("43", assignment(3)));
  const PropertyList before = bundleOf({odd});
  expectBothWays(before, updated(before, 0, keysOf("4", assignment(18))));
}

// --- What others change meanwhile

TEST(SettingsEditsTest, AnAssignmentIsTakenBackInItsKeymapAfterTheMouseWentToAnotherOne) {
  const PropertyList before = bundle();
  const PropertyList after = updated(before, 0, keysOf("43", assignment(10, 2)));
  const PropertyList later = updated(after, 0, PropertyList::dictionary({{"KeymapID", 5}}));

  const EditedBundle back = withEditsTakenBack(later, editsBetween(before, after));
  EXPECT_EQ(back.bundle, updated(before, 0, PropertyList::dictionary({{"KeymapID", 5}})));
  EXPECT_EQ(back.conflicts, Edits());
}

TEST(SettingsEditsTest, AValueThatWasChangedSinceStaysAndIsTold) {
  const PropertyList before = bundle();
  const PropertyList after = updated(before, 0, PropertyList::dictionary({{"DPIX", 1600}, {"PollingRate", 500}}));
  const PropertyList later = updated(after, 0, PropertyList::dictionary({{"DPIX", 400}}));

  const EditedBundle back = withEditsTakenBack(later, editsBetween(before, after));
  EXPECT_EQ(back.bundle, updated(before, 0, PropertyList::dictionary({{"DPIX", 400}})));
  const Edits conflicts = {{place({"Profiles", 0, "DPIX"}), 800, 1600}};
  EXPECT_EQ(back.conflicts, conflicts);
}

TEST(SettingsEditsTest, CountsAValueOnceThatIsInTheProfileAndInTheDeviceSettings) {
  const PropertyList before = vorn::test::standardBundle();
  const PropertyList rate = PropertyList::dictionary({{"PollingRate", 125}});
  const PropertyList one = updated(before, 0, rate);
  EXPECT_EQ(editsBetween(before, one).size(), 2U);
  EXPECT_EQ(valueCount(editsBetween(before, one)), 1U);
  EXPECT_EQ(valueCount(editsBetween(before, updated(one, 1, rate))), 2U);
  const PropertyList brightness = PropertyList::dictionary({{"BrightnessNormal", 7}, {"PollingRate", 125}});
  EXPECT_EQ(valueCount(editsBetween(before, updated(before, 0, brightness))), 2U);
  EXPECT_EQ(valueCount({}), 0U);
}

TEST(SettingsEditsTest, CountsProfilesThatComeAndGoTogetherOnce) {
  const PropertyList before = named({"a", "b", "c", "d"});
  const Edits moved = editsBetween(before, named({"d", "a", "b", "c"}, 1));
  EXPECT_EQ(moved.size(), 3U);
  EXPECT_EQ(valueCount(moved), 1U);
  EXPECT_EQ(valueCount(editsBetween(before, named({"a", "b", "c", "d"}, 2))), 1U);
}

TEST(SettingsEditsTest, AnAddedProfileInWhichTheMouseWasInPlayIsTakenOutWhole) {
  const PropertyList before = named({"a"});
  const PropertyList added = withAddedProfile(before, profile("b"), profile("factory")).bundle.value();
  PropertyList played = updated(added, 1, PropertyList::dictionary({{"KeymapID", 3}, {"DPIX", 3200}}));
  played = withActiveProfile(played, 1).bundle.value();

  const EditedBundle back = withEditsTakenBack(played, editsBetween(before, added));
  EXPECT_EQ(back.bundle, before);
  EXPECT_EQ(back.conflicts, Edits());
}

// All that the mouse itself puts into a profile.
std::vector<PropertyList> changesOfTheMouse(const PropertyList& profile) {
  return {stageStep(profile, 1), dpiStep(profile, 100), slowestSensitivity(profile),
          PropertyList::dictionary({{"KeymapID", 3}})};
}

// Profiles in which the mouse can change all that it ever changes.
PropertyList playable(std::initializer_list<const char*> names) {
  const PropertyList stages = PropertyList::array({stage(800, 800), stage(400, 900, true)});
  std::vector<PropertyList> records;
  for (const char* name : names) {
    records.push_back(profile(name).merging(PropertyList::dictionary(
        {{"Stages", stages}, {"StageValue", 0}, {"DPIX", 800}, {"DPIY", 800}, {"IndependentXYOn", 0}})));
  }
  return bundleOf(std::move(records));
}

TEST(SettingsEditsTest, NothingThatTheMouseSwitchesKeepsProfilesFromComingAndGoing) {
  const PropertyList before = playable({"a", "b", "c"});
  const PropertyList moved = playable({"b", "c", "a"});
  const PropertyList added = playable({"a", "b", "c", "d"});
  for (const PropertyList& settings : changesOfTheMouse(before["Profiles"].at(0))) {
    SCOPED_TRACE(settings.description());
    EditedBundle back = withEditsTakenBack(updated(moved, 2, settings), editsBetween(before, moved));
    EXPECT_EQ(back.bundle, updated(before, 0, settings));
    EXPECT_EQ(back.conflicts, Edits());
    EXPECT_EQ(back.profilePlaces, (std::vector<std::int64_t>{1, 2, 0}));
    back = withEditsTakenBack(updated(added, 3, settings), editsBetween(before, added));
    EXPECT_EQ(back.bundle, before);
    EXPECT_EQ(back.conflicts, Edits());
  }
}

TEST(SettingsEditsTest, AMovedProfileStaysActiveWhereTheMouseWentToItSince) {
  const PropertyList before = named({"a", "b", "c"}, 1);
  const PropertyList after = named({"b", "c", "a"}, 0);
  const PropertyList later = withActiveProfile(after, 2).bundle.value();
  EXPECT_EQ(withEditsTakenBack(later, editsBetween(before, after)).bundle, named({"a", "b", "c"}, 0));
}

TEST(SettingsEditsTest, RecordsOfOneArrayComeAndGoTogetherOrNotAtAll) {
  const PropertyList before = named({"a", "b", "c"}, 1);
  const PropertyList after = named({"b", "c", "a"});
  const PropertyList later = updated(after, 2, PropertyList::dictionary({{"ProfileName", "z"}}));
  const Edits edits = editsBetween(before, after);
  ASSERT_EQ(edits.size(), 3U);

  const EditedBundle back = withEditsTakenBack(later, edits);
  EXPECT_EQ(back.bundle, later);
  EXPECT_EQ(back.conflicts, Edits(edits.rbegin(), edits.rend()));
}

TEST(SettingsEditsTest, TheProfileThatTheMouseWentToStaysActiveWhenADeletedOneComesBack) {
  const PropertyList before = named({"a", "b", "c"}, 0);
  const PropertyList deleted = withoutProfile(before, 0).bundle.value();
  const PropertyList later = withActiveProfile(deleted, 1).bundle.value();

  const EditedBundle back = withEditsTakenBack(later, editsBetween(before, deleted));
  EXPECT_EQ(names(back.bundle), names(before));
  EXPECT_EQ(activeIn(back.bundle), PropertyList(2));
  EXPECT_EQ(back.conflicts, Edits());
}

TEST(SettingsEditsTest, ASwitchIsNotTakenBackAfterTheMouseWentElsewhere) {
  const PropertyList before = named({"a", "b", "c"}, 0);
  const PropertyList after = withActiveProfile(before, 1).bundle.value();
  const PropertyList later = withActiveProfile(after, 2).bundle.value();

  const Edits edits = editsBetween(before, after);
  const EditedBundle back = withEditsTakenBack(later, edits);
  EXPECT_EQ(back.bundle, later);
  EXPECT_EQ(back.conflicts, edits);
}

TEST(SettingsEditsTest, EditsOfAnotherBundleChangeNothingAndHarmNothing) {
  const PropertyList before = largeBundle();
  const PropertyList after = withoutMacro(withoutProfile(before, 2).bundle.value(), 700).value;
  const Edits edits = editsBetween(before, after);
  for (const PropertyList& other : {PropertyList(), PropertyList::dictionary(), PropertyList::array({1, 2})}) {
    // The active profile, which is the same before and after, is none.
    EXPECT_EQ(withEditsMadeAgain(other, edits).conflicts.size(), edits.size() - 1);
  }
  const EditedBundle small = withEditsMadeAgain(bundle(), edits);
  EXPECT_EQ(small.bundle["Profiles"].size(), 1U);
}

// --- Anything

// Changes by the rules that the requests of clients go through.
class AnyChange {
 public:
  explicit AnyChange(std::uint32_t seed) : mRandom(seed) {}

  PropertyList of(const PropertyList& bundle) {
    const std::int64_t profileID = below(bundle["Profiles"].size());
    const std::int64_t macroID = below(bundle["Macros"].size());
    switch (below(10)) {
      case 0:
        return orSame(bundle, withAddedProfile(bundle, profile("new " + std::to_string(below(1'000))), {}));
      case 1:
        return orSame(bundle, withoutProfile(bundle, profileID));
      case 2:
        return orSame(bundle, withActiveProfile(bundle, profileID));
      case 3:
        return orSame(bundle, withUpdatedProfile(bundle, profileID, keysOf("43", assignment(10, number()))));
      case 4:
        return orSame(bundle,
                      withUpdatedProfile(bundle, profileID, PropertyList::dictionary({{"KeymapID", below(8)}})));
      case 5:
        return orSame(bundle, withUpdatedProfile(
                                  bundle, profileID,
                                  PropertyList::dictionary(
                                      {{"DPIX", 100 * number()}, {"ProfileName", "renamed"}, {"PollingRate", 125}})));
      case 6:
        return orSame(bundle, withReplacedProfiles(bundle, shuffled(bundle["Profiles"]), profile("factory")));
      case 7:
        return orSame(bundle, withAddedMacro(bundle, PropertyList::dictionary({{"MacroName", "m"}})));
      case 8:
        return orSame(bundle, withoutMacro(bundle, macroID));
      default:
        return orSame(bundle, withoutRow(bundle, macroID, 0));
    }
  }

 private:
  static PropertyList orSame(const PropertyList& bundle, const ProfileChange& change) {
    return change.bundle.value_or(bundle);
  }
  static PropertyList orSame(const PropertyList& bundle, const MacroResult& result) {
    return result.value.isNone() ? bundle : result.value;
  }
  std::int64_t below(std::size_t count) { return count == 0 ? 0 : static_cast<std::int64_t>(mRandom() % count); }
  std::int32_t number() { return static_cast<std::int32_t>(below(60)); }
  PropertyList shuffled(const PropertyList& array) {
    std::vector<PropertyList> elements(array.elements().begin(), array.elements().end());
    std::shuffle(elements.begin(), elements.end(), mRandom);
    return PropertyList::array(std::move(elements));
  }

  std::mt19937 mRandom;
};

TEST(SettingsEditsTest, AnyChangesTakenBackInTheirOrderGiveTheFirstBundleAndMadeAgainTheLast) {
  for (std::uint32_t seed = 0; seed < 10; ++seed) {
    AnyChange change(seed);
    const PropertyList first = bundleWithMacros(6);
    std::vector<Edits> history;
    PropertyList last = first;
    for (int each = 0; each < 60; ++each) {
      const PropertyList next = change.of(last);
      history.push_back(editsBetween(last, next));
      last = next;
    }
    PropertyList now = last;
    for (auto edits = history.rbegin(); edits != history.rend(); ++edits) {
      const EditedBundle back = withEditsTakenBack(now, *edits);
      EXPECT_EQ(back.conflicts, Edits());
      EXPECT_TRUE(isCompleteBundle(back.bundle));
      now = back.bundle;
    }
    EXPECT_EQ(now, first) << "seed " << seed;
    for (const Edits& edits : history) now = withEditsMadeAgain(now, edits).bundle;
    EXPECT_EQ(now, last) << "seed " << seed;
  }
}

}  // namespace
}  // namespace test
}  // namespace vorn::engine
