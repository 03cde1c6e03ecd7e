#include "ctl/Json.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorn::ctl {
namespace {

TEST(JsonTest, WritesEveryKindOfValue) {
  const PropertyList value = PropertyList::dictionary(
      {{"a", PropertyList::array({PropertyList(), true, false, -5, ~std::uint64_t{0}, 0.25, 1e300})},
       {"b \"\\\n\t\x01\x7f", "grün"},
       {"c", PropertyList::data(Bytes{0, 171, 255})},
       {"d", PropertyList::Date{1.5}},
       {"e", PropertyList::Uid{7}},
       {"f", PropertyList::array({PropertyList::dictionary(), PropertyList::array()})},
       {"g", std::numeric_limits<double>::quiet_NaN()}});
  EXPECT_EQ(jsonOf(value), R"({"a":[null,true,false,-5,18446744073709551615,0.25,1e+300],)"
                           R"("b \"\\\n\t\u0001\u007f":"grün","c":"00abff","d":1.5,"e":7,"f":[{},[]],"g":null})");
}

TEST(JsonTest, EscapesWhatATerminalMustNotGet) {
  EXPECT_EQ(jsonOf(PropertyList("\u0085\u009b\u202e\u2069 \x9b \"\\")), R"("\u0085\u009b\u202e\u2069 \ufffd \"\\")");
}

}  // namespace
}  // namespace vorn::ctl
