#include "ctl/Numbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorn::ctl {
namespace {

TEST(NumbersTest, AreWholeWords) {
  EXPECT_EQ(numberOf("0"), 0);
  EXPECT_EQ(numberOf("-5"), -5);
  EXPECT_EQ(numberOf("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  for (const char* word : {"", "-", "+5", " 5", "5 ", "5.0", "0x5", "five", "9223372036854775808"}) {
    EXPECT_EQ(numberOf(word), std::nullopt) << word;
  }
}

TEST(NumbersTest, StandWithinTheirBounds) {
  EXPECT_EQ(numberOf("1", 1, 8), 1);
  EXPECT_EQ(numberOf("8", 1, 8), 8);
  EXPECT_EQ(numberOf("0", 1, 8), std::nullopt);
  EXPECT_EQ(numberOf("9", 1, 8), std::nullopt);
  EXPECT_EQ(numberOf("x", 1, 8), std::nullopt);
}

}  // namespace
}  // namespace vorn::ctl
