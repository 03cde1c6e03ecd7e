#include "model/PropertyList.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "model/PropertyListNodes.h"

namespace vorn {

using detail::ContainerNode;
using detail::NodeAccess;
using detail::Shape;
using detail::TextNode;

namespace {

const PropertyList& none() noexcept {
  static const PropertyList value;
  return value;
}

TextNode* textNode(std::string_view text) {
  return text.empty() ? nullptr : NodeAccess::newText(text);
}

// The shapes of the dictionaries that were made last on this thread, so that records of one kind share theirs even
// when each is made by itself.
class RecentShapes {
 public:
  RecentShapes() = default;
  ~RecentShapes() {
    for (Shape* shape : mShapes) {
      if (shape != nullptr) NodeAccess::releaseShape(shape);
    }
    ended = true;
  }
  RecentShapes(const RecentShapes&) = delete;
  RecentShapes& operator=(const RecentShapes&) = delete;

  // A reference to a shape with these keys, which are distinct and in byte order. key(i) gives key i as text.
  template <typename Key>
  static Shape* shapeOf(std::size_t count, const Key& key) {
    // A value with static storage may still be made after the thread's own things have gone.
    if (ended || count > largestKept) return make(count, key);
    thread_local RecentShapes recent;
    const std::string_view first = key(0);
    const std::string_view last = key(count - 1);
    const std::size_t mixed = count + 5 * first.size() + 11 * last.size() + letter(first) + 7 * letter(last);
    Shape*& place = recent.mShapes[mixed % recent.mShapes.size()];
    if (place == nullptr || !matches(place, count, key)) {
      Shape* made = make(count, key);
      if (place != nullptr) NodeAccess::releaseShape(place);
      place = made;
    }
    NodeAccess::retain(place);
    return place;
  }

 private:
  static constexpr std::size_t largestKept = 64;  // keys

  static std::size_t letter(std::string_view key) noexcept {
    return key.empty() ? 0 : static_cast<unsigned char>(key[key.size() / 2]);
  }
  template <typename Key>
  static bool matches(const Shape* shape, std::size_t count, const Key& key) {
    if (shape->count != count) return false;
    for (std::size_t i = 0; i < count; ++i) {
      if (shape->key(i) != key(i)) return false;
    }
    return true;
  }
  template <typename Key>
  static Shape* make(std::size_t count, const Key& key) {
    std::vector<TextNode*> nodes;
    nodes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) nodes.push_back(textNode(key(i)));
    return NodeAccess::newShape(nodes);
  }

  static thread_local constinit bool ended;
  std::array<Shape*, 32> mShapes{};
};

thread_local constinit bool RecentShapes::ended = false;

// A dictionary under construction: distinct keys in byte order with their values.
class DictionaryBuilder {
 public:
  explicit DictionaryBuilder(std::size_t capacity) {
    mKeys.reserve(capacity);
    mValues.reserve(capacity);
  }
  // The key has to stay where it is until finish().
  void add(std::string_view key, PropertyList value) {
    mKeys.push_back(key);
    mValues.push_back(std::move(value));
  }
  PropertyList finish() {
    if (mKeys.empty()) return NodeAccess::make(PropertyList::Type::Dictionary, std::uint64_t{0});
    Shape* shape = RecentShapes::shapeOf(mKeys.size(), [this](std::size_t index) { return mKeys[index]; });
    ContainerNode* node = NodeAccess::newDictionary(shape);
    std::move(mValues.begin(), mValues.end(), node->values());
    return NodeAccess::make(PropertyList::Type::Dictionary, node);
  }

 private:
  std::vector<std::string_view> mKeys;
  std::vector<PropertyList> mValues;
};

template <typename Range>
PropertyList makeArray(Range&& elements) {
  if (std::empty(elements)) return NodeAccess::make(PropertyList::Type::Array, std::uint64_t{0});
  ContainerNode* node = NodeAccess::newArray(std::size(elements));
  std::move(std::begin(elements), std::end(elements), node->values());
  return NodeAccess::make(PropertyList::Type::Array, node);
}

}  // namespace

PropertyList::PropertyList(std::string_view text)
    : mType(Type::String), mBits(NodeAccess::addressBits(textNode(text))) {}

void PropertyList::retain() const noexcept {
  NodeAccess::retain(NodeAccess::nodeAt<detail::Node>(mBits));
}

void PropertyList::release() noexcept {
  if (mType == Type::String || mType == Type::Data) {
    NodeAccess::releaseText(NodeAccess::text(*this));
  } else if (NodeAccess::drop(NodeAccess::container(*this))) {
    NodeAccess::destroyContainer(NodeAccess::container(*this));
  }
}

PropertyList PropertyList::data(BytesView bytes) {
  return NodeAccess::make(Type::Data, textNode({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
}

PropertyList PropertyList::array(std::initializer_list<PropertyList> elements) {
  return makeArray(elements);
}

PropertyList PropertyList::array(std::vector<PropertyList> elements) {
  return makeArray(elements);
}

PropertyList PropertyList::dictionary(std::initializer_list<Pair> entries) {
  return dictionary(std::vector<Pair>(entries));
}

PropertyList PropertyList::dictionary(std::vector<Pair> entries) {
  const auto byKey = [](const Pair& left, const Pair& right) { return left.first < right.first; };
  if (!std::is_sorted(entries.begin(), entries.end(), byKey)) {
    std::stable_sort(entries.begin(), entries.end(), byKey);
  }
  DictionaryBuilder builder(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (i + 1 < entries.size() && entries[i].first == entries[i + 1].first) continue;
    builder.add(entries[i].first, std::move(entries[i].second));
  }
  return builder.finish();
}

std::string_view PropertyList::string() const noexcept {
  return isString() ? detail::textOf(NodeAccess::text(*this)) : std::string_view();
}

BytesView PropertyList::bytes() const noexcept {
  if (!isData()) return {};
  const std::string_view text = detail::textOf(NodeAccess::text(*this));
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

PropertyList::Date PropertyList::date() const noexcept {
  return mType == Type::Date ? Date{std::bit_cast<double>(mBits)} : Date{};
}

PropertyList::Uid PropertyList::uid() const noexcept {
  return mType == Type::Uid ? Uid{mBits} : Uid{};
}

std::size_t PropertyList::size() const noexcept {
  return (isArray() || isDictionary()) && mBits != 0 ? NodeAccess::container(*this)->count : 0;
}

bool PropertyList::contains(std::string_view key) const noexcept {
  return isDictionary() && mBits != 0 && NodeAccess::shape(*this)->find(key) < size();
}

const PropertyList& PropertyList::operator[](std::string_view key) const noexcept {
  if (!isDictionary() || mBits == 0) return none();
  const std::size_t index = NodeAccess::shape(*this)->find(key);
  return index < size() ? NodeAccess::container(*this)->values()[index] : none();
}

const PropertyList& PropertyList::at(std::int64_t index) const noexcept {
  const std::span<const PropertyList> all = elements();
  return index >= 0 && static_cast<std::uint64_t>(index) < all.size() ? all[static_cast<std::size_t>(index)] : none();
}

std::span<const PropertyList> PropertyList::elements() const noexcept {
  if (!isArray() || mBits == 0) return {};
  return {NodeAccess::container(*this)->values(), size()};
}

std::string_view PropertyList::keyAt(std::size_t index) const noexcept {
  return isDictionary() && index < size() ? NodeAccess::shape(*this)->key(index) : std::string_view();
}

const PropertyList& PropertyList::valueAt(std::size_t index) const noexcept {
  return isDictionary() && index < size() ? NodeAccess::container(*this)->values()[index] : none();
}

std::vector<std::string_view> PropertyList::keys() const {
  std::vector<std::string_view> result;
  if (!isDictionary()) return result;
  result.reserve(size());
  for (std::size_t i = 0; i < size(); ++i) result.push_back(keyAt(i));
  return result;
}

PropertyList PropertyList::dictionaryOrEmpty() const {
  return isDictionary() ? *this : dictionary();
}

PropertyList PropertyList::arrayOrEmpty() const {
  return isArray() ? *this : array();
}

PropertyList PropertyList::with(std::string_view key, PropertyList value) const {
  Shape* shape = isDictionary() ? NodeAccess::shape(*this) : nullptr;
  const std::size_t count = shape != nullptr ? shape->count : 0;
  const std::size_t index = shape != nullptr ? shape->find(key) : 0;
  if (index < count) {
    NodeAccess::retain(shape);
    ContainerNode* node = NodeAccess::newDictionary(shape);
    std::copy_n(NodeAccess::container(*this)->values(), count, node->values());
    node->values()[index] = std::move(value);
    return NodeAccess::make(Type::Dictionary, node);
  }
  DictionaryBuilder builder(count + 1);
  std::size_t i = 0;
  for (; i < count && keyAt(i) < key; ++i) builder.add(keyAt(i), valueAt(i));
  builder.add(key, std::move(value));
  for (; i < count; ++i) builder.add(keyAt(i), valueAt(i));
  return builder.finish();
}

PropertyList PropertyList::without(std::string_view key) const {
  if (!contains(key)) return dictionaryOrEmpty();
  const std::size_t index = NodeAccess::shape(*this)->find(key);
  DictionaryBuilder builder(size() - 1);
  for (std::size_t i = 0; i < size(); ++i) {
    if (i != index) builder.add(keyAt(i), valueAt(i));
  }
  return builder.finish();
}

PropertyList PropertyList::merging(const PropertyList& dictionary) const {
  if (!dictionary.isDictionary() || dictionary.isEmpty()) return dictionaryOrEmpty();
  if (!isDictionary() || isEmpty()) return dictionary;
  DictionaryBuilder builder(size() + dictionary.size());
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < size() || j < dictionary.size()) {
    if (j == dictionary.size() || (i < size() && keyAt(i) < dictionary.keyAt(j))) {
      builder.add(keyAt(i), valueAt(i));
      ++i;
      continue;
    }
    if (i < size() && keyAt(i) == dictionary.keyAt(j)) ++i;
    builder.add(dictionary.keyAt(j), dictionary.valueAt(j));
    ++j;
  }
  return builder.finish();
}

PropertyList PropertyList::appending(PropertyList element) const {
  const std::span<const PropertyList> old = elements();
  ContainerNode* node = NodeAccess::newArray(old.size() + 1);
  std::copy(old.begin(), old.end(), node->values());
  node->values()[old.size()] = std::move(element);
  return NodeAccess::make(Type::Array, node);
}

PropertyList PropertyList::replacing(std::int64_t index, PropertyList element) const {
  const std::span<const PropertyList> old = elements();
  if (index < 0 || static_cast<std::uint64_t>(index) >= old.size()) return arrayOrEmpty();
  ContainerNode* node = NodeAccess::newArray(old.size());
  std::copy(old.begin(), old.end(), node->values());
  node->values()[index] = std::move(element);
  return NodeAccess::make(Type::Array, node);
}

PropertyList PropertyList::removing(std::int64_t index) const {
  const std::span<const PropertyList> old = elements();
  if (index < 0 || static_cast<std::uint64_t>(index) >= old.size()) return arrayOrEmpty();
  if (old.size() == 1) return array();
  ContainerNode* node = NodeAccess::newArray(old.size() - 1);
  PropertyList* place = std::copy_n(old.begin(), index, node->values());
  std::copy(old.begin() + index + 1, old.end(), place);
  return NodeAccess::make(Type::Array, node);
}

}  // namespace vorn
