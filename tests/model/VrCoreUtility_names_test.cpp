#include <gtest/gtest.h>

#include <random>

#include "model/RawBinaryList.h"
#include "model/VrCoreUtility.h"

namespace vorn {
namespace {

PropertyList recordsNamed(const std::vector<std::string>& names, std::string_view key) {
  std::vector<PropertyList> records;
  for (const std::string& name : names) records.push_back(PropertyList::dictionary({{key, name}, {"macroID", 7}}));
  return PropertyList::array(records);
}

// The rule told step by step, each match kept in a list.
std::string nameByTheRule(const std::vector<std::string>& names, const std::string& wanted) {
  if (names.empty()) return wanted;
  std::string candidate = wanted;
  std::vector<std::string> matches;
  for (std::size_t pass = 0; pass < names.size(); ++pass) {
    for (const std::string& name : names) {
      if (name == candidate) matches.push_back(name);
    }
    if (!matches.empty()) candidate = wanted + "(" + std::to_string(matches.size() + 1) + ")";
  }
  return matches.empty() ? wanted : wanted + "(" + std::to_string(matches.size() + 1) + ")";
}

class VrCoreUtilityNameTest : public testing::TestWithParam<std::string_view> {
 protected:
  static std::string generate(const std::vector<std::string>& names, std::string_view wanted) {
    return VrCoreUtility::generateName(recordsNamed(names, GetParam()), wanted, GetParam());
  }
};

TEST_P(VrCoreUtilityNameTest, IsTheWantedNameWithoutRecords) {
  EXPECT_EQ(generate({}, "A"), "A");
  EXPECT_EQ(VrCoreUtility::generateName(PropertyList(), "A", GetParam()), "A");
}

TEST_P(VrCoreUtilityNameTest, IsTheWantedNameWhenNoRecordHasIt) {
  EXPECT_EQ(generate({"B", "C"}, "A"), "A");
  EXPECT_EQ(generate({"a", " A", "A ", "A(2)"}, "A"), "A");
}

TEST_P(VrCoreUtilityNameTest, GetsASuffixWithoutABlankFromTwoOn) {
  EXPECT_EQ(generate({"A"}, "A"), "A(2)");
  EXPECT_EQ(generate({"A", "B"}, "A"), "A(2)");
}

TEST_P(VrCoreUtilityNameTest, CountsTheMatchesOfEveryCandidate) {
  EXPECT_EQ(generate({"A", "A(2)"}, "A"), "A(3)");
  EXPECT_EQ(generate({"A(2)", "A"}, "A"), "A(3)");
  EXPECT_EQ(generate({"A", "A(2)", "A(3)"}, "A"), "A(4)");
}

TEST_P(VrCoreUtilityNameTest, CountsMatchesInsteadOfLookingForAFreeNumber) {
  EXPECT_EQ(generate({"A", "A"}, "A"), "A(3)");
  EXPECT_EQ(generate({"A", "A(3)"}, "A"), "A(2)");
  EXPECT_EQ(generate({"A", "A", "A(2)"}, "A"), "A(3)");
  EXPECT_EQ(generate({"A", "A", "A(3)", "A(3)"}, "A"), "A(5)");
}

TEST_P(VrCoreUtilityNameTest, TakesASuffixAsPartOfTheWantedName) {
  EXPECT_EQ(generate({"A(2)"}, "A(2)"), "A(2)(2)");
  EXPECT_EQ(generate({"A", "A(2)"}, "A(2)"), "A(2)(2)");
}

TEST_P(VrCoreUtilityNameTest, ReadsOnlyTheKeyOfItsList) {
  const std::string_view other = GetParam() == keys::MacroName ? keys::ProfileName : keys::MacroName;
  EXPECT_EQ(VrCoreUtility::generateName(recordsNamed({"A"}, other), "A", GetParam()), "A");
}

TEST_P(VrCoreUtilityNameTest, SurvivesRecordsWithoutANameAndThingsThatAreNoRecords) {
  const PropertyList records =
      PropertyList::array({1, "A", PropertyList::dictionary(), PropertyList::dictionary({{GetParam(), 5}}),
                           PropertyList::dictionary({{GetParam(), "A"}})});
  EXPECT_EQ(VrCoreUtility::generateName(records, "A", GetParam()), "A(2)");
  EXPECT_EQ(VrCoreUtility::generateName(PropertyList::dictionary({{"A", 1}}), "A", GetParam()), "A");
}

TEST_P(VrCoreUtilityNameTest, FollowsTheRuleForRandomLists) {
  std::mt19937 random(20120229);
  const std::vector<std::string> pool = {"A",       "A(2)", "A(3)", "A(4)", "A(5)", "A(6)",      "A(2)(2)",
                                         "A(2)(3)", "B",    "",     "(2)",  "a",    "A(2)(2)(2)"};
  for (int round = 0; round < 5000; ++round) {
    std::vector<std::string> names(random() % 12);
    for (std::string& name : names) name = pool[random() % pool.size()];
    const std::string& wanted = pool[random() % pool.size()];
    ASSERT_EQ(generate(names, wanted), nameByTheRule(names, wanted)) << testing::PrintToString(names) << wanted;
  }
}

TEST_P(VrCoreUtilityNameTest, IsFoundQuicklyInALongList) {
  std::vector<std::string> names{"A"};
  for (int i = 2; i <= 100000; ++i) names.push_back("A(" + std::to_string(i) + ")");
  EXPECT_EQ(generate(names, "A"), "A(100001)");
}

INSTANTIATE_TEST_SUITE_P(OfEachList, VrCoreUtilityNameTest, testing::Values(keys::MacroName, keys::ProfileName),
                         [](const auto& key) { return std::string(key.param); });

TEST(VrCoreUtilityMacroNameTest, IsMadeWithoutNamingTheKey) {
  EXPECT_EQ(VrCoreUtility::generateName(recordsNamed({"Untitled Macro"}, keys::MacroName), "Untitled Macro"),
            "Untitled Macro(2)");
}

}  // namespace
}  // namespace vorn
