#include "model/ProfileComparison.h"

#include <gtest/gtest.h>

#include <string>

#include "model/Assignments.h"
#include "model/SettingsKeys.h"
#include "support/SampleSettings.h"

namespace vorn {
namespace {

using test::plainProfile;

PropertyList record(int command, const PropertyList& param1 = 0, int param2 = 0) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", param2}});
}

PropertyList keymap(const PropertyList& tab) {
  return PropertyList::dictionary(
      {{"Keys", PropertyList::dictionary({{"43", tab}})}, {"Buttons", PropertyList::dictionary({{"06", record(18)}})}});
}

const PropertyList tabKey = record(45, 43);

// Two keymaps, of which the second is in force.
PropertyList profile(const PropertyList& tab, const PropertyList& tabElsewhere) {
  return keymap(tab)
      .with("ProfileName", "P")
      .with("KeymapID", 1)
      .with("Keymap", PropertyList::array({keymap(tabElsewhere), keymap(tab)}));
}

// The differences as lines: "controls 1 43: 45 | 16", "light ScrollLED: 1 | 0".
std::vector<std::string> linesOf(const PropertyList& left, const PropertyList& right) {
  std::vector<std::string> lines;
  for (const ProfileDifference& each : profileDifferences(left, right)) {
    static constexpr const char* parts[] = {"application", "controls", "sensitivity", "light", "other"};
    std::string line = parts[static_cast<int>(each.part)];
    if (each.control != nullptr) {
      line += " " + std::to_string(each.keymap) + " " + std::string(each.control->identifier) + ": " +
              each.left["command"].description() + " | " + each.right["command"].description();
      EXPECT_EQ(each.key, each.control->group);
    } else {
      line += " " + each.key + ": " + each.left.description() + " | " + each.right.description();
      EXPECT_EQ(each.keymap, -1);
    }
    lines.push_back(line);
  }
  return lines;
}
using Lines = std::vector<std::string>;

TEST(ProfileComparisonTest, FindsNothingBetweenAProfileAndItsCopy) {
  const PropertyList one = plainProfile("One");
  EXPECT_EQ(linesOf(one, one), Lines());
  EXPECT_EQ(linesOf(one, one.with("ProfileName", "Two")), Lines());
  EXPECT_EQ(linesOf({}, {}), Lines());
}

TEST(ProfileComparisonTest, ComparesTheControlsOfEveryKeymap) {
  EXPECT_EQ(linesOf(profile(tabKey, record(20)), profile(record(16, 4), tabKey)),
            (Lines{"controls 0 43: 20 | 45", "controls 1 43: 45 | 16"}));
}

// The groups of the profile itself are those of the keymap in force.
TEST(ProfileComparisonTest, TakesTheKeymapInForceAsItIsNow) {
  const PropertyList stale =
      profile(tabKey, tabKey).with("Keymap", PropertyList::array({keymap(tabKey), keymap(record(20))}));
  EXPECT_EQ(linesOf(stale, profile(tabKey, tabKey)), Lines());
  EXPECT_EQ(assignmentIn(stale, 1, *controlOf("43")), tabKey);
  EXPECT_EQ(assignmentIn(stale, 0, *controlOf("43")), tabKey);
  EXPECT_EQ(assignmentIn(stale, 7, *controlOf("43")), PropertyList());
  EXPECT_EQ(linesOf(profile(tabKey, tabKey), profile(tabKey, tabKey).with("KeymapID", 0)),
            Lines{"controls KeymapID: 1 | 0"});
}

TEST(ProfileComparisonTest, TakesAssignmentsThatDoTheSameForEqual) {
  const auto same = [](const PropertyList& left, const PropertyList& right) {
    return linesOf(profile(left, tabKey), profile(right, tabKey)).empty();
  };
  EXPECT_TRUE(same(tabKey, {}));
  EXPECT_TRUE(same(tabKey, tabKey.with("param2", 7)));
  EXPECT_TRUE(same(record(10, 2, 1), record(10, 2.0, 1).with("note", "x")));
  EXPECT_TRUE(same(record(46, "/a"), record(46, "/a")));
  EXPECT_FALSE(same(record(46, "/a"), record(46, "/b")));
  EXPECT_FALSE(same(record(10, 2, 1), record(10, 2, 255)));
  EXPECT_FALSE(same(record(10, 2, 1), record(10, 1, 1)));
  EXPECT_FALSE(same({}, record(20)));
  EXPECT_FALSE(same(record(16, 43), tabKey));
}

TEST(ProfileComparisonTest, TellsEveryPartInItsOrder) {
  const PropertyList one = plainProfile("One").with("Note", 1);
  const PropertyList application = PropertyList::dictionary({{"application", "Editor"}});
  const PropertyList two = PropertyList::dictionary({{"Further", "x"},
                                                     {"ScrollLED", one["ScrollLED"].toInt() + 5},
                                                     {"DPIX", 123},
                                                     {"AutoSwitchOn", 1},
                                                     {"AppInfo", application}});
  std::vector<ProfilePart> parts;
  for (const ProfileDifference& each : profileDifferences(one, one.merging(two).without("Note"))) {
    if (parts.empty() || parts.back() != each.part) parts.push_back(each.part);
  }
  EXPECT_EQ(parts.front(), ProfilePart::Application);
  EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
  EXPECT_EQ(linesOf(one, one.with("Note", 2)), Lines{"other Note: 1 | 2"});
  EXPECT_EQ(linesOf(one, one.without("Note").with("Further", "x")),
            (Lines{"other Further: " + PropertyList().description() + " | \"x\"",
                   "other Note: 1 | " + PropertyList().description()}));
}

TEST(ProfileComparisonTest, LeavesOutWhatIsTheSameForAllProfiles) {
  const PropertyList one = plainProfile("One");
  for (const char* key :
       {"PollingRate", "BrightnessNormal", "BrightnessBattery", "PowerSaver", "BatteryCriticalLevel", "ProfileOSDOn"}) {
    EXPECT_EQ(linesOf(one.with(key, 1), one.with(key, 2)), Lines()) << key;
  }
}

TEST(ProfileComparisonTest, TakesValuesThatMeanTheSameForEqual) {
  const auto same = [](const char* key, const PropertyList& left, const PropertyList& right) {
    return linesOf(plainProfile("P").with(key, left), plainProfile("P").with(key, right)).empty();
  };
  const auto stage = [](int x, int y, const PropertyList& apart) {
    return PropertyList::array({PropertyList::dictionary({{"dpix", x}, {"dpiy", y}, {"independentxy", apart}})});
  };
  const auto color = [](double red) {
    return PropertyList::array({PropertyList::dictionary({{"Red", red}, {"Green", 0}, {"Blue", 1}})});
  };
  EXPECT_TRUE(same("AutoSwitchOn", 1, true));
  EXPECT_TRUE(same("DPIX", 800, 800.0));
  EXPECT_TRUE(same("Stages", stage(800, 800, 0), stage(800, 800, false)));
  EXPECT_TRUE(same("LEDColors", color(0.5), color(0.5001)));
  EXPECT_FALSE(same("AutoSwitchOn", 1, 0));
  EXPECT_FALSE(same("DPIX", 800, 900));
  EXPECT_FALSE(same("Stages", stage(800, 800, 0), stage(800, 900, 0)));
  EXPECT_FALSE(same("Stages", stage(800, 800, 0), PropertyList::array()));
  EXPECT_FALSE(same("LEDColors", color(0.5), color(0.51)));
}

TEST(ProfileComparisonTest, SurvivesRecordsOfAnyShape) {
  const PropertyList odd = PropertyList::dictionary({{"Keys", 5},
                                                     {"Buttons", PropertyList::array()},
                                                     {"Keymap", "x"},
                                                     {"KeymapID", "y"},
                                                     {"Stages", 7},
                                                     {"LEDColors", 1}});
  for (const PropertyList& other : {PropertyList(), PropertyList("text"), odd, plainProfile("P")}) {
    profileDifferences(odd, other);
    profileDifferences(other, odd);
  }
}

}  // namespace
}  // namespace vorn
