#include "core-engine/history/ChangeDescription.h"

#include <gtest/gtest.h>

#include "core-engine/TestMacros.h"
#include "core-engine/history/SettingsComparison.h"
#include "core-engine/rules/MacroRules.h"
#include "core-engine/rules/ProfileRules.h"
#include "support/StandardBundle.h"

namespace vorn::engine::test {
namespace {

PropertyList words(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

PropertyList described(const PropertyList& before, const PropertyList& after,
                       MessageID request = MessageID::UpdateProfile) {
  const ChangeOrigin origin{ChangeOrigin::Kind::Request, ":1.1", "org.example.Tool", request};
  return descriptionOf(editsBetween(before, after), before, after, origin);
}

// What settings for the second profile are called.
PropertyList describedSettings(const PropertyList& settings) {
  const PropertyList before = vorn::test::bundleWithMacros(3);
  return described(before, withUpdatedProfile(before, 1, settings).bundle.value());
}

PropertyList keysGroup(std::initializer_list<PropertyList::Pair> assignments) {
  return words({{"Keys", PropertyList::dictionary(assignments)}});
}

TEST(ChangeDescriptionTest, OneAssignmentNamesItsControlAndWhatItDoesNow) {
  EXPECT_EQ(describedSettings(keysGroup({{"43", assignment(16, 6, 1)}})), words({{"kind", "assignment"},
                                                                                 {"profile", "Profile 2"},
                                                                                 {"keymap", 0},
                                                                                 {"control", "43"},
                                                                                 {"command", 16},
                                                                                 {"param1", "6"},
                                                                                 {"param2", "1"}}));
}

TEST(ChangeDescriptionTest, AnAssignmentToAMacroOrAProfileNamesIt) {
  EXPECT_EQ(describedSettings(keysGroup({{"43", assignment(10, 2, 1)}}))["target"], "Macro 3");
  EXPECT_EQ(describedSettings(keysGroup({{"43", assignment(17, 3, 0)}}))["target"], "Profile 4");
  EXPECT_EQ(describedSettings(keysGroup({{"43", assignment(17, 99, 0)}}))["target"], PropertyList());
}

TEST(ChangeDescriptionTest, SeveralAssignmentsAreCounted) {
  const PropertyList two = keysGroup({{"43", assignment(3)}, {"8", assignment(4)}});
  EXPECT_EQ(describedSettings(two), words({{"kind", "assignment"},
                                           {"profile", "Profile 2"},
                                           {"keymap", 0},
                                           {"controls", PropertyList::array({"43", "8"})},
                                           {"count", 2}}));
}

TEST(ChangeDescriptionTest, UpToThreeAssignmentsNameTheirControls) {
  const PropertyList three = keysGroup({{"43", assignment(3)}, {"8", assignment(4)}, {"20", assignment(3)}});
  EXPECT_EQ(describedSettings(three)["controls"], PropertyList::array({"20", "43", "8"}));
  const PropertyList four =
      keysGroup({{"43", assignment(3)}, {"8", assignment(4)}, {"20", assignment(3)}, {"21", assignment(3)}});
  EXPECT_EQ(describedSettings(four),
            words({{"kind", "assignment"}, {"profile", "Profile 2"}, {"keymap", 0}, {"count", 4}}));
}

TEST(ChangeDescriptionTest, ProfilesThatComeGoMoveAndGetAnotherName) {
  const PropertyList before = bundleOf({profile("a"), profile("b"), profile("c")});
  EXPECT_EQ(described(before, withAddedProfile(before, profile("d"), {}).bundle.value()),
            words({{"kind", "profileAdded"}, {"profile", "d"}}));
  EXPECT_EQ(described(before, withoutProfile(before, 0).bundle.value()),
            words({{"kind", "profileDeleted"}, {"profile", "a"}}));
  EXPECT_EQ(described(before, bundleOf({profile("b"), profile("c"), profile("a")})),
            words({{"kind", "profilesReordered"}}));
  EXPECT_EQ(described(before, withActiveProfile(before, 2).bundle.value()),
            words({{"kind", "profileSwitched"}, {"profile", "c"}}));
  EXPECT_EQ(described(before, withUpdatedProfile(before, 1, words({{"ProfileName", "B"}})).bundle.value()),
            words({{"kind", "profileRenamed"}, {"profile", "b"}, {"newName", "B"}}));
}

TEST(ChangeDescriptionTest, MacrosThatComeGoAndChange) {
  const PropertyList before = vorn::test::bundleWithMacros(3);
  EXPECT_EQ(described(before, withAddedMacro(before, words({{"MacroName", "new"}})).value),
            words({{"kind", "macroAdded"}, {"macro", "new"}}));
  EXPECT_EQ(described(before, withoutMacro(before, 1).value), words({{"kind", "macroDeleted"}, {"macro", "Macro 2"}}));
  EXPECT_EQ(described(before, withRenamedMacro(before, 1, "Jump").value),
            words({{"kind", "macroRenamed"}, {"macro", "Macro 2"}, {"newName", "Jump"}}));
  EXPECT_EQ(described(before, withReplacedEvent(before, 2, 0, keyPress(231)).value),
            words({{"kind", "macroEvents"}, {"macro", "Macro 3"}}));
  EXPECT_EQ(described(before, withoutRow(before, 2, 0).value),
            words({{"kind", "macroEventsRemoved"}, {"macro", "Macro 3"}, {"count", 1}}));
  EXPECT_EQ(described(before, withoutEvents(before, 2).value),
            words({{"kind", "macroEventsRemoved"}, {"macro", "Macro 3"}}));
  EXPECT_EQ(described(before, withDelay(before, 2, 3, 555).value),
            words({{"kind", "macroDelays"}, {"macro", "Macro 3"}}));
  EXPECT_EQ(described(before, withRecordedEvents(before, 2, before["Macros"].at(1)["sequence"]["events"], true).value,
                      MessageID::SaveRecordedEvents),
            words({{"kind", "macroRecorded"}, {"macro", "Macro 3"}}));
}

TEST(ChangeDescriptionTest, EventsAreRemovedWhereNothingElseBecomesOfTheOthersButTheirDelays) {
  const PropertyList before =
      bundleOf({profile("a")})
          .with("Macros",
                PropertyList::array({macro("Jump", 0, {keyPress(4), keyRelease(4, 50), keyPress(5), keyRelease(5)})}));
  const auto replaced = [&](std::vector<PropertyList> events) {
    const PropertyList contents =
        words({{"macroID", 0}, {"MacroName", "Jump"}, {"sequence", sequenceOf(std::move(events))}});
    return described(before, withReplacedSequence(before, contents).value, MessageID::ReplaceMacroSequence);
  };
  const PropertyList removed = words({{"kind", "macroEventsRemoved"}, {"macro", "Jump"}});
  const PropertyList changed = words({{"kind", "macroEvents"}, {"macro", "Jump"}});
  EXPECT_EQ(replaced({keyPress(4), keyRelease(5)}), removed.with("count", 2));
  EXPECT_EQ(replaced({keyRelease(4, 7), keyRelease(5, 9)}), removed.with("count", 2));
  EXPECT_EQ(replaced({}), removed);
  EXPECT_EQ(replaced({keyPress(4), keyRelease(6)}), changed);
  EXPECT_EQ(replaced({keyPress(5), keyRelease(4, 50)}), changed);
  EXPECT_EQ(replaced({keyPress(5), keyRelease(5), keyPress(4), keyRelease(4, 50)}), changed);
}

TEST(ChangeDescriptionTest, ADeletedMacroIsItsOwnNewsWhateverAssignmentsItTakesAlong) {
  const PropertyList before = vorn::test::bundleWithMacros(3);
  const PropertyList deleted = withoutMacro(before, 1).value;
  const PropertyList after = withUpdatedProfile(deleted, 2, keysGroup({{"43", assignment(45, 43)}})).bundle.value();
  EXPECT_EQ(described(before, after), words({{"kind", "macroDeleted"}, {"macro", "Macro 2"}}));
}

TEST(ChangeDescriptionTest, ValuesOfAProfileAreNamedByWhatTheySet) {
  const std::pair<const char*, PropertyList> values[] = {
      {"sensitivity", words({{"DPIX", 1300}})},
      {"stages", words({{"StageValue", 2}})},
      {"stages", words({{"StageValue", 2}, {"DPIX", 1300}, {"DPIY", 1300}})},
      {"pollingRate", words({{"PollingRate", 125}})},
      {"acceleration", words({{"Acceleration", 9}, {"AccelerationOn", 1}})},
      {"light", words({{"ScrollLED", 0}, {"BrightnessKBNormal", 1}})},
      {"power", words({{"PowerSaver", 9}})},
      {"application", words({{"AppInfo", words({{"application", "Editor"}})}})},
      {"messages", words({{"SensitivityOSDOn", 0}})},
  };
  for (const auto& [kind, settings] : values) {
    EXPECT_EQ(describedSettings(settings), words({{"kind", kind}, {"profile", "Profile 2"}})) << kind;
  }
}

TEST(ChangeDescriptionTest, AKeymapThatAPersonChoosesIsNamed) {
  EXPECT_EQ(describedSettings(words({{"KeymapID", 5}})),
            words({{"kind", "keymapInForce"}, {"profile", "Profile 2"}, {"keymap", 5}}));
}

TEST(ChangeDescriptionTest, SeveralKindsOfSettingsAtOnceAreAChangeOfTheProfile) {
  EXPECT_EQ(describedSettings(words({{"PollingRate", 125}, {"DPIX", 1300}})),
            words({{"kind", "profileChanged"}, {"profile", "Profile 2"}}));
}

TEST(ChangeDescriptionTest, WhatOnlyAProfileHasIsAChangeOfTheSettingsBesideTheProfiles) {
  const PropertyList before = vorn::test::bundleWithMacros(3);
  for (const char* key : {"ProfileName", "KeymapID", "Keymap", "Keys", "Buttons"}) {
    const PropertyList after = before.with("DeviceSettings", before["DeviceSettings"].with(key, 7));
    EXPECT_EQ(described(before, after), words({{"kind", "settings"}})) << key;
  }
}

TEST(ChangeDescriptionTest, WhatNobodyKnowsIsAChangeOfTheSettings) {
  const PropertyList before = bundle();
  EXPECT_EQ(described(before, before.with("Further", 1)), words({{"kind", "settings"}}));
}

}  // namespace
}  // namespace vorn::engine::test
