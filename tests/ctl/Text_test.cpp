#include "ctl/Text.h"

#include <gtest/gtest.h>

namespace vorn::ctl {
namespace {

TEST(TextTest, ShowsControlCharactersEscaped) {
  const std::pair<std::string_view, const char*> table[] = {
      {"Größe 設定 😀 \\", "Größe 設定 😀 \\"},
      {"a\nb\tc\rd", "a\\nb\\tc\\u000dd"},
      {std::string_view("\0", 1), "\\u0000"},
      {"\x1b[2J\x7f", "\\u001b[2J\\u007f"},
      {"\u0080\u009b31m\u009f\u00a0", "\\u0080\\u009b31m\\u009f\u00a0"},
      {"\u202a\u202e\u2066\u2069", "\\u202a\\u202e\\u2066\\u2069"},
      {"\u2027\u202f\u2065\u206a", "\u2027\u202f\u2065\u206a"},
      {"\u2028\u2029", "\\u2028\\u2029"},
      {"\x9b\xc3", "\\x9b\\xc3"},
  };
  for (const auto& [text, expected] : table) EXPECT_EQ(printable(text), expected);
}

TEST(TextTest, IsTheSameInEveryCaseOfItsLetters) {
  EXPECT_EQ(foldedCase("Größe ΣΑΣ Ёж 2"), foldedCase("gRÖßE σασ ёЖ 2"));
  EXPECT_NE(foldedCase("Größe"), foldedCase("Grosse"));
  EXPECT_NE(foldedCase("\x9b"), foldedCase("\xbb"));
}

}  // namespace
}  // namespace vorn::ctl
