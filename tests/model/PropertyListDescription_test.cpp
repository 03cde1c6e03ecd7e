#include <gtest/gtest.h>

#include "model/PropertyList.h"
#include "model/RawBinaryList.h"

namespace vorn {
namespace {

TEST(PropertyListDescriptionTest, ShowsEveryTypeOnOneLine) {
  const PropertyList value = PropertyList::dictionary(
      {{"a", PropertyList::array({true, -3, 2.0, 0.5, "x\n\"y\"", PropertyList()})},
       {"d", PropertyList::data(Bytes{0x0f, 0xa0})},
       {"t", PropertyList::array({PropertyList::Date{0}, PropertyList::Date{-0.5}, PropertyList::Date{1e300}})},
       {"u", PropertyList::array({PropertyList::Uid{3}, ~std::uint64_t{0}})}});
  EXPECT_EQ(value.description(),
            "{\"a\": [true, -3, 2.0, 0.5, \"x\\n\\\"y\\\"\", none], \"d\": <0fa0>, "
            "\"t\": [2001-01-01T00:00:00Z, 2000-12-31T23:59:59.500Z, 1e+300 s], "
            "\"u\": [uid 3, 18446744073709551615]}");
}

TEST(PropertyListDescriptionTest, CutsWhatIsTooLong) {
  const std::vector<PropertyList> many(1000000, PropertyList(7));
  EXPECT_EQ(PropertyList::array(many).description(10), "[7, 7, 7, ...");
  EXPECT_EQ(PropertyList("\u00e9\u00e9\u00e9").description(2), "\"...");
}

TEST(PropertyListDescriptionTest, SurvivesDeepAndSharedNesting) {
  PropertyList deep = PropertyList::array();
  for (int i = 0; i < 100000; ++i) deep = PropertyList::array({deep});
  EXPECT_LT(deep.description(1000000).size(), 2000u);
  PropertyList wide = PropertyList::array({1});
  for (int i = 0; i < 60; ++i) wide = PropertyList::array({wide, wide});
  EXPECT_LE(wide.description(5000).size(), 5200u);
}

}  // namespace
}  // namespace vorn
