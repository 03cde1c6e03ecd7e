#include "model/References.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorn {
namespace {

PropertyList record(int command, int param1, int param2 = 0) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", param2}});
}

PropertyList macro(int position) {
  return record(10, position, 255);
}

PropertyList profile(int position) {
  return record(17, position);
}

const PropertyList tabKey = record(45, 43);
const PropertyList scrollUp = record(18, 0);

PropertyList groups(const PropertyList& tab, const PropertyList& wheel) {
  return PropertyList::dictionary({{"Keys", PropertyList::dictionary({{"43", tab}, {"20", record(16, 1)}})},
                                   {"Buttons", PropertyList::dictionary({{"06", wheel}})}});
}

// Two profiles of three keymaps, the second one in force; a different record in each of the others.
PropertyList profiles(const PropertyList& tab, const PropertyList& wheel, const PropertyList& elsewhere) {
  const PropertyList inForce = groups(tab, wheel);
  const PropertyList one =
      inForce.with("ProfileName", "One")
          .with("KeymapID", 1)
          .with("Keymap", PropertyList::array({groups(elsewhere, scrollUp), inForce, groups(tabKey, elsewhere)}));
  return PropertyList::array({one, one.with("ProfileName", "Two")});
}

const Deletion secondOfFour = {AssignmentCommand::Macro, 1, 4};

PropertyList afterDeletion(const PropertyList& before, const Deletion& deletion) {
  return withReferencesKept(before, before, deletion, PropertyList());
}

TEST(ReferencesTest, BehindTheDeletedOneMoveUpInEveryKeymap) {
  EXPECT_EQ(afterDeletion(profiles(macro(2), macro(3), macro(2)), secondOfFour),
            profiles(macro(1), macro(2), macro(1)));
}

TEST(ReferencesTest, ToTheDeletedOneHaveTheirDefaultInEveryKeymap) {
  const PropertyList kept = afterDeletion(profiles(macro(1), macro(1), macro(1)), secondOfFour);
  const PropertyList normal = groups(tabKey, scrollUp);
  for (const PropertyList& each : kept.elements()) {
    EXPECT_EQ(each["Keys"], normal["Keys"]);
    EXPECT_EQ(each["Buttons"], normal["Buttons"]);
    EXPECT_EQ(each["Keymap"], PropertyList::array({normal, normal, normal}));
  }
}

TEST(ReferencesTest, HaveTheDefaultOfTheDefaultProfileWhereItHasOne) {
  const PropertyList defaults = groups(record(5, 0), record(1, 0)).without("Buttons");
  const PropertyList before = profiles(macro(1), macro(1), macro(0));
  EXPECT_EQ(withReferencesKept(before, before, secondOfFour, defaults), profiles(record(5, 0), scrollUp, macro(0)));
}

TEST(ReferencesTest, ThatAnEarlierDeletionLeftOverHaveTheirDefault) {
  EXPECT_EQ(afterDeletion(profiles(macro(4), macro(9), macro(0)), secondOfFour), profiles(tabKey, scrollUp, macro(0)));
}

TEST(ReferencesTest, ToOthersStay) {
  const PropertyList before = profiles(macro(0), profile(1), record(46, 0).with("param1", "/a"));
  EXPECT_EQ(afterDeletion(before, secondOfFour), before);
}

TEST(ReferencesTest, AreKeptWhateverACleanUpHasMadeOfThem) {
  const PropertyList before = profiles(macro(3), macro(1), macro(2));
  // It has put back what pointed behind the end, and looked only at what is in force.
  const PropertyList after = profiles(tabKey, scrollUp, macro(2));
  EXPECT_EQ(withReferencesKept(before, after, secondOfFour, PropertyList()), profiles(macro(2), scrollUp, macro(1)));
}

TEST(ReferencesTest, AreLeftAloneWhereSomebodyHasAssignedSomethingElse) {
  const PropertyList before = profiles(macro(3), macro(1), macro(2));
  const PropertyList after = profiles(record(16, 4), record(20, 0), record(50, 3));
  EXPECT_EQ(withReferencesKept(before, after, secondOfFour, PropertyList()), after);
}

TEST(ReferencesTest, AreThoseOfTheKeymapThatIsInForceByNow) {
  const PropertyList before = profiles(macro(3), macro(3), macro(2));
  PropertyList after = before;
  for (int position = 0; position < 2; ++position) {
    const PropertyList& keymap = before.at(position)["Keymap"].at(2);
    after = after.replacing(
        position,
        after.at(position).with("KeymapID", 2).with("Keys", keymap["Keys"]).with("Buttons", keymap["Buttons"]));
  }
  const PropertyList kept = withReferencesKept(before, after, secondOfFour, PropertyList());
  for (const PropertyList& each : kept.elements()) {
    EXPECT_EQ(each["Keys"], groups(tabKey, macro(1))["Keys"]);
    EXPECT_EQ(each["Buttons"], groups(tabKey, macro(1))["Buttons"]);
    EXPECT_EQ(each["Keymap"],
              PropertyList::array({groups(macro(1), scrollUp), groups(macro(2), macro(2)), groups(tabKey, macro(1))}));
  }
}

TEST(ReferencesTest, ToProfilesFollowTheProfileThatMovesUp) {
  const PropertyList all = profiles(profile(2), profile(1), profile(0)).appending(groups(profile(1), profile(2)));
  const Deletion deletion = {AssignmentCommand::Profile, 1, 3};
  PropertyList expected = profiles(profile(1), scrollUp, profile(0));
  expected = expected.removing(1).appending(groups(tabKey, profile(1)));
  EXPECT_EQ(withReferencesKept(all, all.removing(1), deletion, PropertyList()), expected);
}

TEST(ReferencesTest, AreNotTouchedWhereTheProfilesAreOthersThanBefore) {
  const PropertyList before = profiles(macro(3), macro(1), macro(2));
  const PropertyList after = before.removing(1);
  EXPECT_EQ(withReferencesKept(before, after, secondOfFour, PropertyList()), after);
  EXPECT_EQ(withReferencesKept(before, before, {AssignmentCommand::Profile, 1, 2}, PropertyList()), before);
}

TEST(ReferencesTest, OfHostileSettingsHarmNothing) {
  for (const PropertyList& hostile :
       {PropertyList(), PropertyList(3), PropertyList::array({PropertyList(), PropertyList("x")}),
        PropertyList::array({PropertyList::dictionary({{"Keys", PropertyList::array({macro(3)})}, {"Keymap", 5}}),
                             PropertyList::dictionary({{"Keymap", PropertyList::array({1, macro(3)})}})})}) {
    EXPECT_EQ(afterDeletion(hostile, secondOfFour), hostile) << hostile.description();
    EXPECT_EQ(referencesTo(hostile, secondOfFour), std::vector<Reference>());
  }
}

TEST(ReferencesTest, ThatAreLostAreListedOncePerControlInWhateverKeymap) {
  EXPECT_EQ(referencesTo(profiles(macro(1), macro(0), macro(1)), secondOfFour),
            (std::vector<Reference>{{0, "06"}, {0, "43"}, {1, "06"}, {1, "43"}}));
  EXPECT_EQ(referencesTo(profiles(macro(2), profile(1), tabKey), secondOfFour), std::vector<Reference>());
  EXPECT_EQ(referencesTo(profiles(profile(1), tabKey, tabKey), {AssignmentCommand::Profile, 1, 2}),
            (std::vector<Reference>{{0, "43"}}));
}

}  // namespace
}  // namespace vorn
