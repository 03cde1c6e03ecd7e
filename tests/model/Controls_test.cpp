#include "model/Controls.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace vorn {
namespace {

TEST(ControlsTest, AreNumberedInTheirOrderAndNamedOnce) {
  std::set<std::string_view> identifiers;
  std::set<std::string_view> names;
  int number = 0;
  for (const Control& control : controls) {
    EXPECT_EQ(control.number, ++number);
    identifiers.insert(control.identifier);
    names.insert(control.name);
  }
  EXPECT_EQ(identifiers.size(), controls.size());
  EXPECT_EQ(names.size(), controls.size());
}

TEST(ControlsTest, OfTheWheelAreButtonsAndAllOthersKeys) {
  for (const Control& control : controls) {
    EXPECT_EQ(control.group, control.family == ControlFamily::Wheel ? "Buttons" : "Keys") << control.number;
  }
}

TEST(ControlsTest, FillTheTwoGroupsInTheirOrder) {
  EXPECT_EQ(
      std::vector(keys::keyIdentifiers.begin(), keys::keyIdentifiers.end()),
      (std::vector<std::string_view>{"43", "20", "26", "8",   "21", "57",  "4",  "22",  "7",  "9",   "225", "29",
                                     "27", "6",  "44", "226", "82", "233", "79", "235", "81", "234", "80",  "232"}));
  EXPECT_EQ(std::vector(keys::buttonIdentifiers.begin(), keys::buttonIdentifiers.end()),
            (std::vector<std::string_view>{"03", "06", "07"}));
}

TEST(ControlsTest, ThatSendAKeyAreNamedLikeIt) {
  for (const Control& control : controls) {
    const bool isKey = control.group == keys::Keys && !control.isDiagonal();
    EXPECT_EQ(isKey ? control.name : "", isKey ? hid::keyName(control.code()) : "") << control.number;
  }
}

TEST(ControlsTest, BetweenTwoArrowsHoldBoth) {
  // Going round the direction pad, every other control lies between its two neighbours.
  const std::size_t first = 19;
  for (std::size_t place = 0; place < 8; ++place) {
    const Control& control = controls[first + place];
    EXPECT_EQ(control.family, ControlFamily::DirectionPad);
    EXPECT_EQ(control.isDiagonal(), place % 2 == 1);
    if (!control.isDiagonal()) continue;
    const std::multiset<int> neighbours = {controls[first + place - 1].code(),
                                           controls[first + (place + 1) % 8].code()};
    EXPECT_EQ(std::multiset<int>(control.arrows.begin(), control.arrows.end()), neighbours) << control.name;
    EXPECT_EQ(diagonalOf(control.code()), &control);
  }
}

TEST(ControlsTest, AreFoundByIdentifierOnly) {
  for (const Control& control : controls) EXPECT_EQ(controlOf(control.identifier), &control);
  for (const std::string_view other : {"", "3", "043", "1", "99", "Tab", "keymap"}) {
    EXPECT_EQ(controlOf(other), nullptr) << other;
  }
}

TEST(ControlsTest, AreNoDiagonalsByAnArrowOrAnyOtherNumber) {
  for (const std::int64_t code : {0, 79, 82, 231, 236, -232}) EXPECT_EQ(diagonalOf(code), nullptr) << code;
}

TEST(ControlsTest, ThatTurnTheWheelAreTwo) {
  std::vector<int> numbers;
  for (const Control& control : controls) {
    if (isWheelTurn(control.identifier)) numbers.push_back(control.number);
  }
  EXPECT_EQ(numbers, (std::vector{18, 19}));
}

TEST(ControlsTest, ShareNoNameWithTheFixedKeys) {
  for (const std::string_view key : fixedKeys) EXPECT_EQ(controlOf(key), nullptr) << key;
}

}  // namespace
}  // namespace vorn
