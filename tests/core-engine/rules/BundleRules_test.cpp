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

TEST(BundleRulesTest, LeaveACompleteBundleAsItIs) {
  const PropertyList complete = bundleOf({profile("one"), profile("two")}, 1);
  EXPECT_TRUE(isCompleteBundle(complete));
  EXPECT_EQ(repairedBundle(complete, profile("factory").without("DPIX")), complete);
}

TEST(BundleRulesTest, KeepWhatTheyDoNotKnow) {
  const PropertyList extended =
      withProfile(withAssignment(profile("one"), "Keys", "250", "odd").with("Future", 7)).with("Extra", list({1, 2}));
  EXPECT_TRUE(isCompleteBundle(extended));
}

TEST(BundleRulesTest, RefuseWhatIsNoDictionary) {
  std::string error;
  EXPECT_EQ(repairedBundle("text", {}, &error), std::nullopt);
  EXPECT_EQ(error, "no dictionary of settings");
}

TEST(BundleRulesTest, RefuseABundleWithoutAProfile) {
  for (const PropertyList& profiles : {PropertyList(), PropertyList("text"), list({}), list({1, "two"})}) {
    std::string error;
    EXPECT_EQ(repairedBundle(bundle().with("Profiles", profiles), {}, &error), std::nullopt) << profiles.description();
    EXPECT_EQ(error, "no profile in the settings");
  }
}

TEST(BundleRulesTest, DropProfilesBeyondTheFifth) {
  std::vector<PropertyList> six(6, profile("same"));
  const std::vector<PropertyList> five(5, profile("same"));
  EXPECT_EQ(repairedBundle(bundleOf(six), {}), bundleOf(five));
}

TEST(BundleRulesTest, ReplaceAnUnusableProfileInItsPlace) {
  EXPECT_EQ(repairedBundle(bundleOf({profile("one"), "text", profile("three")}), profile("factory")),
            bundleOf({profile("one"), profile("factory"), profile("three")}));
}

TEST(BundleRulesTest, ResetAnActiveProfileOutsideTheProfiles) {
  for (const PropertyList& active : {PropertyList(), PropertyList(-1), PropertyList(2), PropertyList("1")}) {
    const PropertyList two = bundleOf({profile("one"), profile("two")});
    const PropertyList device = PropertyList::dictionary({{"PollingRate", 500}, {"ActiveProfile", active}});
    const PropertyList given = active.isNone() ? device.without("ActiveProfile") : device;
    EXPECT_EQ(repairedBundle(two.with("DeviceSettings", given), {}),
              two.with("DeviceSettings", device.with("ActiveProfile", 0)));
  }
}

TEST(BundleRulesTest, PutEmptyContainersForMissingMacrosAndDeviceSettings) {
  EXPECT_EQ(repairedBundle(bundle().without("Macros").without("DeviceSettings"), {}), bundle());
  EXPECT_EQ(repairedBundle(bundle().with("Macros", 5).with("DeviceSettings", list({})), {}), bundle());
}

TEST(BundleRulesTest, KeepThePositionsOfMacros) {
  const PropertyList named = PropertyList::dictionary({{"MacroName", "Fire"}, {"delay", 20}});
  const PropertyList nameless = PropertyList::dictionary({{"delay", 20}});
  EXPECT_EQ(repairedBundle(bundle().with("Macros", list({"text", named, nameless})), {}),
            bundle().with("Macros", list({PropertyList::dictionary({{"MacroName", "Macro 1"}}), named,
                                          nameless.with("MacroName", "Macro 3")})));
}

TEST(BundleRulesTest, BuildAWholeProfileOfNothing) {
  EXPECT_EQ(repaired({}), profile("Default").without("DPIX").without("DPIY"));
  EXPECT_EQ(repairedProfile({}, profile("factory")), profile("factory"));
}

TEST(BundleRulesTest, TakeMissingValuesFromTheFactoryProfile) {
  EXPECT_EQ(repairedProfile(profile("mine").without("DPIX").with("DPIY", 400), profile("factory")),
            profile("mine").with("DPIY", 400));
}

TEST(BundleRulesTest, ResetAKeymapNumberOutsideTheEight) {
  for (const PropertyList& number : {PropertyList(8), PropertyList(-1), PropertyList("3"), PropertyList(list({}))}) {
    EXPECT_EQ(repaired(profile("mine").with("KeymapID", number)), profile("mine"));
  }
  EXPECT_EQ(repaired(profile("mine").with("KeymapID", 7)), profile("mine").with("KeymapID", 7));
}

TEST(BundleRulesTest, BringTheKeymapsToEight) {
  const PropertyList changed = factoryKeymap().with("Keys", factoryGroup(1).with("43", assignment(1, 0)));
  const std::vector<PropertyList> nine(9, changed);
  const std::vector<PropertyList> eight(8, changed);
  EXPECT_EQ(repaired(profile("mine").with("Keymap", list(nine))), profile("mine").with("Keymap", list(eight)));
  std::vector<PropertyList> expected(8, factoryKeymap());
  expected[0] = changed;
  EXPECT_EQ(repaired(profile("mine").with("Keymap", list({changed, "text"}))),
            profile("mine").with("Keymap", list(expected)));
}

TEST(BundleRulesTest, TakeAMissingAssignmentOfAKeymapFromTheSameKeymapOfTheFactory) {
  std::vector<PropertyList> factoryKeymaps(8, factoryKeymap());
  factoryKeymaps[3] = factoryKeymap().with("Keys", factoryGroup(1).with("20", assignment(16, 99)));
  std::vector<PropertyList> cut(8, factoryKeymap());
  cut[3] = factoryKeymap().with("Keys", factoryGroup(1).without("20"));
  EXPECT_EQ(repairedProfile(profile("mine").with("Keymap", list(cut)),
                            profile("factory").with("Keymap", list(factoryKeymaps))),
            profile("mine").with("Keymap", list(factoryKeymaps)));
}

TEST(BundleRulesTest, CompleteAnAssignmentOfTheFactoryCommandWithItsParameters) {
  const PropertyList given = PropertyList::dictionary({{"command", 45}, {"note", "kept"}});
  EXPECT_EQ(repaired(withAssignment(profile("mine"), "Keys", "43", given)),
            withAssignment(profile("mine"), "Keys", "43", assignment(45, 43).with("note", "kept")));
}

TEST(BundleRulesTest, CompleteAnAssignmentOfAnotherCommandWithZeros) {
  const PropertyList given = PropertyList::dictionary({{"command", 10}, {"param2", list({})}});
  EXPECT_EQ(repaired(withAssignment(profile("mine"), "Buttons", "06", given)),
            withAssignment(profile("mine"), "Buttons", "06", assignment(10, 0)));
}

TEST(BundleRulesTest, ReplaceAnAssignmentWithoutACommand) {
  for (const PropertyList& given : {PropertyList(), PropertyList("text"),
                                    PropertyList::dictionary({{"command", "1"}, {"param1", 5}, {"param2", 5}})}) {
    const PropertyList cut = given.isNone() ? profile("mine").with("Keys", factoryGroup(1).without("22"))
                                            : withAssignment(profile("mine"), "Keys", "22", given);
    EXPECT_EQ(repaired(cut), profile("mine"));
  }
}

TEST(BundleRulesTest, TakeTextParametersAsTheyAre) {
  const PropertyList launch =
      PropertyList::dictionary({{"command", 46}, {"param1", "/usr/bin/editor"}, {"param2", ""}});
  EXPECT_TRUE(isCompleteBundle(withProfile(withAssignment(profile("mine"), "Keys", "43", launch))));
}

}  // namespace
}  // namespace vorn::engine::test
