#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/PropertyListCodec.h"
#include "model/RawBinaryList.h"
#include "support/StandardBundle.h"

namespace vorn {
namespace {

using test::container;
using test::object;
using test::RawBinaryList;

std::string text(std::string_view literal) {
  return std::string(literal);
}

// The encoding of one object that holds no others.
Bytes encodedObject(const PropertyList& value) {
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(value);
  if (!bytes || bytes->size() < 41) return {};
  const std::uint8_t offsetWidth = (*bytes)[bytes->size() - 26];
  return {bytes->begin() + 8, bytes->end() - 32 - offsetWidth};
}

std::string errorOfEncoding(const PropertyList& value) {
  std::string error;
  EXPECT_FALSE(encodeBinaryPropertyList(value, &error).has_value());
  return error;
}

TEST(BinaryPropertyListWriterTest, OfASmallDictionaryIsKnownByteByByte) {
  const PropertyList value = PropertyList::dictionary({{"a", 1}, {"b", PropertyList::array({true, "a"})}});
  const Bytes expected = RawBinaryList{
      {container(0xD2, {1, 2, 3, 4}), object(0x51, "a"), object(0x51, "b"), object(0x10, "\x01"),
       container(0xA2, {5, 1}),
       object(0x09)}}.build();
  EXPECT_EQ(encodeBinaryPropertyList(value), expected);
}

TEST(BinaryPropertyListWriterTest, OfAnEmptyDictionaryIsTheSmallestList) {
  EXPECT_EQ(encodeBinaryPropertyList(PropertyList::dictionary()), test::singleObject(object(0xD0)));
}

TEST(BinaryPropertyListWriterTest, WritesIntegersInTheirSmallestWidth) {
  const std::vector<std::pair<PropertyList, Bytes>> table = {
      {0, {0x10, 0}},
      {255, {0x10, 255}},
      {256, {0x11, 1, 0}},
      {65535, {0x11, 255, 255}},
      {65536, {0x12, 0, 1, 0, 0}},
      {std::uint32_t{0xFFFFFFFF}, {0x12, 255, 255, 255, 255}},
      {std::int64_t{1} << 32, {0x13, 0, 0, 0, 1, 0, 0, 0, 0}},
      {-1, {0x13, 255, 255, 255, 255, 255, 255, 255, 255}},
      {std::numeric_limits<std::int64_t>::min(), {0x13, 128, 0, 0, 0, 0, 0, 0, 0}},
      {std::uint64_t{1} << 63, {0x14, 0, 0, 0, 0, 0, 0, 0, 0, 128, 0, 0, 0, 0, 0, 0, 0}}};
  for (const auto& [value, expected] : table) EXPECT_EQ(encodedObject(value), expected) << value.description();
}

TEST(BinaryPropertyListWriterTest, WritesTheOtherScalars) {
  EXPECT_EQ(encodedObject(true), Bytes{0x09});
  EXPECT_EQ(encodedObject(false), Bytes{0x08});
  EXPECT_EQ(encodedObject(1.5), (Bytes{0x23, 0x3F, 0xF8, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(encodedObject(PropertyList::Date{-2.0}), (Bytes{0x33, 0xC0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(encodedObject(PropertyList::Uid{5}), (Bytes{0x80, 5}));
  EXPECT_EQ(encodedObject(PropertyList::Uid{0x1234}), (Bytes{0x81, 0x12, 0x34}));
  EXPECT_EQ(encodedObject(PropertyList::Uid{0x12345678}), (Bytes{0x83, 0x12, 0x34, 0x56, 0x78}));
  EXPECT_EQ(encodedObject(PropertyList::data(Bytes{1, 2})), (Bytes{0x42, 1, 2}));
}

TEST(BinaryPropertyListWriterTest, WritesTextsAsAsciiOrUtf16) {
  EXPECT_EQ(encodedObject(""), Bytes{0x50});
  EXPECT_EQ(encodedObject("fourteen chars"), object(0x5E, "fourteen chars"));
  EXPECT_EQ(encodedObject("fifteen letters"), object(0x5F,
                                                     "\x10\x0F"
                                                     "fifteen letters"));
  EXPECT_EQ(encodedObject("a\u00e9"), object(0x62, text({"\0a\0\xE9", 4})));
  EXPECT_EQ(encodedObject("\U0001F600"), object(0x62, text({"\xD8\x3D\xDE\0", 4})));
  EXPECT_EQ(encodedObject(std::string(300, 'x')), object(0x5F, text({"\x11\x01\x2C", 3}) + std::string(300, 'x')));
}

TEST(BinaryPropertyListWriterTest, ReplacesBytesThatAreNoUtf8) {
  const std::string replacement = "\xFF\xFD";
  EXPECT_EQ(encodedObject("\xFF"), object(0x61, replacement));
  EXPECT_EQ(encodedObject("\xC0\x80"), object(0x62, replacement + replacement));
  EXPECT_EQ(encodedObject("\xED\xA0\x80"), object(0x63, replacement + replacement + replacement));
  EXPECT_EQ(encodedObject("\xE2\x82"), object(0x62, replacement + replacement));
  EXPECT_EQ(encodedObject("\xF4\x90\x80\x80"), object(0x64, replacement + replacement + replacement + replacement));
}

TEST(BinaryPropertyListWriterTest, WritesEqualScalarsAndTextsOnce) {
  const PropertyList twice = PropertyList::array(
      {7, 7, 100000, 100000, "text", "text", 2.5, 2.5, PropertyList::data(Bytes{1}), PropertyList::data(Bytes{1})});
  const Bytes expected = RawBinaryList{
      {container(0xAA, {1, 1, 2, 2, 3, 3, 4, 4, 5, 5}), object(0x10, "\x07"), object(0x12, text({"\0\x01\x86\xA0", 4})),
       object(0x54, "text"), object(0x23, text({"\x40\x04\0\0\0\0\0\0", 8})),
       object(0x41, "\x01")}}.build();
  EXPECT_EQ(encodeBinaryPropertyList(twice), expected);
}

TEST(BinaryPropertyListWriterTest, KeepsEqualNumbersOfOtherTypesApart) {
  const PropertyList mixed = PropertyList::array(
      {1, true, 1.0, PropertyList::Date{1.0}, PropertyList::Uid{1}, "1", PropertyList::data(Bytes{'1'}), 0.0, -0.0});
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(mixed);
  ASSERT_TRUE(bytes);
  const std::optional<PropertyList> decoded = decodeBinaryPropertyList(*bytes);
  ASSERT_TRUE(decoded);
  for (std::int64_t i = 0; i < 9; ++i) EXPECT_EQ(decoded->at(i).type(), mixed.at(i).type());
  EXPECT_TRUE(std::signbit(decoded->at(8).toDouble()));
  EXPECT_FALSE(std::signbit(decoded->at(7).toDouble()));
}

TEST(BinaryPropertyListWriterTest, WritesASharedContainerOnce) {
  const PropertyList shared = PropertyList::array({1});
  const Bytes expected = RawBinaryList{{container(0xA2, {1, 1}), container(0xA1, {2}), object(0x10, "\x01")}}.build();
  EXPECT_EQ(encodeBinaryPropertyList(PropertyList::array({shared, shared})), expected);
}

// 255 and 256 objects, and the sizes at which an offset no longer fits into one and two bytes.
TEST(BinaryPropertyListWriterTest, GrowsReferencesAndOffsetsWithTheList) {
  for (const int count : {100, 253, 254, 255, 256, 300, 65533, 65534, 65535, 65536, 70000}) {
    std::vector<PropertyList> elements;
    for (int i = 0; i < count; ++i) elements.emplace_back(i);
    const PropertyList value = PropertyList::array(elements);
    const std::optional<Bytes> bytes = encodeBinaryPropertyList(value);
    ASSERT_TRUE(bytes) << count;
    const Bytes trailer(bytes->end() - 32, bytes->end());
    EXPECT_EQ(trailer[7], count + 1 < 256 ? 1 : count + 1 < 65536 ? 2 : 4) << count;
    EXPECT_EQ(decodeBinaryPropertyList(*bytes), value) << count;
  }
}

TEST(BinaryPropertyListWriterTest, OfWhatWasDecodedIsTheSame) {
  for (const PropertyList& value : {test::sampleOfAllKinds(), test::standardBundle()}) {
    const std::optional<Bytes> bytes = encodeBinaryPropertyList(value);
    ASSERT_TRUE(bytes);
    const std::optional<PropertyList> decoded = decodeBinaryPropertyList(*bytes);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(*decoded, value);
    EXPECT_EQ(encodeBinaryPropertyList(*decoded), bytes);
  }
}

TEST(BinaryPropertyListWriterTest, RefusesAMissingValue) {
  EXPECT_EQ(errorOfEncoding(PropertyList()), "the value holds nothing where a value is needed");
  EXPECT_EQ(errorOfEncoding(PropertyList::array({1, PropertyList()})),
            "the value holds nothing where a value is needed");
  EXPECT_EQ(errorOfEncoding(PropertyList::dictionary({{"a", PropertyList()}})),
            "the value holds nothing where a value is needed");
}

TEST(BinaryPropertyListWriterTest, RefusesADateThatIsNotFinite) {
  EXPECT_EQ(errorOfEncoding(PropertyList::Date{std::numeric_limits<double>::infinity()}), "a date is not finite");
  EXPECT_EQ(errorOfEncoding(PropertyList::Date{std::numeric_limits<double>::quiet_NaN()}), "a date is not finite");
}

PropertyList nested(std::size_t levels) {
  PropertyList value = PropertyList::array();
  for (std::size_t i = 1; i < levels; ++i) value = PropertyList::array({value});
  return value;
}

TEST(BinaryPropertyListWriterTest, TakesTheGreatestDepthAndRefusesOneLevelMore) {
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(nested(maximumDepth));
  ASSERT_TRUE(bytes);
  EXPECT_EQ(decodeBinaryPropertyList(*bytes), nested(maximumDepth));
  EXPECT_EQ(errorOfEncoding(nested(maximumDepth + 1)), "the value is nested too deeply");
  EXPECT_EQ(errorOfEncoding(nested(200000)), "the value is nested too deeply");
}

TEST(BinaryPropertyListWriterTest, RefusesADepthThatOnlyASharedPartReaches) {
  const PropertyList shared = nested(300);
  PropertyList deep = shared;
  for (int i = 0; i < 250; ++i) deep = PropertyList::array({deep});
  EXPECT_EQ(errorOfEncoding(PropertyList::array({shared, deep})), "the value is nested too deeply");
}

TEST(BinaryPropertyListWriterTest, RefusesSharedPartsThatExpandTooFar) {
  PropertyList value = PropertyList::array({1, 2, 3, 4});
  for (int i = 0; i < 100; ++i) value = PropertyList::array({value, value});
  EXPECT_EQ(errorOfEncoding(value), "the value expands to too many elements");
}

TEST(BinaryPropertyListWriterTest, RefusesMoreThanTheGreatestSize) {
  const PropertyList half = PropertyList::data(Bytes(maximumSize / 2, 1));
  const PropertyList other = PropertyList::data(Bytes(maximumSize / 2, 2));
  EXPECT_TRUE(encodeBinaryPropertyList(PropertyList::array({half, half})));
  EXPECT_EQ(errorOfEncoding(PropertyList::array({half, other})), "the property list is too large");
}

}  // namespace
}  // namespace vorn
