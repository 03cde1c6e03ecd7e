#include "model/BinaryPropertyListReader.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <numeric>

#include "model/BinaryPropertyListFormat.h"
#include "model/PropertyListCodec.h"
#include "model/UnicodeText.h"

namespace vorn::detail {

namespace {

// Nobody else sees the nodes while they are read, so counting needs no atomic operation.
void addReference(Node* node) noexcept {
  node->references.store(node->references.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

// Nodes come with one reference; here they wait without any for the container that takes them.
template <typename T>
T* unowned(T* node) noexcept {
  node->references.store(0, std::memory_order_relaxed);
  return node;
}

bool isText(PropertyList::Type type) noexcept {
  return type == PropertyList::Type::String || type == PropertyList::Type::Data;
}

bool isContainer(PropertyList::Type type) noexcept {
  return type == PropertyList::Type::Array || type == PropertyList::Type::Dictionary;
}

constexpr const char* noSuchObject = "a reference names an object that does not exist";
constexpr const char* reachesTooFar = "an object reaches beyond the objects";
constexpr const char* tooDeep = "the property list is nested too deeply";
constexpr const char* tooManyElements = "the property list expands to too many elements";

}  // namespace

BinaryPropertyListReader::~BinaryPropertyListReader() {
  for (const Frame& frame : mFrames) NodeAccess::destroyContainer(frame.node);
}

std::optional<PropertyList> BinaryPropertyListReader::read() {
  if (!readTrailer() || !readTree()) return std::nullopt;
  const Object& top = mObjects[mTop];
  if (top.bits != 0 && (isText(top.type) || isContainer(top.type))) addReference(NodeAccess::nodeAt<Node>(top.bits));
  return NodeAccess::make(top.type, top.bits);
}

bool BinaryPropertyListReader::readTrailer() {
  if (mBytes.size() > maximumSize) return fail("the property list is too large");
  if (mBytes.size() < binaryMagic.size() + trailerSize ||
      std::memcmp(mBytes.data(), binaryMagic.data(), binaryMagic.size()) != 0) {
    return fail("no binary property list of version 1.0");
  }
  const std::size_t end = mBytes.size() - trailerSize;
  const std::uint8_t* trailer = mBytes.data() + end;
  mOffsetWidth = trailer[6];
  mReferenceWidth = trailer[7];
  const std::uint64_t count = readBigEndian(trailer + 8, 8);
  const std::uint64_t top = readBigEndian(trailer + 16, 8);
  const std::uint64_t table = readBigEndian(trailer + 24, 8);
  if (mOffsetWidth < 1 || mOffsetWidth > 8 || mReferenceWidth < 1 || mReferenceWidth > 8) {
    return fail("the trailer gives a width that is not 1 to 8");
  }
  if (table <= binaryMagic.size() || table > end) return fail("the offset table lies outside the property list");
  if (count == 0 || count > (end - table) / mOffsetWidth) return fail("the offset table does not hold its objects");
  if (count > maximumExpandedCount) return fail("the property list has too many objects");
  if (top >= count) return fail("the top object does not exist");
  mTop = static_cast<std::size_t>(top);
  mTable = static_cast<std::size_t>(table);
  mObjects.resize(static_cast<std::size_t>(count));
  return true;
}

bool BinaryPropertyListReader::readTree() {
  if (!readObject(mTop)) return false;
  while (!mFrames.empty()) {
    switch (mReferenceWidth) {  // the usual widths known while compiling
      case 1:
        if (!fillTopFrame(1)) return false;
        break;
      case 2:
        if (!fillTopFrame(2)) return false;
        break;
      default:
        if (!fillTopFrame(mReferenceWidth)) return false;
    }
    Frame& top = mFrames.back();
    if (top.next == top.count && !finishTopFrame()) return false;
  }
  return true;
}

// Takes values until the frame is full or a container has been opened above it.
inline bool BinaryPropertyListReader::fillTopFrame(std::size_t referenceWidth) {
  const std::size_t depth = mFrames.size();
  Frame* frame = &mFrames.back();
  PropertyList* const values = frame->node->values();
  while (frame->next < frame->count) {
    const std::uint64_t index = readBigEndian(frame->references + frame->next * referenceWidth, referenceWidth);
    if (index >= mObjects.size()) return fail(noSuchObject);
    const Object& object = mObjects[static_cast<std::size_t>(index)];
    if (object.state == State::Unread) {
      if (!readObject(static_cast<std::size_t>(index))) return false;
      if (mFrames.size() != depth) return true;
    } else if (object.state == State::Open) {
      return fail("a container holds itself");
    }
    if (object.height == 0 && !isText(object.type) && frame->slots == nullptr) {
      NodeAccess::initialize(values[frame->next++], object.type, object.bits);
      if (++frame->weight > maximumExpandedCount) return fail(tooManyElements);
    } else if (!take(*frame, object)) {
      return false;
    }
  }
  return true;
}

bool BinaryPropertyListReader::finishTopFrame() {
  Frame& frame = mFrames.back();
  Object& object = mObjects[frame.object];
  object.weight = frame.weight;
  object.height = frame.height;
  object.state = State::Done;
  unowned(frame.node);
  mFrames.pop_back();
  return mFrames.empty() || take(mFrames.back(), object);
}

// Stores the next value of a frame. It is owned from then on, so this comes before the checks.
bool BinaryPropertyListReader::take(Frame& frame, const Object& object) {
  PropertyList& place = frame.node->values()[frame.slots != nullptr ? frame.slots[frame.next] : frame.next];
  if (!place.isNone()) mReplaced.push_back(std::move(place));
  if (object.bits != 0 && (isText(object.type) || isContainer(object.type))) {
    addReference(NodeAccess::nodeAt<Node>(object.bits));
  }
  NodeAccess::initialize(place, object.type, object.bits);
  ++frame.next;
  frame.weight += object.weight;
  frame.height = std::max(frame.height, static_cast<std::uint16_t>(object.height + 1));
  if (frame.weight > maximumExpandedCount) return fail(tooManyElements);
  if (frame.height > maximumDepth) return fail(tooDeep);
  return true;
}

bool BinaryPropertyListReader::readObject(std::size_t index) {
  const std::optional<std::size_t> place = positionOf(index);
  if (!place) return false;
  const std::size_t position = *place;
  const std::uint8_t marker = mBytes[position];
  Object& object = mObjects[index];
  switch (marker >> 4) {
    case SingletonKind:
      return readSingleton(object, marker);
    case IntegerKind:
      return readInteger(object, position, marker);
    case RealKind:
      return readReal(object, position, marker);
    case DateKind:
      return readDate(object, position, marker);
    case DataKind:
    case AsciiKind:
      return readBytes(object, position, marker);
    case Utf16Kind:
      return readUtf16(object, position, marker);
    case UidKind:
      return readUid(object, position, marker);
    case ArrayKind:
      return readArray(index, position, marker);
    case SetKind:
      return fail("sets are not supported");
    case DictionaryKind:
      return readDictionary(index, position, marker);
    default:
      return fail("an object is of an unknown kind");
  }
}

std::optional<std::size_t> BinaryPropertyListReader::positionOf(std::size_t index) {
  const std::uint64_t position = readBigEndian(mBytes.data() + mTable + index * mOffsetWidth, mOffsetWidth);
  if (position >= binaryMagic.size() && position < mTable) return static_cast<std::size_t>(position);
  fail("an object lies outside the property list");
  return std::nullopt;
}

std::optional<std::size_t> BinaryPropertyListReader::reference(const std::uint8_t* position) {
  const std::uint64_t index = readBigEndian(position, mReferenceWidth);
  if (index < mObjects.size()) return static_cast<std::size_t>(index);
  fail(noSuchObject);
  return std::nullopt;
}

bool BinaryPropertyListReader::keep(Object& object, PropertyList::Type type, std::uint64_t bits) {
  object = {bits, 1, static_cast<std::uint16_t>(isContainer(type) ? 1 : 0), type, State::Done};
  return true;
}

bool BinaryPropertyListReader::readSingleton(Object& object, std::uint8_t marker) {
  if (marker == falseMarker || marker == trueMarker) {
    return keep(object, PropertyList::Type::Boolean, marker == trueMarker ? 1 : 0);
  }
  return fail(marker == 0 ? "null objects are not supported" : "an object is of an unknown kind");
}

const std::uint8_t* BinaryPropertyListReader::scalar(std::size_t position, std::size_t width) {
  if (mTable - position - 1 >= width) return mBytes.data() + position + 1;
  fail(reachesTooFar);
  return nullptr;
}

bool BinaryPropertyListReader::readInteger(Object& object, std::size_t position, std::uint8_t marker) {
  if ((marker & 0x0F) > 4) return fail("an integer is wider than 16 bytes");
  const std::size_t width = std::size_t{1} << (marker & 0x0F);
  const std::uint8_t* bytes = scalar(position, width);
  if (bytes == nullptr) return false;
  if (width <= 8) return keep(object, PropertyList::Type::Integer, readBigEndian(bytes, width));
  const std::uint64_t high = readBigEndian(bytes, 8);
  const std::uint64_t low = readBigEndian(bytes + 8, 8);
  const bool highBit = (low >> 63) != 0;
  if (high == 0) return keep(object, highBit ? PropertyList::Type::Unsigned : PropertyList::Type::Integer, low);
  if (high == ~std::uint64_t{0} && highBit) return keep(object, PropertyList::Type::Integer, low);
  return fail("an integer does not fit into 64 bits");
}

bool BinaryPropertyListReader::readReal(Object& object, std::size_t position, std::uint8_t marker) {
  const std::size_t width = std::size_t{1} << (marker & 0x0F);
  if (width != 4 && width != 8) return fail("a real is neither 4 nor 8 bytes wide");
  const std::uint8_t* bytes = scalar(position, width);
  if (bytes == nullptr) return false;
  const std::uint64_t bits = readBigEndian(bytes, width);
  if (width == 8) return keep(object, PropertyList::Type::Real, bits);
  const double value = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
  return keep(object, PropertyList::Type::Real, std::bit_cast<std::uint64_t>(value));
}

bool BinaryPropertyListReader::readDate(Object& object, std::size_t position, std::uint8_t marker) {
  if (marker != dateMarker) return fail("a date is not 8 bytes wide");
  const std::uint8_t* bytes = scalar(position, 8);
  if (bytes == nullptr) return false;
  const std::uint64_t bits = readBigEndian(bytes, 8);
  if (!std::isfinite(std::bit_cast<double>(bits))) return fail("a date is not finite");
  return keep(object, PropertyList::Type::Date, bits);
}

bool BinaryPropertyListReader::readUid(Object& object, std::size_t position, std::uint8_t marker) {
  const std::size_t width = (marker & 0x0Fu) + 1;
  const std::uint8_t* bytes = scalar(position, width);
  if (bytes == nullptr) return false;
  const std::size_t excess = width > 8 ? width - 8 : 0;
  if (readBigEndian(bytes, excess) != 0) return fail("a UID does not fit into 64 bits");
  return keep(object, PropertyList::Type::Uid, readBigEndian(bytes + excess, width - excess));
}

std::optional<BytesView> BinaryPropertyListReader::payload(std::size_t position, std::uint8_t marker,
                                                           std::size_t width) {
  std::uint64_t count = marker & 0x0F;
  std::size_t start = position + 1;
  if (count == longLength) {
    const std::uint8_t lengthMarker = start < mTable ? mBytes[start] : 0;
    const std::size_t lengthWidth = std::size_t{1} << (lengthMarker & 0x0F);
    if (lengthMarker >> 4 != IntegerKind || lengthWidth > 8 || mTable - start - 1 < lengthWidth) {
      fail("a length is no integer");
      return std::nullopt;
    }
    count = readBigEndian(mBytes.data() + start + 1, lengthWidth);
    start += 1 + lengthWidth;
  }
  if (count > (mTable - start) / width) {
    fail(reachesTooFar);
    return std::nullopt;
  }
  return mBytes.subspan(start, static_cast<std::size_t>(count) * width);
}

// Texts may overlap in the file, but what they hold together stays bounded.
TextNode* BinaryPropertyListReader::newText(std::size_t size) {
  mTextBytes += size;
  if (mTextBytes > maximumSize) {
    fail("the strings and data overlap too much");
    return nullptr;
  }
  return unowned(NodeAccess::newText(size, &mSlabs));
}

bool BinaryPropertyListReader::readBytes(Object& object, std::size_t position, std::uint8_t marker) {
  const std::optional<BytesView> bytes = payload(position, marker, 1);
  if (!bytes) return false;
  const bool data = marker >> 4 == DataKind;
  const PropertyList::Type type = data ? PropertyList::Type::Data : PropertyList::Type::String;
  if (bytes->empty()) return keep(object, type, 0);
  if (!data && !isAscii({reinterpret_cast<const char*>(bytes->data()), bytes->size()})) {
    return fail("an ASCII string holds other bytes");
  }
  TextNode* node = newText(bytes->size());
  if (node == nullptr) return false;
  std::memcpy(node->text(), bytes->data(), bytes->size());
  return keep(object, type, NodeAccess::addressBits(node));
}

bool BinaryPropertyListReader::readUtf16(Object& object, std::size_t position, std::uint8_t marker) {
  const std::optional<BytesView> units = payload(position, marker, 2);
  if (!units) return false;
  if (units->empty()) return keep(object, PropertyList::Type::String, 0);
  TextNode* node = newText(utf8Length(*units));
  if (node == nullptr) return false;
  writeUtf8(*units, node->text());
  return keep(object, PropertyList::Type::String, NodeAccess::addressBits(node));
}

// Whether a container of so many values may be opened.
bool BinaryPropertyListReader::admit(std::size_t count) {
  if (mFrames.size() >= maximumDepth) return fail(tooDeep);
  mElements += count;
  // Every one of them belongs to the top object, so this comes before any memory is taken for them.
  return mElements <= maximumExpandedCount || fail(tooManyElements);
}

void BinaryPropertyListReader::open(std::size_t index, PropertyList::Type type, Frame frame) {
  Object& object = mObjects[index];
  object.bits = NodeAccess::addressBits(frame.node);
  object.type = type;
  object.state = State::Open;
  frame.object = static_cast<std::uint32_t>(index);
  frame.next = 0;
  frame.weight = 1;
  frame.height = 1;
  mFrames.push_back(frame);
}

bool BinaryPropertyListReader::readArray(std::size_t index, std::size_t position, std::uint8_t marker) {
  const std::optional<BytesView> references = payload(position, marker, mReferenceWidth);
  if (!references) return false;
  const std::size_t count = references->size() / mReferenceWidth;
  if (!admit(count)) return false;
  if (count == 0) return keep(mObjects[index], PropertyList::Type::Array, 0);
  Frame frame{};
  frame.node = NodeAccess::newArray(count, &mSlabs);
  frame.references = references->data();
  frame.count = static_cast<std::uint32_t>(count);
  open(index, PropertyList::Type::Array, frame);
  return true;
}

bool BinaryPropertyListReader::readDictionary(std::size_t index, std::size_t position, std::uint8_t marker) {
  const std::optional<BytesView> references = payload(position, marker, 2 * mReferenceWidth);
  if (!references) return false;
  const std::size_t keyBytes = references->size() / 2;
  const std::size_t count = keyBytes / mReferenceWidth;
  if (!admit(count)) return false;
  if (count == 0) return keep(mObjects[index], PropertyList::Type::Dictionary, 0);
  const KnownShape* known = shapeFor(references->first(keyBytes));
  if (known == nullptr) return false;
  addReference(known->shape);
  Frame frame{};
  frame.node = NodeAccess::newDictionary(known->shape, &mSlabs);
  frame.references = references->data() + keyBytes;
  frame.slots = known->slots;
  frame.count = static_cast<std::uint32_t>(count);
  open(index, PropertyList::Type::Dictionary, frame);
  return true;
}

const BinaryPropertyListReader::KnownShape* BinaryPropertyListReader::shapeFor(BytesView references) {
  const std::uint64_t first = readBigEndian(references.data(), mReferenceWidth);
  const std::uint64_t last = readBigEndian(references.data() + references.size() - mReferenceWidth, mReferenceWidth);
  // The golden ratio spreads the neighbouring numbers of one file over the table.
  const std::uint64_t spread = (first + 31 * last + references.size()) * 0x9E3779B97F4A7C15u;
  KnownShape& known = mShapes[static_cast<std::size_t>(spread >> 58)];
  static_assert(std::tuple_size_v<decltype(mShapes)> == 64);
  const bool same = known.references.size() == references.size() &&
                    std::memcmp(known.references.data(), references.data(), references.size()) == 0;
  return same || makeShape(known, references) ? &known : nullptr;
}

bool BinaryPropertyListReader::makeShape(KnownShape& known, BytesView references) {
  const std::size_t count = references.size() / mReferenceWidth;
  std::vector<PropertyList> keys(count);
  bool ascending = true;
  for (std::size_t i = 0; i < count; ++i) {
    if (!readKey(references.data() + i * mReferenceWidth, keys[i])) return false;
    ascending = ascending && (i == 0 || keys[i - 1].string() < keys[i].string());
  }

  std::vector<std::uint32_t> order(count);
  std::iota(order.begin(), order.end(), 0u);
  const std::uint32_t* slots = nullptr;
  if (!ascending) {
    std::stable_sort(order.begin(), order.end(), [&keys](std::uint32_t left, std::uint32_t right) {
      return keys[left].string() < keys[right].string();
    });
    slots = mSlotOrders.emplace_back(count).data();
  }
  std::vector<TextNode*> sorted;
  sorted.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    TextNode* key = NodeAccess::text(keys[order[i]]);
    if (i == 0 || textOf(sorted.back()) != textOf(key)) {
      sorted.push_back(key);
      if (key != nullptr) addReference(key);
    } else {
      mReplaced.push_back(keys[order[i]]);
    }
    if (!ascending) mSlotOrders.back()[order[i]] = static_cast<std::uint32_t>(sorted.size() - 1);
  }
  known = {references, unowned(NodeAccess::newShape(sorted, &mSlabs)), slots};
  return true;
}

bool BinaryPropertyListReader::readKey(const std::uint8_t* position, PropertyList& key) {
  const std::optional<std::size_t> index = reference(position);
  if (!index) return false;
  if (mObjects[*index].state == State::Unread) {
    const std::optional<std::size_t> place = positionOf(*index);
    if (!place) return false;
    const int kind = mBytes[*place] >> 4;
    if (kind != AsciiKind && kind != Utf16Kind) return fail("a key is no string");
    if (!readObject(*index)) return false;
  }
  const Object& object = mObjects[*index];
  if (object.type != PropertyList::Type::String) return fail("a key is no string");
  if (object.bits != 0) addReference(NodeAccess::nodeAt<Node>(object.bits));
  NodeAccess::initialize(key, object.type, object.bits);
  return true;
}

}  // namespace vorn::detail
