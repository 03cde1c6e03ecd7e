#include "ctl/Names.h"

#include <gtest/gtest.h>

namespace vorn::ctl {
namespace {

using Positions = std::vector<std::size_t>;

TEST(NamesTest, AreFoundInAnyCaseUnlessOneIsTheSame) {
  const Names names = {"Work", "Games", "games", "Öl"};
  EXPECT_EQ(positionsNamed(names, "work"), Positions{0});
  EXPECT_EQ(positionsNamed(names, "öL"), Positions{3});
  EXPECT_EQ(positionsNamed(names, "games"), Positions{2});
  EXPECT_EQ(positionsNamed(names, "GAMES"), (Positions{1, 2}));
  EXPECT_EQ(positionsNamed(names, "Wor"), Positions());
  EXPECT_EQ(positionsNamed({"A", "A"}, "A"), (Positions{0, 1}));
}

TEST(NamesTest, AreAsFarApartAsSlipsOfThePen) {
  const std::tuple<const char*, const char*, std::size_t> table[] = {
      {"", "", 0},     {"list", "list", 0},        {"LIST", "list", 0}, {"lsit", "list", 1}, {"lst", "list", 1},
      {"", "list", 4}, {"profile", "profiles", 1}, {"get", "set", 1},   {"abc", "xyz", 3},   {"ab", "bca", 3},
  };
  for (const auto& [left, right, expected] : table) {
    EXPECT_EQ(distance(left, right), expected) << left << " " << right;
    EXPECT_EQ(distance(right, left), expected) << left << " " << right;
  }
}

TEST(NamesTest, AreSuggestedWhereTheyAreNearest) {
  const Names names = {"DPIX", "DPIY", "Stages"};
  EXPECT_EQ(suggestion(names, "DPI"), "; did you mean \"DPIX\" or \"DPIY\"?");
  EXPECT_EQ(suggestion(names, "Stage"), "; did you mean \"Stages\"?");
  EXPECT_EQ(suggestion(names, "Polling", "; no"), "; no");
  EXPECT_EQ(suggestion(names, std::string(100'000, 'x')), "");
  EXPECT_EQ(alternatives({"a", "b", "c"}), "a, b or c");
}

}  // namespace
}  // namespace vorn::ctl
