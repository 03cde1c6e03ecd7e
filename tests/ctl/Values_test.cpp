#include "ctl/Values.h"

#include <gtest/gtest.h>

namespace vorn::ctl {
namespace {

PropertyList profile(const PropertyList& dpix, const PropertyList& red = 0.5) {
  return PropertyList::dictionary({{"ProfileName", "A"},
                                   {"Stages", PropertyList::array({PropertyList::dictionary({{"dpix", 400}}),
                                                                   PropertyList::dictionary({{"dpix", dpix}})})},
                                   {"LEDColors", PropertyList::array({PropertyList::dictionary({{"Red", red}})})}});
}

TEST(ValuesTest, AreFoundByTheirPath) {
  EXPECT_EQ(valueAt(profile(800), "ProfileName"), PropertyList("A"));
  EXPECT_EQ(valueAt(profile(800), "Stages/1/dpix"), PropertyList(800));
  for (const char* path : {"", "/", "Nope", "Stages/2", "Stages/-1", "Stages/x", "Stages//dpix", "ProfileName/x"}) {
    EXPECT_TRUE(valueAt(profile(800), path).isNone()) << path;
  }
}

TEST(ValuesTest, AreReplacedWhereTheyAre) {
  EXPECT_EQ(withValueAt(profile(800), "Stages/1/dpix", 900), profile(900));
  EXPECT_EQ(withValueAt(profile(800), "LEDColors/0/Red", 0.75), profile(800, 0.75));
}

TEST(ValuesTest, KeepTheirType) {
  struct Row {
    const char* word;
    PropertyList present;
    PropertyList expected;  // none: refused
  };
  const Row table[] = {
      {"5", 1, 5},
      {"-5", 1, -5},
      {"on", 0, 1},
      {"off", 1, 0},
      {"5.5", 1, {}},
      {"", 1, {}},
      {"5 ", 1, {}},
      {"0.5", 1.0, 0.5},
      {"2", 1.0, 2.0},
      {"inf", 1.0, {}},
      {"x", 1.0, {}},
      {"yes", false, true},
      {"0", true, false},
      {"maybe", true, {}},
      {"5", "text", "5"},
      {"", "text", ""},
      {"5", PropertyList::array(), {}},
  };
  for (const Row& row : table) {
    const auto value = parseValue(row.word, row.present);
    EXPECT_EQ(value ? *value : PropertyList(), row.expected) << row.word;
    if (value) continue;
    EXPECT_EQ(value.failure().status, ExitStatus::Usage);
  }
}

TEST(ValuesTest, AreShownAsTextOrJson) {
  EXPECT_EQ(textOf("a \"b\""), "a \"b\"");
  EXPECT_EQ(textOf(5), "5");
  EXPECT_EQ(textOf(PropertyList::array({1, "b"})), R"([1,"b"])");
}

TEST(ValuesTest, AreFoundInAnyCaseOfTheirKeys) {
  const auto stage = PropertyList::dictionary({{"dpix", 1}});
  const auto profile = PropertyList::dictionary(
      {{"DPIX", 1}, {"Stages", PropertyList::array({stage})}, {"twin", 1}, {"Twin", 2}, {"TWIN", 3}});
  EXPECT_EQ(*resolvedPath(profile, "dpix"), "DPIX");
  EXPECT_EQ(*resolvedPath(profile, "stages/0/DPIX"), "Stages/0/dpix");
  EXPECT_EQ(*resolvedPath(profile, "Twin"), "Twin");
  EXPECT_EQ(*resolvedPath(profile, "Nope/1"), "Nope/1");
  EXPECT_EQ(resolvedPath(profile, "tWIN").failure().text, "\"tWIN\" may be TWIN, Twin or twin");
}

}  // namespace
}  // namespace vorn::ctl
