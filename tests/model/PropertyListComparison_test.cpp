#include <gtest/gtest.h>

#include <limits>

#include "model/PropertyList.h"
#include "model/RawBinaryList.h"

namespace vorn {
namespace {

TEST(PropertyListComparisonTest, NeedsTheSameTypeAndContent) {
  const std::vector<PropertyList> different = {PropertyList(),
                                               false,
                                               true,
                                               0,
                                               1,
                                               std::numeric_limits<std::uint64_t>::max(),
                                               0.0,
                                               1.0,
                                               "",
                                               "1",
                                               PropertyList::data({}),
                                               PropertyList::data(Bytes{49}),
                                               PropertyList::Date{1},
                                               PropertyList::Uid{1},
                                               PropertyList::array(),
                                               PropertyList::array({1}),
                                               PropertyList::array({1, 1}),
                                               PropertyList::dictionary(),
                                               PropertyList::dictionary({{"1", 1}}),
                                               PropertyList::dictionary({{"1", 2}}),
                                               PropertyList::dictionary({{"2", 1}})};
  for (std::size_t i = 0; i < different.size(); ++i) {
    for (std::size_t j = 0; j < different.size(); ++j) {
      EXPECT_EQ(different[i] == different[j], i == j) << different[i].description() << different[j].description();
    }
  }
}

TEST(PropertyListComparisonTest, ComparesRealsByValueAndNotANumberWithItself) {
  EXPECT_EQ(PropertyList(0.0), PropertyList(-0.0));
  EXPECT_EQ(PropertyList(std::numeric_limits<double>::quiet_NaN()),
            PropertyList(-std::numeric_limits<double>::quiet_NaN()));
  EXPECT_NE(PropertyList(std::numeric_limits<double>::quiet_NaN()), PropertyList(0.0));
  EXPECT_EQ(PropertyList(PropertyList::Date{0.0}), PropertyList(PropertyList::Date{-0.0}));
}

TEST(PropertyListComparisonTest, HoldsForEqualContentInOtherStorage) {
  EXPECT_EQ(test::sampleOfAllKinds(), test::sampleOfAllKinds());
  EXPECT_NE(test::sampleOfAllKinds(), test::sampleOfAllKinds().without("uid"));
  EXPECT_NE(test::sampleOfAllKinds(),
            test::sampleOfAllKinds().with("dictionary", PropertyList::dictionary({{"array", true}, {"ascii", true}})));
}

}  // namespace
}  // namespace vorn
