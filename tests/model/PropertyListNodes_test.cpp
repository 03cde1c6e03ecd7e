// Changed copies, what they share, and how values of any depth and sharing end.
#include <gtest/gtest.h>

#include <thread>

#include "model/PropertyList.h"
#include "model/RawBinaryList.h"

namespace vorn {
namespace {

using test::sampleOfAllKinds;

const PropertyList record = PropertyList::dictionary({{"b", 2}, {"d", "four"}});

TEST(PropertyListNodesChangedCopyTest, OfADictionaryReplacesOrAddsAKeyInItsPlace) {
  EXPECT_EQ(record.with("b", 5), PropertyList::dictionary({{"b", 5}, {"d", "four"}}));
  EXPECT_EQ(record.with("a", 1), PropertyList::dictionary({{"a", 1}, {"b", 2}, {"d", "four"}}));
  EXPECT_EQ(record.with("c", 3), PropertyList::dictionary({{"b", 2}, {"c", 3}, {"d", "four"}}));
  EXPECT_EQ(record.with("e", 5), PropertyList::dictionary({{"b", 2}, {"d", "four"}, {"e", 5}}));
  EXPECT_EQ(record.with("c", 3).keys(), (std::vector<std::string_view>{"b", "c", "d"}));
}

TEST(PropertyListNodesChangedCopyTest, LeavesTheOriginalAsItWas) {
  const PropertyList original = sampleOfAllKinds();
  (void)original.with("array", 1);
  (void)original.with("new", 1);
  (void)original.without("array");
  (void)original.merging(record);
  (void)original["array"].appending(1);
  (void)original["array"].replacing(0, "other");
  (void)original["array"].removing(0);
  EXPECT_EQ(original, sampleOfAllKinds());
}

TEST(PropertyListNodesChangedCopyTest, WithoutAKeyKeepsTheOthers) {
  EXPECT_EQ(record.without("b"), PropertyList::dictionary({{"d", "four"}}));
  EXPECT_EQ(record.without("d"), PropertyList::dictionary({{"b", 2}}));
  EXPECT_EQ(record.without("x"), record);
  EXPECT_EQ(record.without("b").without("d"), PropertyList::dictionary());
}

TEST(PropertyListNodesChangedCopyTest, MergesAnotherDictionaryOverThisOne) {
  const PropertyList other = PropertyList::dictionary({{"a", 1}, {"d", 4}, {"z", 26}});
  EXPECT_EQ(record.merging(other), PropertyList::dictionary({{"a", 1}, {"b", 2}, {"d", 4}, {"z", 26}}));
  EXPECT_EQ(other.merging(record), PropertyList::dictionary({{"a", 1}, {"b", 2}, {"d", "four"}, {"z", 26}}));
  EXPECT_EQ(record.merging(record), record);
  EXPECT_EQ(record.merging(PropertyList::dictionary()), record);
  EXPECT_EQ(PropertyList::dictionary().merging(record), record);
  EXPECT_EQ(record.merging(7), record);
}

TEST(PropertyListNodesChangedCopyTest, OfAnArrayAppendsReplacesAndRemoves) {
  const PropertyList array = PropertyList::array({1, 2, 3});
  EXPECT_EQ(array.appending(4), PropertyList::array({1, 2, 3, 4}));
  EXPECT_EQ(array.replacing(1, "two"), PropertyList::array({1, "two", 3}));
  EXPECT_EQ(array.removing(0), PropertyList::array({2, 3}));
  EXPECT_EQ(array.removing(2), PropertyList::array({1, 2}));
  EXPECT_EQ(PropertyList::array({1}).removing(0), PropertyList::array());
}

TEST(PropertyListNodesChangedCopyTest, IsUnchangedForAnIndexOutsideTheArray) {
  const PropertyList array = PropertyList::array({1, 2});
  for (const std::int64_t index : {std::int64_t{-1}, std::int64_t{2}, std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_EQ(array.replacing(index, 0), array);
    EXPECT_EQ(array.removing(index), array);
  }
}

TEST(PropertyListNodesChangedCopyTest, OfAnythingElseStartsFromAnEmptyContainer) {
  EXPECT_EQ(PropertyList().with("a", 1), PropertyList::dictionary({{"a", 1}}));
  EXPECT_EQ(PropertyList("text").with("a", 1), PropertyList::dictionary({{"a", 1}}));
  EXPECT_EQ(PropertyList::array({1}).without("a"), PropertyList::dictionary());
  EXPECT_EQ(PropertyList(3).merging(record), record);
  EXPECT_EQ(PropertyList(3).merging(4), PropertyList::dictionary());
  EXPECT_EQ(PropertyList().appending(1), PropertyList::array({1}));
  EXPECT_EQ(record.appending(1), PropertyList::array({1}));
  EXPECT_EQ(PropertyList().replacing(0, 1), PropertyList::array());
  EXPECT_EQ(PropertyList().removing(0), PropertyList::array());
}

TEST(PropertyListNodesSharedValueTest, IsTheSameStorageInEveryCopy) {
  const PropertyList text("a text in storage of its own");
  const PropertyList copy = text;
  const PropertyList array = PropertyList::array({text, copy});
  EXPECT_EQ(copy.string().data(), text.string().data());
  EXPECT_EQ(array.at(1).string().data(), text.string().data());
  EXPECT_EQ(array.appending(1).at(0).string().data(), text.string().data());
}

TEST(PropertyListNodesSharedValueTest, OutlivesWhatItCameFrom) {
  PropertyList inner;
  {
    const PropertyList outer = PropertyList::dictionary({{"list", PropertyList::array({sampleOfAllKinds()})}});
    inner = outer["list"].at(0);
  }
  EXPECT_EQ(inner, sampleOfAllKinds());
}

TEST(PropertyListNodesSharedValueTest, CanBecomeItsOwnPartAndBeAssignedToItself) {
  PropertyList value = PropertyList::array({PropertyList::array({"inner"})});
  value = value.at(0);
  EXPECT_EQ(value, PropertyList::array({"inner"}));
  const PropertyList& same = value;
  value = same;
  EXPECT_EQ(value, PropertyList::array({"inner"}));
  value = std::move(const_cast<PropertyList&>(same));
  EXPECT_EQ(value, PropertyList::array({"inner"}));
  PropertyList moved = std::move(value);
  EXPECT_EQ(moved, PropertyList::array({"inner"}));
}

TEST(PropertyListNodesSharedValueTest, IsCopiedAndReleasedByManyThreads) {
  const PropertyList shared = sampleOfAllKinds();
  std::vector<std::thread> threads;
  std::vector<int> equal(4);
  for (std::size_t thread = 0; thread < equal.size(); ++thread) {
    threads.emplace_back([&shared, &count = equal[thread]] {
      for (int i = 0; i < 2000; ++i) {
        const PropertyList copy = shared;
        const PropertyList changed = copy.with("array", copy["array"].appending(i)).without("uid");
        if (changed["array"].size() == copy["array"].size() + 1 && changed["unicode"] == copy["unicode"]) ++count;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(equal, std::vector<int>(4, 2000));
  EXPECT_EQ(shared, sampleOfAllKinds());
}

// Arrays in arrays, deeper than any stack of calls could go.
PropertyList nested(int depth) {
  PropertyList value = PropertyList::array({1});
  for (int i = 0; i < depth; ++i) {
    value = i % 2 == 0 ? PropertyList::array({value}) : PropertyList::dictionary({{"inner", value}});
  }
  return value;
}

TEST(PropertyListNodesDeepValueTest, IsReleasedWithoutExhaustingTheStack) {
  PropertyList value = nested(1000000);
  EXPECT_EQ(value.size(), 1u);
  value = PropertyList();
  EXPECT_TRUE(value.isNone());
}

TEST(PropertyListNodesDeepValueTest, IsComparedWithoutExhaustingTheStack) {
  EXPECT_EQ(nested(200000), nested(200000));
  EXPECT_NE(nested(200000), nested(200002));
}

// As many levels, each holding the one below twice: 2 to the power of levels elements by every way.
PropertyList doubled(int levels, PropertyList value) {
  for (int i = 0; i < levels; ++i) value = PropertyList::array({value, value});
  return value;
}

TEST(PropertyListNodesSharedPartsTest, IsComparedOncePerPart) {
  EXPECT_EQ(doubled(100, 1), doubled(100, 1));
  EXPECT_NE(doubled(100, 1), doubled(100, 2));
}

}  // namespace
}  // namespace vorn
