// Binary property lists that are damaged or made to do harm.
#include <gtest/gtest.h>

#include "model/PropertyListCodec.h"
#include "model/RawBinaryList.h"

namespace vorn {
namespace {

using test::appendNumber;
using test::container;
using test::object;
using test::RawBinaryList;
using test::singleObject;

std::string errorOf(const Bytes& bytes) {
  std::string error;
  const std::optional<PropertyList> value = decodeBinaryPropertyList(bytes, &error);
  return value ? "decoded to " + value->description() : error;
}

// Decodes to nothing with a reason, or to a value that survives a further round.
void expectHarmless(const Bytes& bytes) {
  std::string error;
  const std::optional<PropertyList> value = decodeBinaryPropertyList(bytes, &error);
  if (!value) {
    ASSERT_FALSE(error.empty());
    return;
  }
  const std::optional<Bytes> again = encodeBinaryPropertyList(*value, &error);
  ASSERT_TRUE(again) << error;
  ASSERT_EQ(decodeBinaryPropertyList(*again), *value);
}

TEST(BinaryPropertyListReaderHostileTest, TruncatedAnywhereDecodesToNothing) {
  const Bytes whole = encodeBinaryPropertyList(test::sampleOfAllKinds()).value();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    // In memory of its own, so that a read beyond it is seen.
    const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_NE(errorOf(part), "") << size;
    EXPECT_FALSE(decodeBinaryPropertyList(part)) << size;
  }
}

TEST(BinaryPropertyListReaderHostileTest, WithAnyOneByteChangedIsHarmless) {
  const Bytes whole = encodeBinaryPropertyList(test::sampleOfAllKinds()).value();
  for (std::size_t place = 0; place < whole.size(); ++place) {
    Bytes changed = whole;
    for (int value = 0; value < 256; ++value) {
      changed[place] = static_cast<std::uint8_t>(value);
      expectHarmless(changed);
    }
  }
}

TEST(BinaryPropertyListReaderHostileTest, WithoutItsMagicOrOfAnotherVersionIsRefused) {
  Bytes bytes = singleObject(object(0x09));
  for (std::size_t place = 0; place < 8; ++place) {
    Bytes changed = bytes;
    changed[place] ^= 1;
    EXPECT_EQ(errorOf(changed), "no binary property list of version 1.0");
  }
  EXPECT_EQ(errorOf({}), "no binary property list of version 1.0");
}

// Changes of the trailer's 32 bytes, each with its reason.
TEST(BinaryPropertyListReaderHostileTest, WithAWrongTrailerIsRefused) {
  const auto changed = [](std::size_t place, std::uint64_t number, std::size_t width) {
    Bytes bytes = singleObject(object(0x09));
    Bytes digits;
    appendNumber(digits, number, width);
    std::copy(digits.begin(), digits.end(), bytes.end() - 32 + static_cast<std::ptrdiff_t>(place));
    return errorOf(bytes);
  };
  EXPECT_EQ(changed(6, 0, 1), "the trailer gives a width that is not 1 to 8");
  EXPECT_EQ(changed(6, 9, 1), "the trailer gives a width that is not 1 to 8");
  EXPECT_EQ(changed(7, 0, 1), "the trailer gives a width that is not 1 to 8");
  EXPECT_EQ(changed(7, 255, 1), "the trailer gives a width that is not 1 to 8");
  EXPECT_EQ(changed(8, 0, 8), "the offset table does not hold its objects");
  EXPECT_EQ(changed(8, 2, 8), "the offset table does not hold its objects");
  EXPECT_EQ(changed(8, ~std::uint64_t{0}, 8), "the offset table does not hold its objects");
  EXPECT_EQ(changed(16, 1, 8), "the top object does not exist");
  EXPECT_EQ(changed(16, ~std::uint64_t{0}, 8), "the top object does not exist");
  EXPECT_EQ(changed(24, 0, 8), "the offset table lies outside the property list");
  EXPECT_EQ(changed(24, 8, 8), "the offset table lies outside the property list");
  EXPECT_EQ(changed(24, 1000, 8), "the offset table lies outside the property list");
  EXPECT_EQ(changed(24, ~std::uint64_t{0}, 8), "the offset table lies outside the property list");
}

TEST(BinaryPropertyListReaderHostileTest, WithAnObjectOfAnUnsupportedKindIsRefused) {
  EXPECT_EQ(errorOf(singleObject({0x00})), "null objects are not supported");
  EXPECT_EQ(errorOf(singleObject({0x0F})), "an object is of an unknown kind");
  EXPECT_EQ(errorOf(singleObject({0x70})), "an object is of an unknown kind");
  EXPECT_EQ(errorOf(singleObject({0xF0})), "an object is of an unknown kind");
  EXPECT_EQ(errorOf(singleObject({0xC0})), "sets are not supported");
  EXPECT_EQ(errorOf(RawBinaryList{{container(0xA1, {1}), container(0xC1, {2}), object(0x09)}}.build()),
            "sets are not supported");
}

TEST(BinaryPropertyListReaderHostileTest, WithAScalarOutOfRangeIsRefused) {
  Bytes wide(17, 0);
  wide[0] = 0x14;
  wide[8] = 1;
  EXPECT_EQ(errorOf(singleObject(wide)), "an integer does not fit into 64 bits");
  EXPECT_EQ(errorOf(singleObject(Bytes(33, 0x15))), "an integer is wider than 16 bytes");
  EXPECT_EQ(errorOf(singleObject(Bytes(33, 0x1F))), "an integer is wider than 16 bytes");
  EXPECT_EQ(errorOf(singleObject({0x21, 0, 0})), "a real is neither 4 nor 8 bytes wide");
  EXPECT_EQ(errorOf(singleObject({0x32, 0, 0, 0, 0})), "a date is not 8 bytes wide");
  EXPECT_EQ(errorOf(singleObject({0x33, 0x7F, 0xF0, 0, 0, 0, 0, 0, 0})), "a date is not finite");
  wide[0] = 0x8F;
  EXPECT_EQ(errorOf(singleObject(wide)), "a UID does not fit into 64 bits");
  EXPECT_EQ(errorOf(singleObject(object(0x52, "a\x80"))), "an ASCII string holds other bytes");
}

TEST(BinaryPropertyListReaderHostileTest, WithAnObjectBeyondTheObjectsIsRefused) {
  for (const int marker : {0x10, 0x11, 0x12, 0x13, 0x14, 0x22, 0x23, 0x33, 0x41, 0x51, 0x61, 0x80, 0xA1, 0xD1}) {
    EXPECT_EQ(errorOf(singleObject({static_cast<std::uint8_t>(marker)})), "an object reaches beyond the objects")
        << marker;
  }
  const Bytes list = RawBinaryList{}.finish(test::bytesOf("bplist00\x09"), {9});
  EXPECT_EQ(errorOf(list), "an object lies outside the property list");
  EXPECT_EQ(errorOf(RawBinaryList{}.finish(test::bytesOf("bplist00\x09"), {0})),
            "an object lies outside the property list");
}

TEST(BinaryPropertyListReaderHostileTest, WithAGiantCountIsRefusedBeforeMemoryIsTaken) {
  for (const int kind : {0x40, 0x50, 0x60, 0xA0, 0xD0}) {
    const auto marker = static_cast<std::uint8_t>(kind | 0x0F);
    EXPECT_EQ(errorOf(singleObject({marker, 0x12, 0xFF, 0xFF, 0xFF, 0xFF})), "an object reaches beyond the objects");
    EXPECT_EQ(errorOf(singleObject({marker, 0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF})),
              "an object reaches beyond the objects");
    EXPECT_EQ(errorOf(singleObject({marker, 0x13, 0x80, 0, 0, 0, 0, 0, 0, 1})), "an object reaches beyond the objects");
  }
}

TEST(BinaryPropertyListReaderHostileTest, WithALengthThatIsNoIntegerIsRefused) {
  EXPECT_EQ(errorOf(singleObject({0x5F})), "a length is no integer");
  EXPECT_EQ(errorOf(singleObject({0x5F, 0x10})), "a length is no integer");
  EXPECT_EQ(errorOf(singleObject({0x5F, 0x13, 0, 0})), "a length is no integer");
  EXPECT_EQ(errorOf(singleObject({0x5F, 0x09, 0})), "a length is no integer");
  EXPECT_EQ(errorOf(singleObject({0x5F, 0x14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})),
            "a length is no integer");
}

TEST(BinaryPropertyListReaderHostileTest, WithAKeyThatIsNoStringIsRefused) {
  const std::vector<Bytes> keys = {object(0x09), object(0x10, "\x05"), object(0x41, "k"), object(0xA0), object(0xD0)};
  for (const Bytes& key : keys) {
    EXPECT_EQ(errorOf(RawBinaryList{{container(0xD1, {1, 2}), key, object(0x09)}}.build()), "a key is no string");
    // Also when the object has been read before as a value.
    EXPECT_EQ(errorOf(RawBinaryList{{container(0xA2, {1, 2}), key, container(0xD1, {1, 1})}}.build()),
              "a key is no string");
  }
  EXPECT_EQ(errorOf(RawBinaryList{{container(0xD1, {0, 1}), object(0x09)}}.build()), "a key is no string");
}

TEST(BinaryPropertyListReaderHostileTest, ThatNamesAnObjectThatDoesNotExistIsRefused) {
  EXPECT_EQ(errorOf(RawBinaryList{{container(0xA1, {1})}}.build()), "a reference names an object that does not exist");
  EXPECT_EQ(errorOf(RawBinaryList{{container(0xD1, {9, 1}), object(0x09)}}.build()),
            "a reference names an object that does not exist");
  RawBinaryList wide{{container(0xA1, {~std::uint64_t{0}}, 8)}};
  wide.referenceWidth = 8;
  EXPECT_EQ(errorOf(wide.build()), "a reference names an object that does not exist");
}

TEST(BinaryPropertyListReaderHostileTest, ThatHoldsItselfIsRefused) {
  EXPECT_EQ(errorOf(RawBinaryList{{container(0xA1, {0})}}.build()), "a container holds itself");
  EXPECT_EQ(errorOf(RawBinaryList{{container(0xD1, {1, 0}), object(0x51, "k")}}.build()), "a container holds itself");
  EXPECT_EQ(
      errorOf(
          RawBinaryList{{container(0xA2, {3, 1}), container(0xA1, {2}), container(0xA1, {1}), object(0x09)}}.build()),
      "a container holds itself");
}

// Arrays in arrays: object i holds object i + 1.
Bytes nestedArrays(std::size_t levels) {
  RawBinaryList list;
  list.referenceWidth = 4;
  list.offsetWidth = 4;
  for (std::size_t i = 0; i + 1 < levels; ++i) list.objects.push_back(container(0xA1, {i + 1}, 4));
  list.objects.push_back(object(0xA0));
  return list.build();
}

TEST(BinaryPropertyListReaderHostileTest, IsTakenUpToTheGreatestDepthOnly) {
  EXPECT_TRUE(decodeBinaryPropertyList(nestedArrays(maximumDepth)));
  EXPECT_EQ(errorOf(nestedArrays(maximumDepth + 1)), "the property list is nested too deeply");
  EXPECT_EQ(errorOf(nestedArrays(200000)), "the property list is nested too deeply");
}

TEST(BinaryPropertyListReaderHostileTest, ThatReachesADepthByASharedPartIsRefused) {
  // The lower half is read first, at a small depth, and is met again at the bottom of the upper half.
  RawBinaryList list;
  list.referenceWidth = 2;
  list.offsetWidth = 2;
  list.objects.push_back(container(0xA2, {301, 1}, 2));
  for (std::uint64_t i = 1; i <= 599; ++i) list.objects.push_back(container(0xA1, {i + 1}, 2));
  list.objects.push_back(object(0xA0));
  EXPECT_EQ(errorOf(list.build()), "the property list is nested too deeply");
}

TEST(BinaryPropertyListReaderHostileTest, ThatExpandsTooFarIsRefused) {
  // Object i holds object i + 1 twice.
  RawBinaryList list;
  for (std::uint64_t i = 0; i < 60; ++i) list.objects.push_back(container(0xA2, {i + 1, i + 1}));
  list.objects.push_back(object(0x09));
  list.offsetWidth = 2;
  EXPECT_EQ(errorOf(list.build()), "the property list expands to too many elements");
}

TEST(BinaryPropertyListReaderHostileTest, ThatExpandsModeratelyIsTaken) {
  RawBinaryList list;
  for (std::uint64_t i = 0; i < 20; ++i) list.objects.push_back(container(0xA2, {i + 1, i + 1}));
  list.objects.push_back(object(0x09));
  const std::optional<PropertyList> value = decodeBinaryPropertyList(list.build());
  ASSERT_TRUE(value);
  EXPECT_EQ(encodeBinaryPropertyList(*value), list.build());
}

// 200 objects that are all the same bytes in the file.
Bytes overlapping(std::uint8_t kind, std::size_t payload) {
  Bytes bytes = test::bytesOf("bplist00");
  std::vector<std::size_t> offsets{bytes.size()};
  bytes.insert(bytes.end(), {0xAF, 0x10, 200});
  for (std::uint8_t i = 1; i <= 200; ++i) bytes.push_back(i);
  offsets.insert(offsets.end(), 200, bytes.size());
  bytes.insert(bytes.end(), {static_cast<std::uint8_t>(kind | 0x0F), 0x12});
  appendNumber(bytes, payload, 4);
  bytes.insert(bytes.end(), payload, 201);
  offsets.push_back(bytes.size());
  bytes.push_back(0x09);
  RawBinaryList list;
  list.offsetWidth = 4;
  return list.finish(std::move(bytes), offsets);
}

TEST(BinaryPropertyListReaderHostileTest, WhoseObjectsOverlapTooMuchIsRefused) {
  EXPECT_EQ(errorOf(overlapping(0x40, 4000000)), "the strings and data overlap too much");
  EXPECT_EQ(errorOf(overlapping(0xA0, 1000000)), "the property list expands to too many elements");
}

TEST(BinaryPropertyListReaderHostileTest, OfMoreThanTheGreatestSizeIsRefused) {
  Bytes bytes = test::bytesOf("bplist00");
  bytes.resize(maximumSize + 1);
  EXPECT_EQ(errorOf(bytes), "the property list is too large");
}

TEST(BinaryPropertyListReaderHostileTest, HoldsALongStringOnce) {
  RawBinaryList list;
  Bytes text{0x5F, 0x12};
  appendNumber(text, 8000000, 4);
  text.insert(text.end(), 8000000, 'x');
  Bytes array{0xAF, 0x12};
  appendNumber(array, 1000000, 4);
  array.insert(array.end(), 1000000, 1);
  list.objects = {array, text};
  list.offsetWidth = 4;
  const std::optional<PropertyList> value = decodeBinaryPropertyList(list.build());
  ASSERT_TRUE(value);
  EXPECT_EQ(value->size(), 1000000u);
  const std::optional<Bytes> again = encodeBinaryPropertyList(*value);
  ASSERT_TRUE(again);
  EXPECT_LT(again->size(), 10000000u);
}

}  // namespace
}  // namespace vorn
