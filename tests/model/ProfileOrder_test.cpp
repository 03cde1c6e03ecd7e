#include "model/ProfileOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "model/SettingsKeys.h"

namespace vorn {
namespace {

PropertyList record(int command, const PropertyList& param1) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", 0}});
}

PropertyList switchTo(const PropertyList& profile) {
  return record(17, profile);
}

PropertyList groups(const PropertyList& tab, const PropertyList& wheel) {
  return PropertyList::dictionary({{"Keys", PropertyList::dictionary({{"43", tab}, {"20", record(16, 1)}})},
                                   {"Buttons", PropertyList::dictionary({{"06", wheel}})}});
}

// With two keymaps; every control but two switches to the profile.
PropertyList profile(const char* name, const PropertyList& tab, const PropertyList& other) {
  return groups(tab, other)
      .with("ProfileName", name)
      .with("Keymap", PropertyList::array({groups(other, tab), groups(tab, record(10, 0))}));
}

TEST(ProfileOrderTest, OfAMoveMakesRoomForTheMovedOne) {
  EXPECT_EQ(orderAfterMove(4, 0, 2), (ProfileOrder{1, 2, 0, 3}));
  EXPECT_EQ(orderAfterMove(4, 3, 1), (ProfileOrder{0, 3, 1, 2}));
  EXPECT_EQ(orderAfterMove(4, 2, 3), (ProfileOrder{0, 1, 3, 2}));
  EXPECT_EQ(orderAfterMove(3, 1, 1), (ProfileOrder{0, 1, 2}));
  EXPECT_EQ(orderAfterMove(1, 0, 0), (ProfileOrder{0}));
}

TEST(ProfileOrderTest, IsReadFromAnArrayOfEachPositionOnce) {
  const ProfileOrder order = {2, 0, 1};
  EXPECT_EQ(orderRecord(order), PropertyList::array({2, 0, 1}));
  EXPECT_EQ(orderOfRecord(orderRecord(order)), order);
  EXPECT_EQ(orderOfRecord(PropertyList::array()), ProfileOrder());
  for (const PropertyList& bad :
       {PropertyList(), PropertyList(0), PropertyList("0"), PropertyList::array({1}), PropertyList::array({0, 0}),
        PropertyList::array({-1, 0}), PropertyList::array({0, "1"}), PropertyList::array({false, true}),
        PropertyList::array({0.0, 1.0}), PropertyList::array({0, std::uint64_t(1) << 63})}) {
    EXPECT_EQ(orderOfRecord(bad), std::nullopt) << bad.description();
  }
}

TEST(ProfileOrderTest, GivesEachProfileItsPlace) {
  const ProfileOrder order = {2, 0, 1};
  EXPECT_EQ(placeInOrder(order, 2), 0);
  EXPECT_EQ(placeInOrder(order, 0), 1);
  EXPECT_EQ(placeInOrder(order, 1), 2);
  for (const std::int64_t none : {-1, 3}) EXPECT_EQ(placeInOrder(order, none), none);
}

TEST(ProfileOrderTest, TakesTheControlsThatSwitchToAProfileAlong) {
  const PropertyList before =
      PropertyList::array({profile("A", switchTo(1), record(10, 1)), profile("B", switchTo(0), switchTo(2)),
                           profile("C", record(50, 1), switchTo(2))});
  EXPECT_EQ(profilesInOrder(before, {1, 2, 0}),
            PropertyList::array({profile("B", switchTo(2), switchTo(1)), profile("C", record(50, 1), switchTo(1)),
                                 profile("A", switchTo(0), record(10, 1))}));
}

TEST(ProfileOrderTest, LeavesAControlThatSwitchesToNoProfileAsItIs) {
  for (const PropertyList& none : {PropertyList(2), PropertyList(-1), PropertyList("0"), PropertyList(0.0)}) {
    const PropertyList one = profile("A", switchTo(none), record(45, 0));
    const PropertyList two = profile("B", record(45, 0), record(45, 0));
    EXPECT_EQ(profilesInOrder(PropertyList::array({one, two}), {1, 0}), PropertyList::array({two, one}));
  }
}

TEST(ProfileOrderTest, ChangesNothingInProfilesThatStayWhereTheyAre) {
  const PropertyList before = PropertyList::array({profile("A", switchTo(1), switchTo(0)), PropertyList::dictionary()});
  EXPECT_EQ(profilesInOrder(before, {0, 1}), before);
  EXPECT_EQ(profileNames(before), PropertyList::array({"A", PropertyList()}));
}

// Whatever the order, every control leads to the profile of the same name, and the order turned round brings all back.
TEST(ProfileOrderTest, LeadsToTheProfilesOfTheSameNames) {
  std::mt19937 random{2026};
  for (int round = 0; round < 500; ++round) {
    const std::size_t count = 1 + random() % 5;
    std::vector<PropertyList> records;
    for (std::size_t position = 0; position < count; ++position) {
      const std::string name(1, static_cast<char>('A' + position));
      records.push_back(profile(name.c_str(), switchTo(random() % count), switchTo(random() % count)));
    }
    const PropertyList before = PropertyList::array(records);
    ProfileOrder order = orderAfterMove(count, 0, 0);
    std::ranges::shuffle(order, random);
    const PropertyList after = profilesInOrder(before, order);
    ASSERT_EQ(after.size(), count);
    ProfileOrder back(count);
    for (std::size_t place = 0; place < count; ++place) {
      back[order[place]] = place;
      const auto nameOfTarget = [](const PropertyList& all, const PropertyList& holder, const char* group,
                                   const char* control) {
        return all.at(holder[group][control]["param1"].toInt64())["ProfileName"];
      };
      const PropertyList& was = before.at(static_cast<std::int64_t>(order[place]));
      const PropertyList& is = after.at(static_cast<std::int64_t>(place));
      EXPECT_EQ(is["ProfileName"], was["ProfileName"]);
      EXPECT_EQ(nameOfTarget(after, is, "Keys", "43"), nameOfTarget(before, was, "Keys", "43"));
      EXPECT_EQ(nameOfTarget(after, is["Keymap"].at(0), "Buttons", "06"),
                nameOfTarget(before, was["Keymap"].at(0), "Buttons", "06"));
    }
    EXPECT_EQ(profilesInOrder(after, back), before);
  }
}

}  // namespace
}  // namespace vorn
