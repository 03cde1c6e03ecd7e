#include "core-engine/rules/BundleRules.h"

#include <gtest/gtest.h>

#include "core-engine/TestBundle.h"

namespace vorn::engine::test {
namespace {

PropertyList list(std::vector<PropertyList> elements) {
  return PropertyList::array(std::move(elements));
}

PropertyList withProfile(const PropertyList& record) {
  return bundleOf({record});
}

// The profile that becomes of this one, without a factory profile.
PropertyList repaired(const PropertyList& profile) {
  return repairedProfile(profile, {});
}

PropertyList withAssignment(const PropertyList& profile, std::string_view group, std::string_view identifier,
                            const PropertyList& assignment) {
  return profile.with(group, profile[group].with(identifier, assignment));
}

TEST(BundleRules, LeaveACompleteBundleAsItIs) {
  const PropertyList complete = bundleOf({profile("one"), profile("two")}, 1);
  EXPECT_TRUE(isCompleteBundle(complete));
  EXPECT_EQ(repairedBundle(complete, profile("factory").without("DPIX")), complete);
}

TEST(BundleRules, KeepWhatTheyDoNotKnow) {
  const PropertyList extended =
      withProfile(withAssignment(profile("one"), "Keys", "250", "odd").with("Future", 7)).with("Extra", list({1, 2}));
  EXPECT_TRUE(isCompleteBundle(extended));
}

TEST(BundleRules, RefuseWhatIsNoDictionary) {
  std::string error;
  EXPECT_EQ(repairedBundle("text", {}, &error), std::nullopt);
  EXPECT_EQ(error, "no dictionary of settings");
}

TEST(BundleRules, RefuseABundleWithoutAProfile) {
  for (const PropertyList& profiles : {PropertyList(), PropertyList("text"), list({}), list({1, "two"})}) {
    std::string error;
    EXPECT_EQ(repairedBundle(bundle().with("Profiles", profiles), {}, &error), std::nullopt) << profiles.description();
    EXPECT_EQ(error, "no profile in the settings");
  }
}

TEST(BundleRules, DropProfilesBeyondTheFifth) {
  std::vector<PropertyList> six(6, profile("same"));
  const std::vector<PropertyList> five(5, profile("same"));
  EXPECT_EQ(repairedBundle(bundleOf(six), {}), bundleOf(five));
}

TEST(BundleRules, ReplaceAnUnusableProfileInItsPlace) {
  EXPECT_EQ(repairedBundle(bundleOf({profile("one"), "text", profile("three")}), profile("factory")),
            bundleOf({profile("one"), profile("factory"), profile("three")}));
}

TEST(BundleRules, ResetAnActiveProfileOutsideTheProfiles) {
  for (const PropertyList& active : {PropertyList(), PropertyList(-1), PropertyList(2), PropertyList("1")}) {
    const PropertyList two = bundleOf({profile("one"), profile("two")});
    const PropertyList device = PropertyList::dictionary({{"PollingRate", 500}, {"ActiveProfile", active}});
    const PropertyList given = active.isNone() ? device.without("ActiveProfile") : device;
    EXPECT_EQ(repairedBundle(two.with("DeviceSettings", given), {}),
              two.with("DeviceSettings", device.with("ActiveProfile", 0)));
  }
}

TEST(BundleRules, PutEmptyContainersForMissingMacrosAndDeviceSettings) {
  EXPECT_EQ(repairedBundle(bundle().without("Macros").without("DeviceSettings"), {}), bundle());
  EXPECT_EQ(repairedBundle(bundle().with("Macros", 5).with("DeviceSettings", list({})), {}), bundle());
}

TEST(BundleRules, KeepThePositionsOfMacros) {
  const PropertyList named = PropertyList::dictionary({{"MacroName", "Fire"}, {"delay", 20}});
  const PropertyList nameless = PropertyList::dictionary({{"delay", 20}});
  EXPECT_EQ(repairedBundle(bundle().with("Macros", list({"text", named, nameless})), {}),
            bundle().with("Macros", list({PropertyList::dictionary({{"MacroName", "Macro 1"}}), named,
                                          nameless.with("MacroName", "Macro 3")})));
}

TEST(BundleRules, BuildAWholeProfileOfNothing) {
  EXPECT_EQ(repaired({}), profile("Default").without("DPIX").without("DPIY"));
  EXPECT_EQ(repairedProfile({}, profile("factory")), profile("factory"));
}

TEST(BundleRules, TakeMissingValuesFromTheFactoryProfile) {
  EXPECT_EQ(repairedProfile(profile("mine").without("DPIX").with("DPIY", 400), profile("factory")),
            profile("mine").with("DPIY", 400));
}

TEST(BundleRules, ResetAKeymapNumberOutsideTheEight) {
  for (const PropertyList& number : {PropertyList(8), PropertyList(-1), PropertyList("3"), PropertyList(list({}))}) {
    EXPECT_EQ(repaired(profile("mine").with("KeymapID", number)), profile("mine"));
  }
  EXPECT_EQ(repaired(profile("mine").with("KeymapID", 7)), profile("mine").with("KeymapID", 7));
}

TEST(BundleRules, BringTheKeymapsToEight) {
  const PropertyList changed = keymap().with("Keys", keyGroup().with("43", record(1, 0)));
  const std::vector<PropertyList> nine(9, changed);
  const std::vector<PropertyList> eight(8, changed);
  EXPECT_EQ(repaired(profile("mine").with("Keymap", list(nine))), profile("mine").with("Keymap", list(eight)));
  std::vector<PropertyList> expected(8, keymap());
  expected[0] = changed;
  EXPECT_EQ(repaired(profile("mine").with("Keymap", list({changed, "text"}))),
            profile("mine").with("Keymap", list(expected)));
}

TEST(BundleRules, TakeAMissingAssignmentOfAKeymapFromTheSameKeymapOfTheFactory) {
  std::vector<PropertyList> factoryKeymaps(8, keymap());
  factoryKeymaps[3] = keymap().with("Keys", keyGroup().with("20", record(16, 99)));
  std::vector<PropertyList> cut(8, keymap());
  cut[3] = keymap().with("Keys", keyGroup().without("20"));
  EXPECT_EQ(repairedProfile(profile("mine").with("Keymap", list(cut)),
                            profile("factory").with("Keymap", list(factoryKeymaps))),
            profile("mine").with("Keymap", list(factoryKeymaps)));
}

TEST(BundleRules, CompleteAnAssignmentOfTheFactoryCommandWithItsParameters) {
  const PropertyList given = PropertyList::dictionary({{"command", 45}, {"note", "kept"}});
  EXPECT_EQ(repaired(withAssignment(profile("mine"), "Keys", "43", given)),
            withAssignment(profile("mine"), "Keys", "43", record(45, 43).with("note", "kept")));
}

TEST(BundleRules, CompleteAnAssignmentOfAnotherCommandWithZeros) {
  const PropertyList given = PropertyList::dictionary({{"command", 10}, {"param2", list({})}});
  EXPECT_EQ(repaired(withAssignment(profile("mine"), "Buttons", "06", given)),
            withAssignment(profile("mine"), "Buttons", "06", record(10, 0)));
}

TEST(BundleRules, ReplaceAnAssignmentWithoutACommand) {
  for (const PropertyList& given : {PropertyList(), PropertyList("text"),
                                    PropertyList::dictionary({{"command", "1"}, {"param1", 5}, {"param2", 5}})}) {
    const PropertyList cut = given.isNone() ? profile("mine").with("Keys", keyGroup().without("22"))
                                            : withAssignment(profile("mine"), "Keys", "22", given);
    EXPECT_EQ(repaired(cut), profile("mine"));
  }
}

TEST(BundleRules, TakeTextParametersAsTheyAre) {
  const PropertyList launch =
      PropertyList::dictionary({{"command", 46}, {"param1", "/usr/bin/editor"}, {"param2", ""}});
  EXPECT_TRUE(isCompleteBundle(withProfile(withAssignment(profile("mine"), "Keys", "43", launch))));
}

}  // namespace
}  // namespace vorn::engine::test
