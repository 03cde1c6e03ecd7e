#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/PropertyList.h"
#include "model/RawBinaryList.h"

namespace vorn {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::int32_t intMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t intMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t int64Max = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t int64Min = std::numeric_limits<std::int64_t>::min();
constexpr std::uint64_t unsignedMax = std::numeric_limits<std::uint64_t>::max();

struct Conversion {
  PropertyList value;
  std::int32_t asInt;
  std::int64_t asInt64;
  std::uint64_t asUnsigned;
  double asDouble;
  bool asBool;
};

void expectConversions(const std::vector<Conversion>& table) {
  for (const Conversion& row : table) {
    SCOPED_TRACE(row.value.description());
    EXPECT_EQ(row.value.toInt(), row.asInt);
    EXPECT_EQ(row.value.toInt64(), row.asInt64);
    EXPECT_EQ(row.value.toUnsigned(), row.asUnsigned);
    if (std::isnan(row.asDouble)) {
      EXPECT_TRUE(std::isnan(row.value.toDouble()));
    } else {
      EXPECT_EQ(row.value.toDouble(), row.asDouble);
    }
    EXPECT_EQ(row.value.toBool(), row.asBool);
  }
}

TEST(PropertyListNumbersTest, ReadBooleansAsZeroAndOne) {
  expectConversions({{true, 1, 1, 1, 1.0, true}, {false, 0, 0, 0, 0.0, false}});
}

TEST(PropertyListNumbersTest, KeepTheLowBitsOfIntegers) {
  expectConversions(
      {{0, 0, 0, 0, 0.0, false},
       {-1, -1, -1, unsignedMax, -1.0, true},
       {std::int64_t{1} << 32, 0, std::int64_t{1} << 32, std::uint64_t{1} << 32, 4294967296.0, true},
       {(std::int64_t{1} << 32) + 5, 5, (std::int64_t{1} << 32) + 5, (std::uint64_t{1} << 32) + 5, 4294967301.0, true},
       {int64Max, -1, int64Max, static_cast<std::uint64_t>(int64Max), 9223372036854775808.0, true},
       {int64Min, 0, int64Min, std::uint64_t{1} << 63, -9223372036854775808.0, true},
       {unsignedMax, -1, -1, unsignedMax, 18446744073709551616.0, true}});
}

TEST(PropertyListNumbersTest, TruncateAndClampReals) {
  expectConversions({{2.9, 2, 2, 2, 2.9, true},
                     {-2.9, -2, -2, 0, -2.9, true},
                     {0.5, 0, 0, 0, 0.5, true},
                     {1e10, intMax, 10000000000, 10000000000u, 1e10, true},
                     {-1e10, intMin, -10000000000, 0, -1e10, true},
                     {1e19, intMax, int64Max, 10000000000000000000u, 1e19, true},
                     {1e300, intMax, int64Max, unsignedMax, 1e300, true},
                     {infinity, intMax, int64Max, unsignedMax, infinity, true},
                     {-infinity, intMin, int64Min, 0, -infinity, true},
                     {2147483647.5, intMax, 2147483647, 2147483647, 2147483647.5, true},
                     {-2147483648.5, intMin, -2147483648, 0, -2147483648.5, true},
                     {std::nan(""), 0, 0, 0, std::nan(""), true}});
}

TEST(PropertyListNumbersTest, ReadDecimalStrings) {
  expectConversions(
      {{"42", 42, 42, 42, 42.0, true},
       {" \t\n 42 apples", 42, 42, 42, 42.0, true},
       {"+7", 7, 7, 7, 7.0, true},
       {"-7", -7, -7, unsignedMax - 6, -7.0, true},
       {"3.75", 3, 3, 3, 3.75, true},
       {".5", 0, 0, 0, 0.5, true},
       {"1e3", 1, 1, 1, 1000.0, true},
       {"0x10", 0, 0, 0, 0.0, false},
       {"", 0, 0, 0, 0.0, false},
       {"-", 0, 0, 0, 0.0, false},
       {"+-5", 0, 0, 0, 0.0, false},
       {"apples", 0, 0, 0, 0.0, false},
       {"inf", 0, 0, 0, 0.0, false},
       {"99999999999", intMax, 99999999999, 99999999999u, 99999999999.0, true},
       {"-99999999999", intMin, -99999999999, static_cast<std::uint64_t>(-99999999999), -99999999999.0, true},
       {"18446744073709551615", intMax, int64Max, unsignedMax, 18446744073709551616.0, true},
       {"99999999999999999999999", intMax, int64Max, unsignedMax, 99999999999999999999999.0, true},
       {"-99999999999999999999999", intMin, int64Min, std::uint64_t{1} << 63, -99999999999999999999999.0, true},
       {"1e999", 1, 1, 1, infinity, true},
       {"-1e999", -1, -1, unsignedMax, -infinity, true},
       {"1e-999", 1, 1, 1, 0.0, false}});
}

TEST(PropertyListNumbersTest, ReadStringsThatSayYesAsTrue) {
  for (const char* text : {"YES", "yes", "True", "t", " y", "1", "-3"})
    EXPECT_TRUE(PropertyList(text).toBool()) << text;
  for (const char* text : {"NO", "false", "0", "", "on", "0.0"}) EXPECT_FALSE(PropertyList(text).toBool()) << text;
}

TEST(PropertyListNumbersTest, AreZeroForEverythingElse) {
  expectConversions({{PropertyList(), 0, 0, 0, 0.0, false},
                     {PropertyList::data(Bytes{49}), 0, 0, 0, 0.0, false},
                     {PropertyList::Date{5}, 0, 0, 0, 0.0, false},
                     {PropertyList::Uid{5}, 0, 0, 0, 0.0, false},
                     {PropertyList::array({1}), 0, 0, 0, 0.0, false},
                     {PropertyList::dictionary({{"1", 1}}), 0, 0, 0, 0.0, false}});
}

}  // namespace
}  // namespace vorn
