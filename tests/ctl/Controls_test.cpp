#include "ctl/Controls.h"

#include <gtest/gtest.h>

#include <string>

namespace vorn::ctl {
namespace {

int numberNamed(std::string_view word) {
  const Control* control = controlNamed(word);
  return control != nullptr ? control->number : 0;
}

TEST(ControlsTest, AreNumbersIdentifiersAndNames) {
  for (const Control& control : controls) {
    EXPECT_EQ(numberNamed(std::to_string(control.number)), control.number);
    EXPECT_EQ(numberNamed("id:" + std::string(control.identifier)), control.number);
    EXPECT_EQ(numberNamed(control.name), control.number);
  }
  const std::pair<std::string_view, int> table[] = {
      {"20", 20},       {"id:20", 2},     {"43", 1},          {"233", 21},      {"03", 17}, {"06", 18},
      {"wheel-up", 18}, {"CAPS LOCK", 6}, {"left-shift", 11}, {"up-right", 21}, {"0", 0},   {"28", 0},
      {"-1", 0},        {"", 0},          {"id:", 0},         {"id:1", 0},      {"F5", 0},  {"99999999999999999999", 0},
  };
  for (const auto& [word, expected] : table) EXPECT_EQ(numberNamed(word), expected) << word;
}

}  // namespace
}  // namespace vorn::ctl
