#include "model/PropertyList.h"

#include <gtest/gtest.h>

#include <limits>

#include "model/RawBinaryList.h"

namespace vorn {
namespace {

using Type = PropertyList::Type;

TEST(PropertyListTest, IsNoneUntilItGetsAValue) {
  const PropertyList value;
  EXPECT_TRUE(value.isNone());
  EXPECT_EQ(value.type(), Type::None);
  EXPECT_EQ(value, PropertyList());
}

TEST(PropertyListTest, TellsItsType) {
  EXPECT_EQ(PropertyList(true).type(), Type::Boolean);
  EXPECT_EQ(PropertyList(-5).type(), Type::Integer);
  EXPECT_EQ(PropertyList(std::uint64_t{5}).type(), Type::Integer);
  EXPECT_EQ(PropertyList(std::numeric_limits<std::uint64_t>::max()).type(), Type::Unsigned);
  EXPECT_EQ(PropertyList(1.0).type(), Type::Real);
  EXPECT_EQ(PropertyList("text").type(), Type::String);
  EXPECT_EQ(PropertyList::data(Bytes{1}).type(), Type::Data);
  EXPECT_EQ(PropertyList(PropertyList::Date{1}).type(), Type::Date);
  EXPECT_EQ(PropertyList(PropertyList::Uid{1}).type(), Type::Uid);
  EXPECT_EQ(PropertyList::array().type(), Type::Array);
  EXPECT_EQ(PropertyList::dictionary().type(), Type::Dictionary);
}

TEST(PropertyListTest, GivesBackWhatItWasMadeOf) {
  EXPECT_EQ(PropertyList("a\0b").string(), "a");
  EXPECT_EQ(PropertyList(std::string_view("a\0b", 3)).toString(), std::string("a\0b", 3));
  const Bytes bytes{0, 128, 255};
  const PropertyList data = PropertyList::data(bytes);
  EXPECT_EQ(Bytes(data.bytes().begin(), data.bytes().end()), bytes);
  EXPECT_EQ(PropertyList(PropertyList::Date{12.5}).date(), PropertyList::Date{12.5});
  EXPECT_EQ(PropertyList(PropertyList::Uid{99}).uid(), PropertyList::Uid{99});
}

TEST(PropertyListTest, ReadsWithoutFailingFromANone) {
  const PropertyList none;
  EXPECT_EQ(none["key"], PropertyList());
  EXPECT_EQ(none.at(0), PropertyList());
  EXPECT_EQ(none["a"]["b"].at(3)["c"].toInt(), 0);
  EXPECT_EQ(none.string(), "");
  EXPECT_TRUE(none.bytes().empty());
  EXPECT_EQ(none.date(), PropertyList::Date{});
  EXPECT_EQ(none.uid(), PropertyList::Uid{});
  EXPECT_EQ(none.size(), 0u);
  EXPECT_TRUE(none.elements().empty());
  EXPECT_TRUE(none.keys().empty());
  EXPECT_EQ(none.keyAt(0), "");
  EXPECT_EQ(none.valueAt(0), PropertyList());
  EXPECT_FALSE(none.contains("key"));
  EXPECT_FALSE(none.toBool());
  EXPECT_EQ(none.toDouble(), 0.0);
}

TEST(PropertyListTest, ReadsAnotherTypeAsNothing) {
  EXPECT_EQ(PropertyList(7).string(), "");
  EXPECT_EQ(PropertyList("7").at(0), PropertyList());
  EXPECT_TRUE(PropertyList("text").bytes().empty());
  EXPECT_EQ(PropertyList::data(Bytes{65}).string(), "");
  EXPECT_EQ(PropertyList::array({1}).toInt(), 0);
  EXPECT_EQ(PropertyList::array({1})["0"], PropertyList());
  EXPECT_EQ(PropertyList::dictionary({{"a", 1}}).at(0), PropertyList());
  EXPECT_TRUE(PropertyList::dictionary({{"a", 1}}).elements().empty());
  EXPECT_EQ(PropertyList(5).dictionaryOrEmpty(), PropertyList::dictionary());
  EXPECT_EQ(PropertyList(5).arrayOrEmpty(), PropertyList::array());
}

TEST(PropertyListTest, TellsAMissingKeyFromAZero) {
  const PropertyList dictionary = PropertyList::dictionary({{"zero", 0}});
  EXPECT_TRUE(dictionary.contains("zero"));
  EXPECT_FALSE(dictionary.contains("one"));
  EXPECT_EQ(dictionary["zero"].toInt(), dictionary["one"].toInt());
  EXPECT_TRUE(dictionary["one"].isNone());
}

TEST(PropertyListTest, ReadsAnIndexOutsideTheArrayAsNone) {
  const PropertyList array = PropertyList::array({10, 20});
  EXPECT_EQ(array.at(1), PropertyList(20));
  EXPECT_EQ(array.at(2), PropertyList());
  EXPECT_EQ(array.at(-1), PropertyList());
  EXPECT_EQ(array.at(std::numeric_limits<std::int64_t>::min()), PropertyList());
  EXPECT_EQ(array.at(std::numeric_limits<std::int64_t>::max()), PropertyList());
}

TEST(PropertyListDictionaryTest, GivesItsKeysInByteOrder) {
  const PropertyList dictionary = PropertyList::dictionary({{"b", 1}, {"", 2}, {"\u00e9", 3}, {"B", 4}, {"ba", 5}});
  EXPECT_EQ(dictionary.keys(), (std::vector<std::string_view>{"", "B", "b", "ba", "\u00e9"}));
  EXPECT_EQ(dictionary.keyAt(1), "B");
  EXPECT_EQ(dictionary.valueAt(1), PropertyList(4));
  EXPECT_EQ(dictionary.keyAt(5), "");
  EXPECT_EQ(dictionary[""], PropertyList(2));
}

TEST(PropertyListDictionaryTest, KeepsTheLastValueOfAKeyGivenTwice) {
  const PropertyList dictionary = PropertyList::dictionary({{"a", 1}, {"b", 2}, {"a", 3}});
  EXPECT_EQ(dictionary, PropertyList::dictionary({{"a", 3}, {"b", 2}}));
  EXPECT_EQ(dictionary.size(), 2u);
}

TEST(PropertyListDictionaryTest, FindsEachOfManyKeys) {
  std::vector<std::string> names;
  for (int i = 0; i < 500; ++i) names.push_back("key " + std::to_string(i * 7919 % 500));
  std::vector<PropertyList::Pair> pairs;
  for (std::size_t i = 0; i < names.size(); ++i) pairs.emplace_back(names[i], static_cast<int>(i));
  const PropertyList dictionary = PropertyList::dictionary(std::move(pairs));
  ASSERT_EQ(dictionary.size(), names.size());
  for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(dictionary[names[i]].toInt(), static_cast<int>(i));
  EXPECT_FALSE(dictionary.contains("key 500"));
}

}  // namespace
}  // namespace vorn
