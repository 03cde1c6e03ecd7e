#include "model/RecordLimits.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

PropertyList nested(int arrays) {
  PropertyList result = 1;
  for (int level = 0; level < arrays; ++level) result = PropertyList::array({result});
  return result;
}

// A dictionary with one text, of this size as the limits count it.
PropertyList ofSize(std::size_t size) {
  return PropertyList::dictionary({{"key", std::string(size - 8 - 3 - 8, 'x')}});
}

TEST(RecordLimitsTest, TakeARecordOfExactlyTheLargestSize) {
  EXPECT_TRUE(isWithinRecordLimits(ofSize(1024 * 1024)));
  EXPECT_FALSE(isWithinRecordLimits(ofSize(1024 * 1024 + 1)));
}

TEST(RecordLimitsTest, CountDataAndKeysLikeText) {
  const Bytes most(1024 * 1024 - 8, 0);
  const Bytes tooMany(1024 * 1024 - 7, 0);
  EXPECT_TRUE(isWithinRecordLimits(PropertyList::data(most)));
  EXPECT_FALSE(isWithinRecordLimits(PropertyList::data(tooMany)));
  EXPECT_FALSE(isWithinRecordLimits(PropertyList::dictionary({{std::string(1024 * 1024, 'k'), 1}})));
}

TEST(RecordLimitsTest, TakeARecordOfExactlyTheGreatestDepth) {
  EXPECT_TRUE(isWithinRecordLimits(nested(32)));
  EXPECT_FALSE(isWithinRecordLimits(nested(33)));
}

TEST(RecordLimitsTest, RefuseARecordThatSharesItsPartsToGrowWithoutEnd) {
  PropertyList value = "x";
  for (int level = 0; level < 25; ++level) value = PropertyList::array(std::vector<PropertyList>(1000, value));
  EXPECT_FALSE(isWithinRecordLimits(value));
}

TEST(RecordLimitsTest, RefuseAnEndlessArrayOfNumbers) {
  EXPECT_FALSE(isWithinRecordLimits(PropertyList::array(std::vector<PropertyList>(200'000, 1))));
}

}  // namespace
}  // namespace vorn
