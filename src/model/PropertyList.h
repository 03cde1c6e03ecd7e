// One immutable property-list value: the type of everything that crosses the bus or lies in a settings file.
//
// A value is none (nothing there), a boolean, an integer (64-bit signed; unsigned above that), a real, a string
// (UTF-8), data, a date, a UID, an array or a dictionary. Containers are shared and never edited in place: a copy
// costs one reference count, the with/without/appending/... operations return a changed copy and leave the original
// as it was. Any thread may read and copy a value; assigning to one variable from two threads needs a lock.
//
// Reads never fail. A missing key, an index outside the array or another type reads as a none value, 0, an empty
// string or an empty container. Tell missing from zero with contains() or isNone().
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn {

using Bytes = std::vector<std::uint8_t>;
using BytesView = std::span<const std::uint8_t>;

namespace detail {
class NodeAccess;  // the codec's way to the storage of strings, data, arrays and dictionaries

template <typename T>
concept UnsignedNumber = std::unsigned_integral<T> && !std::same_as<T, bool>;
}  // namespace detail

class PropertyList {
 public:
  enum class Type : std::uint8_t { None, Boolean, Integer, Unsigned, Real, String, Data, Date, Uid, Array, Dictionary };

  // A point in time, in seconds since 2001-01-01 00:00:00 UTC (the reference date of property lists).
  struct Date {
    double seconds = 0;
    friend bool operator==(const Date&, const Date&) = default;
  };
  struct Uid {
    std::uint64_t value = 0;
    friend bool operator==(const Uid&, const Uid&) = default;
  };

  using Pair = std::pair<std::string_view, PropertyList>;

  PropertyList() noexcept = default;  // none
  PropertyList(const PropertyList& other) noexcept : mType(other.mType), mBits(other.mBits) {
    if (isShared()) retain();
  }
  PropertyList(PropertyList&& other) noexcept
      : mType(std::exchange(other.mType, Type::None)), mBits(std::exchange(other.mBits, 0)) {}
  PropertyList& operator=(const PropertyList& other) noexcept {
    PropertyList copy(other);
    swap(copy);
    return *this;
  }
  PropertyList& operator=(PropertyList&& other) noexcept {
    PropertyList moved(std::move(other));
    swap(moved);
    return *this;
  }
  ~PropertyList() {
    if (isShared()) release();
  }
  void swap(PropertyList& other) noexcept {
    std::swap(mType, other.mType);
    std::swap(mBits, other.mBits);
  }

  template <std::same_as<bool> T>
  PropertyList(T value) noexcept : mType(Type::Boolean), mBits(value ? 1 : 0) {}
  template <std::signed_integral T>
  PropertyList(T value) noexcept : mType(Type::Integer), mBits(static_cast<std::uint64_t>(value)) {}
  // An unsigned number up to 2^63 - 1 becomes an Integer, a larger one an Unsigned.
  template <detail::UnsignedNumber T>
  PropertyList(T value) noexcept
      : mType(static_cast<std::uint64_t>(value) >> 63 ? Type::Unsigned : Type::Integer), mBits(value) {}
  PropertyList(double value) noexcept : mType(Type::Real), mBits(std::bit_cast<std::uint64_t>(value)) {}
  PropertyList(std::string_view text);
  PropertyList(const char* text) : PropertyList(std::string_view(text)) {}
  PropertyList(const std::string& text) : PropertyList(std::string_view(text)) {}
  PropertyList(Date date) noexcept : mType(Type::Date), mBits(std::bit_cast<std::uint64_t>(date.seconds)) {}
  PropertyList(Uid uid) noexcept : mType(Type::Uid), mBits(uid.value) {}

  static PropertyList data(BytesView bytes);
  static PropertyList array(std::initializer_list<PropertyList> elements = {});
  static PropertyList array(std::vector<PropertyList> elements);
  // A key given twice keeps its last value. Keys come back in byte order.
  static PropertyList dictionary(std::initializer_list<Pair> entries = {});
  static PropertyList dictionary(std::vector<Pair> entries);

  Type type() const noexcept { return mType; }
  bool isNone() const noexcept { return mType == Type::None; }
  bool isBoolean() const noexcept { return mType == Type::Boolean; }
  bool isInteger() const noexcept { return mType == Type::Integer || mType == Type::Unsigned; }
  bool isReal() const noexcept { return mType == Type::Real; }
  bool isNumber() const noexcept { return isBoolean() || isInteger() || isReal(); }
  bool isString() const noexcept { return mType == Type::String; }
  bool isData() const noexcept { return mType == Type::Data; }
  bool isArray() const noexcept { return mType == Type::Array; }
  bool isDictionary() const noexcept { return mType == Type::Dictionary; }

  // Numbers convert as the platform's number object does: a boolean is 0 or 1, a real loses its fraction and is
  // clamped to the range (NaN is 0), an integer keeps its low bits, a string is read as a decimal number after
  // leading blanks (0 when there is none). Everything else is 0.
  std::int32_t toInt() const noexcept;
  std::int64_t toInt64() const noexcept;
  std::uint64_t toUnsigned() const noexcept;
  double toDouble() const noexcept;
  bool toBool() const noexcept;  // a number other than 0; a string that begins with Y, y, T, t or a number not 0

  // Valid as long as this value or a copy of it lives; empty for another type.
  std::string_view string() const noexcept;
  BytesView bytes() const noexcept;
  std::string toString() const { return std::string(string()); }
  Date date() const noexcept;
  Uid uid() const noexcept;

  // Number of elements or entries; 0 for anything that is no container.
  std::size_t size() const noexcept;
  bool isEmpty() const noexcept { return size() == 0; }

  bool contains(std::string_view key) const noexcept;
  const PropertyList& operator[](std::string_view key) const noexcept;
  const PropertyList& operator[](const char* key) const noexcept { return (*this)[std::string_view(key)]; }
  // Element of an array. A negative index is outside.
  const PropertyList& at(std::int64_t index) const noexcept;

  // The elements of an array; empty for another type.
  std::span<const PropertyList> elements() const noexcept;
  // Entry i of a dictionary in key order, 0 <= i < size().
  std::string_view keyAt(std::size_t index) const noexcept;
  const PropertyList& valueAt(std::size_t index) const noexcept;
  std::vector<std::string_view> keys() const;

  // This value if it has the type, otherwise an empty container.
  PropertyList dictionaryOrEmpty() const;
  PropertyList arrayOrEmpty() const;

  // Changed copies. On a value that is no dictionary (no array) they start from an empty one. An index outside the
  // array leaves the copy unchanged.
  PropertyList with(std::string_view key, PropertyList value) const;
  PropertyList without(std::string_view key) const;
  PropertyList merging(const PropertyList& dictionary) const;  // its entries win
  PropertyList appending(PropertyList element) const;
  PropertyList replacing(std::int64_t index, PropertyList element) const;
  PropertyList removing(std::int64_t index) const;

  // Same type and same content; Integer and Unsigned compare as numbers, every other pair of types differs. Reals and
  // dates compare by value, except that not-a-number equals itself.
  friend bool operator==(const PropertyList& left, const PropertyList& right) noexcept;

  // Readable one-line text for logs and test messages, cut with "..." at about maximum characters.
  std::string description(std::size_t maximum = 2000) const;

 private:
  friend class detail::NodeAccess;

  bool isShared() const noexcept {
    return mBits != 0 &&
           (mType == Type::String || mType == Type::Data || mType == Type::Array || mType == Type::Dictionary);
  }
  void retain() const noexcept;
  void release() noexcept;

  Type mType = Type::None;
  // The number itself, or the address of the storage: zero for an empty string, data or container.
  std::uint64_t mBits = 0;
};

}  // namespace vorn
