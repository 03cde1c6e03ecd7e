#include "core-engine/history/SharedValues.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/PropertyListCodec.h"

namespace vorn::engine {
namespace {

PropertyList record(int number) {
  return PropertyList::dictionary(
      {{"name", "Jump"},
       {"bytes", PropertyList::data(Bytes(20, 7))},
       {"list", PropertyList::array({PropertyList::dictionary({{"delay", 5}, {"on", true}}), 0.5, "text",
                                     PropertyList::array(), "", PropertyList::Date{3.0}})},
       {"number", number}});
}

PropertyList reread(const PropertyList& value) {
  return decodeBinaryPropertyList(encodeBinaryPropertyList(value).value()).value();
}

// Where a value keeps what is in it.
const void* storageOf(const PropertyList& value) {
  if (value.isArray()) return value.elements().data();
  if (value.isDictionary()) return &value.valueAt(0);
  return value.isData() ? static_cast<const void*>(value.bytes().data()) : value.string().data();
}

TEST(SharedValuesTest, HoldsEqualValuesOnce) {
  SharedValues values;
  const PropertyList first = values.shared(reread(record(1)));
  const PropertyList second = values.shared(reread(record(1)));
  EXPECT_EQ(first, record(1));
  EXPECT_EQ(storageOf(first), storageOf(second));
}

TEST(SharedValuesTest, HoldsEqualPartsOfDifferentValuesOnce) {
  SharedValues values;
  const PropertyList first = values.shared(reread(record(1)));
  const PropertyList second = values.shared(reread(record(2)));
  EXPECT_EQ(first, record(1));
  EXPECT_EQ(second, record(2));
  for (const char* key : {"name", "bytes", "list"}) EXPECT_EQ(storageOf(first[key]), storageOf(second[key])) << key;
  // A part of the one is the whole of another.
  EXPECT_EQ(storageOf(values.shared(reread(record(1))["list"])), storageOf(first["list"]));
}

TEST(SharedValuesTest, HoldsNothingOfWhatItWasGiven) {
  const PropertyList given = reread(record(1));
  SharedValues values;
  const PropertyList shared = values.shared(given);
  EXPECT_NE(storageOf(shared), storageOf(given));
  for (const char* key : {"name", "bytes", "list"}) EXPECT_NE(storageOf(shared[key]), storageOf(given[key])) << key;
}

TEST(SharedValuesTest, TellsNearlyEqualValuesApart) {
  const std::vector<PropertyList> all = {
      PropertyList(),
      1,
      true,
      1.0,
      "1",
      PropertyList::data(Bytes{'1'}),
      PropertyList::Date{1.0},
      PropertyList::Uid{1},
      "",
      PropertyList::array(),
      PropertyList::dictionary(),
      PropertyList::array({"1"}),
      PropertyList::array({PropertyList::array({"1"})}),
      PropertyList::array({"1", ""}),
      PropertyList::array({"", "1"}),
      PropertyList::dictionary({{"1", ""}}),
      PropertyList::dictionary({{"", "1"}}),
      PropertyList::dictionary({{"1", PropertyList::array()}}),
  };
  SharedValues values;
  for (int round = 0; round < 2; ++round) {
    for (const PropertyList& each : all) {
      EXPECT_EQ(values.shared(each), each) << each.description();
      EXPECT_EQ(values.shared(each).type(), each.type());
    }
  }
}

}  // namespace
}  // namespace vorn::engine
