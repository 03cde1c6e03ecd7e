#include "model/RememberedRecord.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

PropertyList named(const std::vector<std::string>& names) {
  std::vector<PropertyList> records;
  for (const std::string& name : names) records.push_back(PropertyList::dictionary({{"Name", name}}));
  return PropertyList::array(std::move(records));
}

std::optional<std::int64_t> place(const std::vector<std::string>& before, std::int64_t index,
                                  const std::vector<std::string>& now) {
  return RememberedRecord(named(before), index, "Name").placeIn(named(now));
}

TEST(RememberedRecordTest, StaysAtItsPlaceWhileItsNameStandsThere) {
  EXPECT_EQ(place({"A", "B", "C"}, 1, {"A", "B", "C"}), 1);
  EXPECT_EQ(place({"A", "B", "C"}, 1, {"X", "B"}), 1);
  EXPECT_EQ(RememberedRecord(named({"A", "B"}), 1, "Name").name(), "B");
}

TEST(RememberedRecordTest, IsFoundWhereItMoved) {
  EXPECT_EQ(place({"A", "B", "C"}, 2, {"B", "C"}), 1);
  EXPECT_EQ(place({"A", "B", "C"}, 2, {"C"}), 0);
  EXPECT_EQ(place({"A", "B"}, 0, {"X", "Y", "Z", "A"}), 3);
}

TEST(RememberedRecordTest, IsTheNearestOfThoseWithItsName) {
  EXPECT_EQ(place({"X", "X", "A"}, 2, {"A", "A", "X", "X", "A"}), 1);
  EXPECT_EQ(place({"X", "X", "A"}, 2, {"X", "A", "Y", "A"}), 1);
}

TEST(RememberedRecordTest, IsGoneWithItsName) {
  EXPECT_EQ(place({"A", "B"}, 1, {"A"}), std::nullopt);
  EXPECT_EQ(place({"A", "B"}, 1, {"A", "Renamed"}), std::nullopt);
  EXPECT_EQ(place({"A", "B"}, 1, {}), std::nullopt);
  EXPECT_EQ(place({"A"}, 7, {"A"}), std::nullopt);
  EXPECT_EQ(place({"A"}, -1, {"A"}), std::nullopt);
}

}  // namespace
}  // namespace vorn
