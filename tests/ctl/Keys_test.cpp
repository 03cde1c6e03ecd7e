#include "ctl/Keys.h"

#include <gtest/gtest.h>

namespace vorn::ctl {
namespace {

TEST(KeysTest, AreFoundByNameAndUsage) {
  const std::pair<const char*, int> table[] = {
      {"a", 4},           {"F5", 62},         {"page-up", 75}, {"Left Shift", 225}, {"-", 45},      {"numpad--", 0},
      {"usage:100", 100}, {"usage:231", 231}, {"usage:3", 0},  {"usage:232", 0},    {"usage:x", 0}, {"frob", 0},
  };
  for (const auto& [name, expected] : table) EXPECT_EQ(keyUsage(name).value_or(0), expected) << name;
}

TEST(KeysTest, AreModifiersWithAndWithoutASide) {
  const std::pair<const char*, int> table[] = {{"control", 224}, {"Shift", 225},     {"alt", 226},
                                               {"Command", 227}, {"right-alt", 230}, {"A", 0}};
  for (const auto& [name, expected] : table) EXPECT_EQ(modifierUsage(name).value_or(0), expected) << name;
}

}  // namespace
}  // namespace vorn::ctl
