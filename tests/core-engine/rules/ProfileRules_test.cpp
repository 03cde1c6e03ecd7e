#include "core-engine/rules/ProfileRules.h"

#include <gtest/gtest.h>

#include "core-engine/TestBundle.h"
#include "core-engine/rules/BundleRules.h"

namespace vorn::engine {

// For the messages of failed tests.
void PrintTo(const Complaint& complaint, std::ostream* stream) {
  *stream << complaint.reason << " (" << complaint.detail << ")";
}

namespace test {
namespace {

using Complaints = std::vector<Complaint>;

PropertyList dictionary(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

PropertyList list(std::vector<PropertyList> elements) {
  return PropertyList::array(std::move(elements));
}

PropertyList profiles(std::initializer_list<const char*> names, std::int32_t active = 0) {
  std::vector<PropertyList> records;
  for (const char* name : names) records.push_back(profile(name));
  return bundleOf(std::move(records), active);
}

PropertyList withAssignment(const PropertyList& holder, std::string_view group, std::string_view identifier,
                            const PropertyList& assignment) {
  return holder.with(group, holder[group].with(identifier, assignment));
}

// The keys with this assignment for Tab.
PropertyList keysWithTab(const PropertyList& assignment) {
  return factoryGroup(1).with("43", assignment);
}

PropertyList withKeymap(const PropertyList& record, std::int64_t position, const PropertyList& changed) {
  return record.with("Keymap", record["Keymap"].replacing(position, changed));
}

// A profile whose eight keymaps differ: Tab sends the mouse button of the keymap's number.
PropertyList profileOfDifferentKeymaps(std::int32_t inForce = 0) {
  PropertyList result = profile("mine").with("KeymapID", inForce).with("Keys", keysWithTab(assignment(inForce, 0)));
  for (std::int32_t position = 0; position < 8; ++position) {
    result = withKeymap(result, position, factoryKeymap().with("Keys", keysWithTab(assignment(position, 0))));
  }
  return result;
}

// What becomes of the profile, when nothing of the settings is refused.
PropertyList updated(const PropertyList& record, const PropertyList& settings) {
  const ProfileChange change = withUpdatedProfile(bundleOf({record}), 0, settings);
  EXPECT_EQ(change.status, ReturnStatus::Done);
  EXPECT_EQ(change.complaints, Complaints());
  if (!change.bundle) return {};
  EXPECT_TRUE(isCompleteBundle(*change.bundle));
  return (*change.bundle)["Profiles"].at(0);
}

void expectRefused(const ProfileChange& change, ReturnStatus status, const Complaint& complaint) {
  EXPECT_EQ(change.bundle, std::nullopt);
  EXPECT_EQ(change.status, status);
  EXPECT_EQ(change.complaints, Complaints{complaint});
}

void expectDone(const ProfileChange& change, const PropertyList& bundle) {
  EXPECT_EQ(change.bundle, bundle);
  EXPECT_EQ(change.status, ReturnStatus::Done);
  EXPECT_EQ(change.complaints, Complaints());
}

void expectPartlyRefused(const ProfileChange& change, const PropertyList& bundle, const Complaints& complaints) {
  EXPECT_EQ(change.bundle, bundle);
  EXPECT_EQ(change.status, ReturnStatus::PartlyRefused);
  EXPECT_EQ(change.complaints, complaints);
}

TEST(ProfileRulesAddedProfileTest, StandsAtTheEndAndIsNotYetActive) {
  expectDone(withAddedProfile(profiles({"one"}), profile("two"), {}), profiles({"one", "two"}));
  expectDone(withAddedProfile(profiles({"1", "2", "3", "4"}, 3), profile("5"), {}),
             profiles({"1", "2", "3", "4", "5"}, 3));
}

TEST(ProfileRulesAddedProfileTest, FindsNoRoomBehindTheFifth) {
  expectRefused(withAddedProfile(profiles({"1", "2", "3", "4", "5"}), profile("6"), {}), ReturnStatus::OutOfRange,
                {"there are five profiles", ""});
}

TEST(ProfileRulesAddedProfileTest, TakesWhatItLacksFromTheFactoryProfile) {
  const PropertyList factory = profile("factory").with("DPIX", 1600).with("StageValue", 1);
  expectDone(withAddedProfile(profiles({"one"}), dictionary({{"ProfileName", "new"}, {"DPIY", 300}}), factory),
             bundleOf({profile("one"), factory.with("ProfileName", "new").with("DPIY", 300)}));
}

TEST(ProfileRulesAddedProfileTest, TakesGroupsThatItLacksFromItsOwnKeymap) {
  const PropertyList whole = profileOfDifferentKeymaps(5);
  expectDone(withAddedProfile(profiles({"one"}), whole.without("Keys").without("Buttons"), profile("factory")),
             bundleOf({profile("one"), whole}));
}

TEST(ProfileRulesAddedProfileTest, StoresItsCurrentGroupsInTheKeymapInForce) {
  const PropertyList given = profileOfDifferentKeymaps(5).with("Keys", keysWithTab(assignment(16, 4)));
  expectDone(
      withAddedProfile(profiles({"one"}), given, {}),
      bundleOf({profile("one"), withKeymap(given, 5, factoryKeymap().with("Keys", keysWithTab(assignment(16, 4))))}));
}

TEST(ProfileRulesAddedProfileTest, KeepsFurtherKeysAndLeavesDeviceSettingsAlone) {
  const PropertyList given = profile("two").with("Future", list({1, 2})).with("PollingRate", 500);
  const PropertyList before =
      profiles({"one"}).with("DeviceSettings", dictionary({{"ActiveProfile", 0}, {"PollingRate", 1000}}));
  expectDone(withAddedProfile(before, given, {}), before.with("Profiles", list({profile("one"), given})));
}

TEST(ProfileRulesAddedProfileTest, TakesUnusableValuesFromTheFactoryProfile) {
  expectPartlyRefused(withAddedProfile(profiles({"one"}), profile("two").with("DPIX", "fast"), profile("factory")),
                      profiles({"one", "two"}), {{"\"DPIX\" takes a whole number from 100 to 5600 DPI", "\"fast\""}});
}

TEST(ProfileRulesAddedProfileTest, IsADictionary) {
  for (const PropertyList& given : {PropertyList(), PropertyList(5), list({profile("two")})}) {
    const ProfileChange change = withAddedProfile(profiles({"one"}), given, {});
    expectRefused(change, ReturnStatus::Malformed,
                  {"\"DeviceSettingsDictionary\" takes a dictionary", given.description(100)});
  }
}

TEST(ProfileRulesAddedProfileTest, HasALargestSize) {
  const Complaint complaint{"the record is larger than 1 MiB or has more than 32 levels", ""};
  expectRefused(withAddedProfile(profiles({"one"}), profile("two").with("Note", std::string(1024 * 1024, 'x')), {}),
                ReturnStatus::TooLarge, complaint);
  const PropertyList factory = profile("factory").with("Note", std::string(1024 * 1024 - 1000, 'x'));
  expectRefused(withAddedProfile(profiles({"one"}), dictionary({}), factory), ReturnStatus::TooLarge, complaint);
}

TEST(ProfileRulesUpdatedProfileTest, TakesTheGivenKeys) {
  const PropertyList before = profiles({"one", "two"});
  expectDone(withUpdatedProfile(before, 1, dictionary({{"DPIX", 400}, {"DPIY", 500}, {"Future", "kept"}})),
             bundleOf({profile("one"), profile("two").with("DPIX", 400).with("DPIY", 500).with("Future", "kept")}));
}

TEST(ProfileRulesUpdatedProfileTest, TakesOneAxisAlongWithTheOtherWhereTheyAreLocked) {
  const PropertyList locked =
      profile("mine").merging(dictionary({{"DPIX", 800}, {"DPIY", 800}, {"IndependentXYOn", 0}}));
  const PropertyList both = dictionary({{"DPIX", 900}, {"DPIY", 900}});
  EXPECT_EQ(updated(locked, dictionary({{"DPIX", 900}})), locked.merging(both));
  EXPECT_EQ(updated(locked, dictionary({{"DPIY", 900}})), locked.merging(both));
  const PropertyList apart = locked.with("IndependentXYOn", 1);
  EXPECT_EQ(updated(apart, dictionary({{"DPIY", 900}})), apart.with("DPIY", 900));
}

TEST(ProfileRulesUpdatedProfileTest, StaysWithoutSettings) {
  expectDone(withUpdatedProfile(profiles({"one", "two"}), 0, dictionary({})), profiles({"one", "two"}));
}

TEST(ProfileRulesUpdatedProfileTest, TakesAWholeRecordUnderANewName) {
  const PropertyList before = profileOfDifferentKeymaps(3);
  EXPECT_EQ(updated(before, before.with("ProfileName", "new")), before.with("ProfileName", "new"));
}

TEST(ProfileRulesUpdatedProfileTest, StoresAGroupInTheKeymapThatItCameWith) {
  const PropertyList before = profileOfDifferentKeymaps(3);
  const PropertyList group = keysWithTab(assignment(10, 7, 255));
  EXPECT_EQ(updated(before, dictionary({{"Keys", group}, {"KeymapID", 3}})),
            withKeymap(before.with("Keys", group), 3, factoryKeymap().with("Keys", group)));
}

TEST(ProfileRulesUpdatedProfileTest, StoresAGroupWithoutANumberInTheKeymapInForce) {
  const PropertyList before = profileOfDifferentKeymaps(3);
  const PropertyList group = factoryGroup(2).with("03", assignment(17, 1));
  EXPECT_EQ(updated(before, dictionary({{"Buttons", group}})),
            withKeymap(before.with("Buttons", group), 3,
                       factoryKeymap().with("Keys", keysWithTab(assignment(3, 0))).with("Buttons", group)));
}

TEST(ProfileRulesUpdatedProfileTest, MakesTheGroupsOfAnotherKeymapTheCurrentOnes) {
  EXPECT_EQ(updated(profileOfDifferentKeymaps(3), dictionary({{"KeymapID", 6}})), profileOfDifferentKeymaps(6));
}

TEST(ProfileRulesUpdatedProfileTest, LosesNoGroupThatOnlyTheRecordHeldWhenTheKeymapChanges) {
  const PropertyList group = keysWithTab(assignment(10, 7, 255));
  const PropertyList before = profileOfDifferentKeymaps(3).with("Keys", group);
  EXPECT_EQ(updated(before, dictionary({{"KeymapID", 6}})),
            withKeymap(profileOfDifferentKeymaps(6), 3, factoryKeymap().with("Keys", group)));
}

TEST(ProfileRulesUpdatedProfileTest, TakesAGroupForTheKeymapThatItSwitchesTo) {
  const PropertyList group = factoryGroup(2).with("06", assignment(11, 0));
  const PropertyList after = profileOfDifferentKeymaps(6).with("Buttons", group);
  EXPECT_EQ(updated(profileOfDifferentKeymaps(3), dictionary({{"Buttons", group}, {"KeymapID", 6}})),
            withKeymap(after, 6, factoryKeymap().with("Keys", keysWithTab(assignment(6, 0))).with("Buttons", group)));
}

TEST(ProfileRulesUpdatedProfileTest, TakesAllKeymapsAtOnce) {
  const PropertyList reversed = [] {
    std::vector<PropertyList> keymaps;
    for (std::int32_t position = 7; position >= 0; --position) {
      keymaps.push_back(factoryKeymap().with("Keys", keysWithTab(assignment(position, 0))));
    }
    return list(keymaps);
  }();
  EXPECT_EQ(updated(profileOfDifferentKeymaps(3), dictionary({{"Keymap", reversed}})),
            profileOfDifferentKeymaps(3).with("Keymap", reversed).with("Keys", keysWithTab(assignment(4, 0))));
}

TEST(ProfileRulesUpdatedProfileTest, TakesAKeymapCycleIntoAllKeymapsAndTheCurrentGroup) {
  const PropertyList cycle = assignment(50, 255);
  PropertyList expected = withAssignment(profileOfDifferentKeymaps(3), "Keys", "20", cycle);
  for (std::int64_t position = 0; position < 8; ++position) {
    expected = withKeymap(expected, position, withAssignment(expected["Keymap"].at(position), "Keys", "20", cycle));
  }
  EXPECT_EQ(updated(profileOfDifferentKeymaps(3),
                    dictionary({{"Keymap", expected["Keymap"]}, {"Keys", expected["Keys"]}, {"KeymapID", 3}})),
            expected);
}

TEST(ProfileRulesUpdatedProfileTest, KeepsTheKeymapsAndAssignmentsThatTheSettingsLack) {
  const PropertyList changed = factoryKeymap().with("Keys", keysWithTab(assignment(4, 0)));
  EXPECT_EQ(updated(profileOfDifferentKeymaps(3), dictionary({{"Keymap", list({changed})}})),
            withKeymap(profileOfDifferentKeymaps(3), 0, changed));
  const PropertyList onlyQ = dictionary({{"20", assignment(1, 0)}});
  const PropertyList group = profileOfDifferentKeymaps(6)["Keys"].with("20", assignment(1, 0));
  EXPECT_EQ(updated(profileOfDifferentKeymaps(3), dictionary({{"Keys", onlyQ}, {"KeymapID", 6}})),
            withKeymap(profileOfDifferentKeymaps(6).with("Keys", group), 6, factoryKeymap().with("Keys", group)));
}

TEST(ProfileRulesUpdatedProfileTest, KeepsAssignmentsThatComeIncomplete) {
  const PropertyList incomplete = keysWithTab(dictionary({{"command", "none"}}));
  const ProfileChange change =
      withUpdatedProfile(bundleOf({profileOfDifferentKeymaps(3)}), 0, dictionary({{"Keys", incomplete}}));
  const PropertyList group = keysWithTab(assignment(3, 0));
  expectPartlyRefused(change, bundleOf({profileOfDifferentKeymaps(3).with("Keys", group)}),
                      {{"an assignment is incomplete", "control 43"}});
}

TEST(ProfileRulesUpdatedProfileTest, TakesWholeNumbersOnlyForPositionsAndCounts) {
  for (const auto& [key, value] : {std::pair<const char*, PropertyList>{"KeymapID", 2.5},
                                   {"KeymapID", true},
                                   {"DPIX", 800.7},
                                   {"DPIX", "800"},
                                   {"PowerSaver", true}}) {
    const PropertyList before = bundle("Old");
    const ProfileChange change = withUpdatedProfile(before, 0, dictionary({{key, value}}));
    EXPECT_EQ(change.complaints.size(), 1U) << key;
    EXPECT_EQ(change.bundle.value_or(before), before) << key;
  }
  EXPECT_TRUE(withUpdatedProfile(bundle("Old"), 0, dictionary({{"AccelerationOn", true}})).complaints.empty());
}

TEST(ProfileRulesUpdatedProfileTest, TakesNoIncompleteAssignmentUnderAnyIdentifier) {
  for (const char* identifier : {"43", "999"}) {
    const PropertyList before = bundle("Old");
    const PropertyList group = dictionary({{identifier, dictionary({{"command", 1}})}});
    EXPECT_FALSE(withUpdatedProfile(before, 0, dictionary({{"Keys", group}})).complaints.empty()) << identifier;
  }
}

TEST(ProfileRulesUpdatedProfileTest, KeepsValuesThatComeUnusable) {
  const PropertyList settings = dictionary({{"ProfileName", 5},
                                            {"Keys", list({})},
                                            {"Buttons", "text"},
                                            {"Keymap", list({1, 2})},
                                            {"KeymapID", 8},
                                            {"Stages", list({})},
                                            {"StageValue", -1},
                                            {"DPIX", 99},
                                            {"DPIY", 5601.0},
                                            {"IndependentXYOn", 2},
                                            {"AppInfo", "App"},
                                            {"LEDColors", list({dictionary({{"Red", 1.5}})})},
                                            {"PollingRate", 5},
                                            {"Sensitivity", 1},
                                            {"PowerSaver", "2"},
                                            {"Acceleration", 3}});
  const ProfileChange change = withUpdatedProfile(profiles({"one"}), 0, settings);
  EXPECT_EQ(change.bundle, bundleOf({profile("one").with("Acceleration", 3)}));
  EXPECT_EQ(change.status, ReturnStatus::PartlyRefused);
  std::vector<std::string> reasons;
  for (const Complaint& complaint : change.complaints) reasons.push_back(complaint.reason);
  EXPECT_EQ(reasons,
            (std::vector<std::string>{
                "\"ProfileName\" takes a text", "\"Keys\" takes a dictionary", "\"Buttons\" takes a dictionary",
                "\"Keymap\" takes an array of 1 to 8 keymaps", "\"KeymapID\" takes a whole number from 0 to 7",
                "\"Stages\" takes an array of 1 to 5 stages from 100 to 5600 DPI",
                "\"StageValue\" takes a whole number from 0 to 4", "\"DPIX\" takes a whole number from 100 to 5600 DPI",
                "\"DPIY\" takes a whole number from 100 to 5600 DPI", "\"IndependentXYOn\" takes 0 or 1 (off, on)",
                "\"Sensitivity\" takes an array", "\"PollingRate\" takes a whole number from 125 to 1000 Hz",
                "\"LEDColors\" takes an array of colours with components from 0 to 1",
                "\"PowerSaver\" takes a whole number from 0 to 255", "\"AppInfo\" takes a dictionary"}));
}

TEST(ProfileRulesUpdatedProfileTest, TakesEveryKeyThatAClientSends) {
  const PropertyList stage = dictionary({{"dpix", 100}, {"dpiy", 5600}, {"independentxy", 1}, {"name", "far"}});
  const PropertyList color = dictionary({{"Red", 0.0}, {"Green", 1.0}, {"Blue", 0.5}});
  const PropertyList settings = dictionary({{"Stages", list({stage, stage})},
                                            {"StageValue", 1},
                                            {"DPIX", 100},
                                            {"DPIY", 5600},
                                            {"IndependentXYOn", true},
                                            {"SensitivityOSDOn", 0},
                                            {"MasterSensitivityOn", 1},
                                            {"Sensitivity", list({400})},
                                            {"AccelerationOn", false},
                                            {"Acceleration", 10},
                                            {"LEDColors", list({color, color, color})},
                                            {"LEDEffects", 4},
                                            {"ScrollLED", 1},
                                            {"BrightnessKBNormal", 0},
                                            {"AppInfo", dictionary({{"application", "Editor"}})},
                                            {"AutoSwitchOn", 1}});
  EXPECT_EQ(updated(profile("one"), settings), profile("one").merging(settings));
}

TEST(ProfileRulesUpdatedProfileTest, MirrorsDeviceWideKeys) {
  const PropertyList settings = dictionary({{"PollingRate", 500},
                                            {"ProfileOSDOn", true},
                                            {"PowerSaver", 3},
                                            {"BatteryCriticalLevel", 1},
                                            {"BrightnessBattery", 2},
                                            {"BrightnessNormal", 4}});
  const PropertyList expected = bundleOf({profile("one"), profile("two").merging(settings).with("DPIX", 400)})
                                    .with("DeviceSettings", dictionary({{"ActiveProfile", 0}}).merging(settings));
  expectDone(withUpdatedProfile(profiles({"one", "two"}), 1, settings.with("DPIX", 400)), expected);
}

TEST(ProfileRulesUpdatedProfileTest, MirrorsAValueThatTheProfileHasAlready) {
  const PropertyList before = bundleOf({profile("one").with("PollingRate", 1000)})
                                  .with("DeviceSettings", dictionary({{"ActiveProfile", 0}, {"PollingRate", 500}}));
  const PropertyList after = before.with("DeviceSettings", dictionary({{"ActiveProfile", 0}, {"PollingRate", 1000}}));
  expectDone(withUpdatedProfile(before, 0, dictionary({{"PollingRate", 1000}})), after);
  expectDone(withUpdatedProfile(before, 0, before["Profiles"].at(0)), after);
}

TEST(ProfileRulesUpdatedProfileTest, LeavesTheDeviceAloneWhenItIsOnlyRenamed) {
  const PropertyList old = profile("one").with("PollingRate", 1000);
  const PropertyList device = dictionary({{"ActiveProfile", 0}, {"PollingRate", 500}});
  expectDone(withUpdatedProfile(bundleOf({old}).with("DeviceSettings", device), 0, old.with("ProfileName", "new")),
             bundleOf({old.with("ProfileName", "new")}).with("DeviceSettings", device));
}

TEST(ProfileRulesUpdatedProfileTest, TakesAStageInForceFromAmongItsStages) {
  const PropertyList stage = dictionary({{"dpix", 400}, {"dpiy", 400}, {"independentxy", 0}});
  const PropertyList before = profile("one").with("Stages", list({stage, stage, stage})).with("StageValue", 2);
  EXPECT_EQ(updated(before, dictionary({{"Stages", list({stage, stage})}})),
            before.with("Stages", list({stage, stage})).with("StageValue", 1));
  expectPartlyRefused(withUpdatedProfile(bundleOf({before}), 0, dictionary({{"StageValue", 3}, {"DPIX", 500}})),
                      bundleOf({before.with("DPIX", 500)}), {{"\"StageValue\" is the position of no stage", "3"}});
}

TEST(ProfileRulesUpdatedProfileTest, CannotGrowBeyondTheLargestSize) {
  PropertyList bundle = profiles({"one"});
  const PropertyList first = dictionary({{"A", std::string(600'000, 'x')}});
  bundle = withUpdatedProfile(bundle, 0, first).bundle.value();
  expectRefused(withUpdatedProfile(bundle, 0, dictionary({{"B", std::string(600'000, 'x')}})), ReturnStatus::TooLarge,
                {"the record is larger than 1 MiB or has more than 32 levels", ""});
}

TEST(ProfileRulesUpdatedProfileTest, NeedsSettingsAndAPosition) {
  expectRefused(withUpdatedProfile(profiles({"one"}), 0, list({})), ReturnStatus::Malformed,
                {"\"DeviceSettingsDictionary\" takes a dictionary", list({}).description()});
  expectRefused(withUpdatedProfile(profiles({"one"}), 1, dictionary({})), ReturnStatus::OutOfRange,
                {"there is no such profile", "1"});
}

// The changes that name one profile, with this position.
std::vector<ProfileChange> changesOf(const PropertyList& bundle, const PropertyList& profileID) {
  return {withUpdatedProfile(bundle, profileID, dictionary({{"DPIX", 400}})), withoutProfile(bundle, profileID),
          withActiveProfile(bundle, profileID)};
}

TEST(ProfileRulesPositionTest, IsOneOfAProfile) {
  for (const PropertyList& profileID :
       {PropertyList(-1), PropertyList(2), PropertyList(INT64_MIN), PropertyList(UINT64_MAX)}) {
    for (const ProfileChange& change : changesOf(profiles({"one", "two"}), profileID)) {
      expectRefused(change, ReturnStatus::OutOfRange, {"there is no such profile", profileID.description()});
    }
  }
}

TEST(ProfileRulesPositionTest, IsAnInteger) {
  for (const PropertyList& profileID :
       {PropertyList(), PropertyList("0"), PropertyList(0.0), PropertyList(false), list({0})}) {
    for (const ProfileChange& change : changesOf(profiles({"one", "two"}), profileID)) {
      expectRefused(change, ReturnStatus::Malformed, {"\"ProfileID\" takes an integer", profileID.description()});
    }
  }
}

TEST(ProfileRulesReplacedProfilesTest, TakeThePlaceOfAll) {
  expectDone(withReplacedProfiles(profiles({"one", "two"}, 1), list({profile("A"), profile("B"), profile("C")}), {}),
             profiles({"A", "B", "C"}, 1));
}

TEST(ProfileRulesReplacedProfilesTest, KeepAPositionForTheActiveOne) {
  expectDone(withReplacedProfiles(profiles({"1", "2", "3"}, 2), list({profile("A"), profile("B")}), {}),
             profiles({"A", "B"}, 1));
}

TEST(ProfileRulesReplacedProfilesTest, TakeWhatTheyLackFromTheFactoryProfile) {
  expectDone(withReplacedProfiles(profiles({"one"}), list({dictionary({{"ProfileName", "A"}})}), profile("factory")),
             profiles({"A"}));
}

TEST(ProfileRulesReplacedProfilesTest, CarryACleanedGroupIntoTheKeymapInForce) {
  const PropertyList before = profileOfDifferentKeymaps(2);
  const PropertyList cleaned = before.with("Keys", factoryGroup(1));
  expectDone(withReplacedProfiles(bundleOf({before}), list({cleaned}), {}),
             bundleOf({withKeymap(cleaned, 2, factoryKeymap())}));
}

TEST(ProfileRulesReplacedProfilesTest, AreOneToFive) {
  expectRefused(withReplacedProfiles(profiles({"one"}), list({}), {}), ReturnStatus::OutOfRange,
                {"\"AllProfiles\" takes 1 to 5 profiles", "0"});
  expectRefused(withReplacedProfiles(profiles({"one"}), list(std::vector<PropertyList>(6, profile("A"))), {}),
                ReturnStatus::OutOfRange, {"\"AllProfiles\" takes 1 to 5 profiles", "6"});
  expectRefused(withReplacedProfiles(profiles({"one"}), dictionary({}), {}), ReturnStatus::Malformed,
                {"\"AllProfiles\" takes an array", dictionary({}).description()});
}

TEST(ProfileRulesReplacedProfilesTest, AreRefusedTogether) {
  expectRefused(withReplacedProfiles(profiles({"one"}), list({profile("A"), "B"}), {}), ReturnStatus::Malformed,
                {"a profile is no dictionary", "\"B\""});
  expectRefused(withReplacedProfiles(profiles({"one"}), list({profile("A"), profile("B").with("KeymapID", 9)}), {}),
                ReturnStatus::Malformed, {"\"KeymapID\" takes a whole number from 0 to 7", "9"});
  expectRefused(
      withReplacedProfiles(profiles({"one"}), list({profile("A").with("Note", std::string(1024 * 1024, 'x'))}), {}),
      ReturnStatus::TooLarge, {"the record is larger than 1 MiB or has more than 32 levels", ""});
}

TEST(ProfileRulesReorderedProfilesTest, LeaveTheSameProfileActive) {
  expectDone(withReorderedProfiles(profiles({"1", "2", "3"}, 2), list({2, 0, 1}), list({"1", "2", "3"})),
             profiles({"3", "1", "2"}, 0));
  expectDone(withReorderedProfiles(profiles({"1", "2", "3"}, 0), list({0, 2, 1}), list({"1", "2", "3"})),
             profiles({"1", "3", "2"}, 0));
}

TEST(ProfileRulesReorderedProfilesTest, AreThoseThatTheClientSaw) {
  const PropertyList before = profiles({"1", "2"}, 1);
  for (const PropertyList& names : {list({"2", "1"}), list({"1", "3"})}) {
    expectRefused(withReorderedProfiles(before, list({1, 0}), names), ReturnStatus::Outdated,
                  {"the profiles are others than the client saw", names.description()});
  }
  expectRefused(withReorderedProfiles(before, list({2, 1, 0}), list({"1", "2", "3"})), ReturnStatus::Outdated,
                {"the profiles are others than the client saw", list({"1", "2", "3"}).description()});
}

TEST(ProfileRulesReorderedProfilesTest, AreEachNamedOnce) {
  const PropertyList names = list({"1", "2"});
  for (const PropertyList& order :
       {PropertyList(), PropertyList(1), list({}), list({0}), list({0, 0}), list({0, 2}), list({0, -1}), list({0, 1.0}),
        list({"0", "1"}), list({0, 1, 2}), list({0, true})}) {
    expectRefused(withReorderedProfiles(profiles({"1", "2"}), order, names), ReturnStatus::Malformed,
                  {"\"ProfileOrder\" takes each position once, as many as names", order.description(100)});
  }
  expectRefused(withReorderedProfiles(profiles({"1", "2"}), list({1, 0}), {}), ReturnStatus::Malformed,
                {"\"ProfileOrder\" takes each position once, as many as names", list({1, 0}).description(100)});
}

TEST(ProfileRulesRemovedProfileTest, LeavesTheSameProfileActive) {
  expectDone(withoutProfile(profiles({"1", "2", "3"}, 2), 0), profiles({"2", "3"}, 1));
  expectDone(withoutProfile(profiles({"1", "2", "3"}, 0), 2), profiles({"1", "2"}, 0));
}

TEST(ProfileRulesRemovedProfileTest, GivesItsPlaceToTheOneBeforeItOrTheFirst) {
  expectDone(withoutProfile(profiles({"1", "2", "3"}, 2), 2), profiles({"1", "2"}, 1));
  expectDone(withoutProfile(profiles({"1", "2", "3"}, 1), 1), profiles({"1", "3"}, 0));
  expectDone(withoutProfile(profiles({"1", "2", "3"}, 0), 0), profiles({"2", "3"}, 0));
}

TEST(ProfileRulesRemovedProfileTest, IsNeverTheLastOne) {
  expectRefused(withoutProfile(profiles({"one"}), 0), ReturnStatus::OutOfRange, {"the last profile stays", ""});
}

TEST(ProfileRulesActiveProfileTest, IsTheOneSwitchedTo) {
  expectDone(withActiveProfile(profiles({"one", "two"}), 1), profiles({"one", "two"}, 1));
  expectDone(withActiveProfile(profiles({"one", "two"}, 1), 1), profiles({"one", "two"}, 1));
}

}  // namespace
}  // namespace test
}  // namespace vorn::engine
