#include "core-engine/history/SharedValues.h"

#include <array>
#include <bit>
#include <string_view>
#include <utility>
#include <vector>

#include "core-engine/storage/Fingerprint.h"

namespace vorn::engine {

namespace {

std::uint64_t mixed(std::uint64_t before, std::uint64_t number) {
  return fingerprintOf(std::bit_cast<std::array<std::uint8_t, sizeof number>>(number), before);
}

std::uint64_t fingerprintOfText(std::string_view text, std::uint64_t seed) {
  return fingerprintOf(BytesView(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), seed);
}

std::uint64_t seedOf(const PropertyList& value) {
  return static_cast<std::uint64_t>(value.type());
}

// Where its contents are; null for what has none.
const void* storageOf(const PropertyList& value) {
  if (value.isString()) return value.string().empty() ? nullptr : value.string().data();
  if (value.isData()) return value.bytes().empty() ? nullptr : value.bytes().data();
  if (value.isEmpty()) return nullptr;
  return value.isArray() ? value.elements().data() : &value.valueAt(0);
}

// Of what has no contents.
std::uint64_t bitsOf(const PropertyList& value) {
  switch (value.type()) {
    case PropertyList::Type::Real:
      return std::bit_cast<std::uint64_t>(value.toDouble());
    case PropertyList::Type::Date:
      return std::bit_cast<std::uint64_t>(value.date().seconds);
    case PropertyList::Type::Uid:
      return value.uid().value;
    default:
      return value.toUnsigned();
  }
}

}  // namespace

PropertyList SharedValues::shared(const PropertyList& value) {
  PropertyList result = found(value).value;
  mSeen.clear();
  return result;
}

SharedValues::Found SharedValues::found(const PropertyList& value) {
  const void* storage = storageOf(value);
  if (storage == nullptr) return {value, mixed(seedOf(value), bitsOf(value))};
  // What is shared within the value is looked at once.
  if (const auto seen = mSeen.find(storage); seen != mSeen.end()) return seen->second;
  return mSeen.emplace(storage, foundStored(value)).first->second;
}

SharedValues::Found SharedValues::foundStored(const PropertyList& value) {
  return value.isString() || value.isData() ? foundText(value) : foundContainer(value);
}

template <typename Make>
SharedValues::Found SharedValues::kept(std::uint64_t fingerprint, const PropertyList& value, const Make& make) {
  const auto [begin, end] = mValues.equal_range(fingerprint);
  for (auto each = begin; each != end; ++each) {
    if (each->second == value) return {each->second, fingerprint};
  }
  return {mValues.emplace(fingerprint, make())->second, fingerprint};
}

SharedValues::Found SharedValues::foundText(const PropertyList& value) {
  if (value.isData()) {
    return kept(fingerprintOf(value.bytes(), seedOf(value)), value,
                [&value] { return PropertyList::data(value.bytes()); });
  }
  return kept(fingerprintOfText(value.string(), seedOf(value)), value,
              [&value] { return PropertyList(value.string()); });
}

SharedValues::Found SharedValues::foundContainer(const PropertyList& value) {
  std::uint64_t fingerprint = mixed(seedOf(value), value.size());
  PropertyList made;
  if (value.isArray()) {
    std::vector<PropertyList> elements;
    elements.reserve(value.size());
    for (const PropertyList& each : value.elements()) {
      Found element = found(each);
      fingerprint = mixed(fingerprint, element.fingerprint);
      elements.push_back(std::move(element.value));
    }
    made = PropertyList::array(std::move(elements));
  } else {
    std::vector<PropertyList::Pair> pairs;
    pairs.reserve(value.size());
    for (std::size_t each = 0; each < value.size(); ++each) {
      Found entry = found(value.valueAt(each));
      fingerprint = mixed(fingerprintOfText(value.keyAt(each), fingerprint), entry.fingerprint);
      pairs.emplace_back(value.keyAt(each), std::move(entry.value));
    }
    made = PropertyList::dictionary(std::move(pairs));
  }
  // Its parts are shared, so that it is compared by their addresses.
  return kept(fingerprint, made, [&made] { return made; });
}

}  // namespace vorn::engine
