// Puts a binary property list together byte by byte, sound or not, and prints values in test messages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

inline void PrintTo(const PropertyList& value, std::ostream* out) {
  *out << value.description();
}

namespace test {

inline void append(Bytes& bytes, std::string_view text) {
  bytes.insert(bytes.end(), text.begin(), text.end());
}

inline void appendNumber(Bytes& bytes, std::uint64_t number, std::size_t width) {
  for (std::size_t i = width; i-- > 0;) {
    bytes.push_back(static_cast<std::uint8_t>(i < 8 ? number >> (8 * i) : 0));
  }
}

inline Bytes bytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

// A marker and a text behind it.
inline Bytes object(std::uint8_t marker, std::string_view payload = {}) {
  Bytes bytes;
  bytes.reserve(1 + payload.size());
  bytes.push_back(marker);
  append(bytes, payload);
  return bytes;
}

// A marker and references of this width behind it.
inline Bytes container(std::uint8_t marker, std::initializer_list<std::uint64_t> references, std::size_t width = 1) {
  Bytes bytes{marker};
  for (const std::uint64_t reference : references) appendNumber(bytes, reference, width);
  return bytes;
}

struct RawBinaryList {
  std::vector<Bytes> objects;
  std::size_t referenceWidth = 1;
  std::size_t offsetWidth = 1;
  std::uint64_t top = 0;

  Bytes build() const {
    Bytes bytes = bytesOf("bplist00");
    std::vector<std::size_t> offsets;
    for (const Bytes& object : objects) {
      offsets.push_back(bytes.size());
      bytes.insert(bytes.end(), object.begin(), object.end());
    }
    return finish(std::move(bytes), offsets);
  }

  // The offset table for these offsets and the trailer.
  Bytes finish(Bytes bytes, const std::vector<std::size_t>& offsets) const {
    const std::size_t table = bytes.size();
    for (const std::size_t offset : offsets) appendNumber(bytes, offset, offsetWidth);
    bytes.resize(bytes.size() + 6);
    bytes.push_back(static_cast<std::uint8_t>(offsetWidth));
    bytes.push_back(static_cast<std::uint8_t>(referenceWidth));
    appendNumber(bytes, offsets.size(), 8);
    appendNumber(bytes, top, 8);
    appendNumber(bytes, table, 8);
    return bytes;
  }
};

inline Bytes singleObject(Bytes object) {
  return RawBinaryList{{std::move(object)}}.build();
}

// A value of every kind and width that the format has, small enough to try every change of it.
inline PropertyList sampleOfAllKinds() {
  return PropertyList::dictionary(
      {{"array", PropertyList::array({1, 300, 70000, std::int64_t{1} << 40, -1, ~std::uint64_t{0}})},
       {"ascii", "plain"},
       {"data", PropertyList::data(Bytes{0, 1, 254, 255})},
       {"date", PropertyList::Date{-1.5}},
       {"dictionary", PropertyList::dictionary({{"array", true}, {"ascii", false}})},
       {"empty", PropertyList::array({PropertyList::array(), PropertyList::dictionary(), "", PropertyList::data({})})},
       {"long ascii text", "more than fifteen letters"},
       {"real", 0.1},
       {"uid", PropertyList::Uid{77}},
       {"unicode", "a\u00e9\u20ac\U0001F600"}});
}

}  // namespace test
}  // namespace vorn
