#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <thread>

#include "model/PropertyListCodec.h"
#include "model/RawBinaryList.h"
#include "support/StandardBundle.h"

namespace vorn {
namespace {

using test::container;
using test::object;
using test::RawBinaryList;
using test::singleObject;

std::string text(std::string_view literal) {
  return std::string(literal);
}

TEST(BinaryPropertyListReaderTest, ReadsEveryWidthOfAnInteger) {
  const std::vector<std::pair<Bytes, PropertyList>> table = {
      {{0x10, 255}, 255},
      {{0x11, 255, 254}, 65534},
      {{0x12, 255, 255, 255, 255}, 4294967295},
      {{0x13, 0, 0, 0, 0, 0, 0, 0, 1}, 1},
      {{0x13, 255, 255, 255, 255, 255, 255, 255, 254}, -2},
      {{0x14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9}, 9},
      {{0x14, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 0}, std::uint64_t{255} << 56},
      {{0x14, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 253}, -3}};
  for (const auto& [bytes, value] : table) EXPECT_EQ(decodeBinaryPropertyList(singleObject(bytes)), value);
}

TEST(BinaryPropertyListReaderTest, ReadsRealsOfFourAndEightBytes) {
  EXPECT_EQ(decodeBinaryPropertyList(singleObject({0x22, 0x3F, 0xC0, 0, 0})), PropertyList(1.5));
  EXPECT_EQ(decodeBinaryPropertyList(singleObject({0x23, 0xBF, 0xF8, 0, 0, 0, 0, 0, 0})), PropertyList(-1.5));
}

TEST(BinaryPropertyListReaderTest, ReadsTheOtherScalars) {
  EXPECT_EQ(decodeBinaryPropertyList(singleObject({0x08})), PropertyList(false));
  EXPECT_EQ(decodeBinaryPropertyList(singleObject({0x09})), PropertyList(true));
  EXPECT_EQ(decodeBinaryPropertyList(singleObject({0x33, 0x40, 0x24, 0, 0, 0, 0, 0, 0})),
            PropertyList(PropertyList::Date{10}));
  EXPECT_EQ(decodeBinaryPropertyList(singleObject({0x82, 1, 2, 3})), PropertyList(PropertyList::Uid{0x010203}));
  Bytes wide(17, 0);
  wide[0] = 0x8F;
  wide[16] = 4;
  EXPECT_EQ(decodeBinaryPropertyList(singleObject(wide)), PropertyList(PropertyList::Uid{4}));
}

TEST(BinaryPropertyListReaderTest, ReadsUtf16AndReplacesLoneSurrogates) {
  const auto decoded = [](std::uint8_t marker, std::string_view units) {
    return decodeBinaryPropertyList(singleObject(object(marker, units)));
  };
  EXPECT_EQ(decoded(0x60, ""), PropertyList(""));
  EXPECT_EQ(decoded(0x61, {"\0A", 2}), PropertyList("A"));
  EXPECT_EQ(decoded(0x62, {"\0\xE9\x20\xAC", 4}), PropertyList("\u00e9\u20ac"));
  EXPECT_EQ(decoded(0x62, {"\xD8\x3D\xDE\0", 4}), PropertyList("\U0001F600"));
  EXPECT_EQ(decoded(0x61, "\xD8\x3D"), PropertyList("\uFFFD"));
  EXPECT_EQ(decoded(0x62, {"\xD8\x3D\0A", 4}), PropertyList("\uFFFDA"));
  EXPECT_EQ(decoded(0x62, {"\xDE\0\xD8\x3D", 4}), PropertyList("\uFFFD\uFFFD"));
}

TEST(BinaryPropertyListReaderTest, ReadsLengthsOfEveryIntegerWidth) {
  const std::string letters(20, 'x');
  for (const std::string& length :
       {text("\x10\x14"), text({"\x11\0\x14", 3}), text({"\x12\0\0\0\x14", 5}), text({"\x13\0\0\0\0\0\0\0\x14", 9})}) {
    EXPECT_EQ(decodeBinaryPropertyList(singleObject(object(0x5F, length + letters))), PropertyList(letters));
  }
  // A long form of a short length.
  EXPECT_EQ(decodeBinaryPropertyList(singleObject(object(0x5F, "\x10\x01z"))), PropertyList("z"));
}

TEST(BinaryPropertyListReaderTest, ReadsEveryWidthOfReferencesAndOffsets) {
  const PropertyList expected = PropertyList::dictionary({{"k", PropertyList::array({1, "k"})}});
  for (std::size_t referenceWidth = 1; referenceWidth <= 8; ++referenceWidth) {
    for (std::size_t offsetWidth = 1; offsetWidth <= 8; ++offsetWidth) {
      RawBinaryList list{{container(0xD1, {1, 2}, referenceWidth), object(0x51, "k"),
                          container(0xA2, {3, 1}, referenceWidth), object(0x10, "\x01")}};
      list.referenceWidth = referenceWidth;
      list.offsetWidth = offsetWidth;
      EXPECT_EQ(decodeBinaryPropertyList(list.build()), expected) << referenceWidth << " " << offsetWidth;
    }
  }
}

TEST(BinaryPropertyListReaderTest, StartsAtTheTopObject) {
  RawBinaryList list{{object(0x51, "a"), container(0xA2, {0, 2}), object(0x08)}};
  list.top = 1;
  EXPECT_EQ(decodeBinaryPropertyList(list.build()), PropertyList::array({"a", false}));
  list.top = 2;
  EXPECT_EQ(decodeBinaryPropertyList(list.build()), PropertyList(false));
}

TEST(BinaryPropertyListReaderTest, ReadsKeysInAnyOrder) {
  const RawBinaryList list{{container(0xD3, {1, 2, 3, 4, 5, 6}), object(0x51, "c"), object(0x51, "a"),
                            object(0x51, "b"), object(0x10, "\x03"), object(0x10, "\x01"), object(0x10, "\x02")}};
  EXPECT_EQ(decodeBinaryPropertyList(list.build()), PropertyList::dictionary({{"a", 1}, {"b", 2}, {"c", 3}}));
}

TEST(BinaryPropertyListReaderTest, KeepsTheLastValueOfAKeyThatComesTwice) {
  // Once by the same reference and once by another string object of the same content; the value that is dropped is
  // a container whose parts are needed again.
  const RawBinaryList list{{container(0xD3, {1, 1, 2, 3, 4, 5}), object(0x51, "k"), object(0x51, "k"),
                            container(0xA1, {6}), container(0xA1, {3}), container(0xA2, {3, 4}),
                            container(0xD1, {1, 7}), object(0x54, "text")}};
  const PropertyList inner = PropertyList::array({PropertyList::dictionary({{"k", "text"}})});
  EXPECT_EQ(decodeBinaryPropertyList(list.build()),
            PropertyList::dictionary({{"k", PropertyList::array({inner, PropertyList::array({inner})})}}));
}

TEST(BinaryPropertyListReaderTest, TakesAnyKindOfStringAsAKey) {
  const RawBinaryList list{
      {container(0xD2, {1, 2, 3, 3}), object(0x50), object(0x61, text({"\0\xE9", 2})), object(0x09)}};
  EXPECT_EQ(decodeBinaryPropertyList(list.build()), PropertyList::dictionary({{"", true}, {"\u00e9", true}}));
}

TEST(BinaryPropertyListReaderTest, SharesAnObjectThatIsReferredToTwice) {
  const RawBinaryList list{{container(0xA2, {1, 1}), container(0xA1, {2}), object(0x54, "text")}};
  const std::optional<PropertyList> value = decodeBinaryPropertyList(list.build());
  ASSERT_TRUE(value);
  EXPECT_EQ(*value, PropertyList::array({PropertyList::array({"text"}), PropertyList::array({"text"})}));
  EXPECT_EQ(value->at(0).elements().data(), value->at(1).elements().data());
}

TEST(BinaryPropertyListReaderTest, AllowsObjectsThatOverlapHarmlessly) {
  // The string lies within the data.
  Bytes bytes = test::bytesOf("bplist00");
  const std::size_t start = bytes.size();
  test::append(bytes, "\xA2\x01\x02\x45\x51zabc");
  const Bytes list = RawBinaryList{}.finish(bytes, {start, start + 3, start + 4});
  const PropertyList data = PropertyList::data(test::bytesOf("\x51zabc"));
  EXPECT_EQ(decodeBinaryPropertyList(list), PropertyList::array({data, "z"}));
}

TEST(BinaryPropertyListReaderTest, IgnoresObjectsThatNothingRefersTo) {
  const RawBinaryList list{{container(0xA1, {1}), object(0x09), object(0x77), object(0xC1, "\x00")}};
  EXPECT_EQ(decodeBinaryPropertyList(list.build()), PropertyList::array({true}));
}

TEST(BinaryPropertyListReaderTest, ReadsManyRecordsOfManyShapes) {
  std::vector<PropertyList> records;
  for (int i = 0; i < 3000; ++i) {
    PropertyList record = PropertyList::dictionary({{"id", i}});
    for (int key = 0; key < i % 9; ++key) record = record.with("key " + std::to_string((i + key) % 211), key);
    records.push_back(record);
  }
  const PropertyList value = PropertyList::array(records);
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(value);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(decodeBinaryPropertyList(*bytes), value);
}

TEST(BinaryPropertyListReaderTest, KeepsPartsAliveAfterTheWholeHasGone) {
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(test::sampleOfAllKinds());
  ASSERT_TRUE(bytes);
  PropertyList part = decodeBinaryPropertyList(*bytes).value_or(PropertyList())["array"];
  EXPECT_EQ(part, test::sampleOfAllKinds()["array"]);
  part = part.appending(decodeBinaryPropertyList(*bytes).value_or(PropertyList())["unicode"]);
  EXPECT_EQ(part.at(6), test::sampleOfAllKinds()["unicode"]);
}

TEST(BinaryPropertyListReaderTest, LetsPartsOutliveTheirListsInAnyOrderOnAnyThread) {
  const PropertyList bundle = test::standardBundle();
  const Bytes bytes = encodeBinaryPropertyList(bundle).value();
  std::vector<PropertyList> kept(40);
  std::vector<PropertyList> expected(kept.size());
  const auto replaceParts = [&](std::size_t thread) {
    std::mt19937 random(static_cast<std::uint32_t>(thread));
    for (int round = 0; round < 60; ++round) {
      const PropertyList decoded = decodeBinaryPropertyList(bytes).value_or(PropertyList());
      // Every thread has places of its own; what it replaces may come from the other one.
      const std::size_t place = (random() % (kept.size() / 2)) * 2 + thread;
      const auto macro = static_cast<std::int64_t>(random() % 50);
      kept[place] = decoded["Macros"].at(macro);
      expected[place] = bundle["Macros"].at(macro);
    }
  };
  for (int half = 0; half < 2; ++half) {
    std::thread first(replaceParts, 0);
    std::thread second(replaceParts, 1);
    first.join();
    second.join();
    EXPECT_EQ(kept, expected);
    std::reverse(kept.begin(), kept.end());
    std::reverse(expected.begin(), expected.end());
  }
}

}  // namespace
}  // namespace vorn
