#include "model/BinaryPropertyListWriter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "model/BinaryPropertyListFormat.h"
#include "model/PropertyListCodec.h"
#include "model/UnicodeText.h"

namespace vorn::detail {

namespace {

using Type = PropertyList::Type;

constexpr const char* tooDeep = "the value is nested too deeply";
constexpr const char* tooManyElements = "the value expands to too many elements";

// The smallest of the widths that every reader knows.
std::size_t widthOf(std::uint64_t value) noexcept {
  return value < (1u << 8) ? 1 : value < (1u << 16) ? 2 : value < (std::uint64_t{1} << 32) ? 4 : 8;
}

std::uint8_t marker(BinaryKind kind, std::size_t low) noexcept {
  return static_cast<std::uint8_t>((static_cast<std::size_t>(kind) << 4) | low);
}

std::uint8_t integerMarker(std::size_t width) noexcept {
  return marker(IntegerKind, static_cast<std::size_t>(std::countr_zero(width)));
}

// Bytes of the marker of an object with a length.
std::size_t headerSize(std::size_t length) noexcept {
  return length < longLength ? 1 : 2 + widthOf(length);
}

std::uint8_t* writeHeader(BinaryKind kind, std::size_t length, std::uint8_t* out) noexcept {
  if (length < longLength) {
    *out++ = marker(kind, length);
    return out;
  }
  *out++ = marker(kind, longLength);
  *out++ = integerMarker(widthOf(length));
  return writeBigEndian(length, widthOf(length), out);
}

// A number below zero takes 8 bytes as it has the highest bits set.
std::size_t scalarSize(Type type, std::uint64_t bits) noexcept {
  switch (type) {
    case Type::Integer:
    case Type::Uid:
      return 1 + widthOf(bits);
    case Type::Unsigned:
      return 17;
    case Type::Real:
    case Type::Date:
      return 9;
    default:
      return 1;
  }
}

bool isShared(const Node* node) noexcept {
  return node->references.load(std::memory_order_relaxed) > 1;
}

// Kinds in the table of shared nodes.
enum : std::uint32_t { TextAddress, ContainerAddress, ShapeAddress };

}  // namespace

std::optional<Bytes> BinaryPropertyListWriter::write(const PropertyList& value) {
  if (!numberTree(value)) return std::nullopt;
  const std::size_t count = mObjects.size();
  mReferenceWidth = widthOf(count);
  const std::size_t table = binaryMagic.size() + mSize + mReferenceCount * mReferenceWidth;
  const std::size_t offsetWidth = widthOf(table);
  const std::size_t size = table + count * offsetWidth + trailerSize;
  if (size > maximumSize) {
    fail("the property list is too large");
    return std::nullopt;
  }

  Bytes bytes(size);
  std::memcpy(bytes.data(), binaryMagic.data(), binaryMagic.size());
  std::uint8_t* out = bytes.data() + binaryMagic.size();
  std::uint8_t* offsets = bytes.data() + table;
  for (const Object& object : mObjects) {
    offsets = writeBigEndian(static_cast<std::uint64_t>(out - bytes.data()), offsetWidth, offsets);
    out = writeObject(object, out);
  }
  std::uint8_t* trailer = offsets + 6;
  *trailer++ = static_cast<std::uint8_t>(offsetWidth);
  *trailer++ = static_cast<std::uint8_t>(mReferenceWidth);
  trailer = writeBigEndian(count, 8, trailer);
  trailer = writeBigEndian(0, 8, trailer);
  writeBigEndian(table, 8, trailer);
  return bytes;
}

bool BinaryPropertyListWriter::numberTree(const PropertyList& top) {
  std::uint32_t topNumber = 0;
  if (!number(top, topNumber)) return false;
  while (!mFrames.empty()) {
    if (!numberTopFrame()) return false;
    if (mFrames.back().next == mFrames.back().node->count && !finishTopFrame()) return false;
  }
  return true;
}

// Numbers values until the frame is full or a container has been opened above it.
bool BinaryPropertyListWriter::numberTopFrame() {
  const std::size_t depth = mFrames.size();
  Frame* frame = &mFrames.back();
  const PropertyList* const values = frame->node->values();
  const std::size_t references = frame->references;
  const std::uint32_t count = frame->node->count;
  while (frame->next < count) {
    const PropertyList& value = values[frame->next];
    const std::size_t place = references + frame->next;
    if (const std::uint32_t known = knownSmallInteger(value); known != 0) {
      mReferences[place] = known - 1;
      ++frame->next;
      if (++frame->weight > maximumExpandedCount) return fail(tooManyElements);
      continue;
    }
    std::uint32_t number = 0;
    if (!this->number(value, number)) return false;
    mReferences[place] = number;
    if (mFrames.size() != depth) return true;
    if (!take(*frame, mObjects[number])) return false;
  }
  return true;
}

// The number + 1 of a small integer that has one, otherwise 0.
inline std::uint32_t BinaryPropertyListWriter::knownSmallInteger(const PropertyList& value) const {
  const std::uint64_t bits = NodeAccess::bits(value);
  const bool small = value.type() == Type::Integer && bits < mSmallIntegers.size();
  return small ? mSmallIntegers[static_cast<std::size_t>(bits)] : 0;
}

bool BinaryPropertyListWriter::finishTopFrame() {
  const Frame& frame = mFrames.back();
  Object& object = mObjects[frame.object];
  object.weight = frame.weight;
  object.height = frame.height;
  mFrames.pop_back();
  return mFrames.empty() || take(mFrames.back(), object);
}

bool BinaryPropertyListWriter::take(Frame& frame, const Object& object) {
  ++frame.next;
  frame.weight += object.weight;
  frame.height = std::max(frame.height, static_cast<std::uint16_t>(object.height + 1));
  if (frame.weight > maximumExpandedCount) return fail(tooManyElements);
  if (frame.height > maximumDepth) return fail(tooDeep);
  return true;
}

bool BinaryPropertyListWriter::number(const PropertyList& value, std::uint32_t& result) {
  const std::uint64_t bits = NodeAccess::bits(value);
  switch (value.type()) {
    case Type::None:
      return fail("the value holds nothing where a value is needed");
    case Type::Array:
    case Type::Dictionary:
      return numberContainer(value, result);
    case Type::String:
    case Type::Data:
      result = numberText(value.type(), NodeAccess::text(value));
      break;
    case Type::Date:
      if (!std::isfinite(value.date().seconds)) return fail("a date is not finite");
      result = numberScalar(value.type(), bits);
      break;
    default:
      result = numberScalar(value.type(), bits);
  }
  return mSize <= maximumSize || fail("the property list is too large");
}

bool BinaryPropertyListWriter::numberContainer(const PropertyList& value, std::uint32_t& result) {
  ContainerNode* node = NodeAccess::container(value);
  const std::size_t count = value.size();
  const auto addContainer = [&] {
    return add({NodeAccess::bits(value), 1, 1, value.type(), false}, headerSize(count));
  };
  if (node == nullptr) {
    result = addContainer();
    return true;
  }
  if (isShared(node)) {
    std::uint32_t& known = mNodes.lookUp(NodeAccess::bits(value), ContainerAddress);
    if (known != NumberTable::unset) {
      result = known;
      return true;
    }
    result = known = addContainer();
  } else {
    result = addContainer();
  }
  if (mFrames.size() >= maximumDepth) return fail(tooDeep);
  mElements += count;
  if (mElements > maximumExpandedCount) return fail(tooManyElements);
  open(node, result);
  return true;
}

void BinaryPropertyListWriter::open(const ContainerNode* node, std::uint32_t object) {
  if (node->shape != nullptr) {
    mReferences.push_back(keyReferencesOf(node->shape));
    mReferenceCount += node->count;
  }
  mFrames.push_back({node, mReferences.size(), 0, object, 1, 1});
  mReferences.resize(mReferences.size() + node->count);
  mReferenceCount += node->count;
}

// Place of the key references of a shape; they are found once for all dictionaries that share it.
std::uint32_t BinaryPropertyListWriter::keyReferencesOf(Shape* shape) {
  const auto place = static_cast<std::uint32_t>(mKeyReferences.size());
  if (isShared(shape)) {
    std::uint32_t& known = mNodes.lookUp(NodeAccess::addressBits(shape), ShapeAddress);
    if (known != NumberTable::unset) return known;
    known = place;
  }
  for (std::size_t i = 0; i < shape->count; ++i) mKeyReferences.push_back(numberText(Type::String, shape->keys()[i]));
  return place;
}

std::uint32_t BinaryPropertyListWriter::add(const Object& object, std::size_t size) {
  mSize += size;
  mObjects.push_back(object);
  return static_cast<std::uint32_t>(mObjects.size() - 1);
}

std::uint32_t BinaryPropertyListWriter::numberScalar(Type type, std::uint64_t bits) {
  const Object object{bits, 1, 0, type, true};
  if (type == Type::Integer && bits < mSmallIntegers.size()) {
    std::uint32_t& known = mSmallIntegers[static_cast<std::size_t>(bits)];
    if (known == 0) known = add(object, scalarSize(type, bits)) + 1;
    return known - 1;
  }
  std::uint32_t& known = mScalars.lookUp(bits, static_cast<std::uint32_t>(type));
  if (known == NumberTable::unset) known = add(object, scalarSize(type, bits));
  return known;
}

std::uint32_t BinaryPropertyListWriter::numberText(Type type, TextNode* node) {
  if (node == nullptr) return numberScalar(type, 0);
  if (!isShared(node)) return addText(type, node);
  // By its address first: a long text that is shared many times is looked at once.
  std::uint32_t& known = mNodes.lookUp(NodeAccess::addressBits(node), TextAddress);
  if (known == NumberTable::unset) known = addText(type, node);
  return known;
}

std::uint32_t BinaryPropertyListWriter::addText(Type type, TextNode* node) {
  const std::string_view text = textOf(node);
  std::uint32_t& known =
      mTexts.lookUp(hashText(text), static_cast<std::uint32_t>(type), [this, text](std::uint32_t number) {
        return textOf(NodeAccess::nodeAt<TextNode>(mObjects[number].bits)) == text;
      });
  if (known == NumberTable::unset) {
    const bool ascii = type == Type::Data || isAscii(text);
    const std::size_t length = ascii ? text.size() : utf16Length(text);
    known = add({NodeAccess::addressBits(node), 1, 0, type, ascii}, headerSize(length) + length * (ascii ? 1 : 2));
  }
  return known;
}

std::uint8_t* BinaryPropertyListWriter::writeObject(const Object& object, std::uint8_t* out) {
  const std::uint64_t bits = object.bits;
  switch (object.type) {
    case Type::None:
      break;  // never numbered
    case Type::Boolean:
      *out++ = bits != 0 ? trueMarker : falseMarker;
      break;
    case Type::Integer:
      *out++ = integerMarker(widthOf(bits));
      return writeBigEndian(bits, widthOf(bits), out);
    case Type::Unsigned:
      *out++ = integerMarker(16);
      return writeBigEndian(bits, 8, writeBigEndian(0, 8, out));
    case Type::Real:
      *out++ = marker(RealKind, 3);
      return writeBigEndian(bits, 8, out);
    case Type::Date:
      *out++ = dateMarker;
      return writeBigEndian(bits, 8, out);
    case Type::Uid:
      *out++ = marker(UidKind, widthOf(bits) - 1);
      return writeBigEndian(bits, widthOf(bits), out);
    case Type::String:
    case Type::Data:
      return writeText(object, out);
    case Type::Array:
    case Type::Dictionary:
      return writeContainer(object, out);
  }
  return out;
}

std::uint8_t* BinaryPropertyListWriter::writeText(const Object& object, std::uint8_t* out) {
  const std::string_view text = textOf(NodeAccess::nodeAt<TextNode>(object.bits));
  if (!object.ascii) return writeUtf16(text, writeHeader(Utf16Kind, utf16Length(text), out));
  out = writeHeader(object.type == Type::Data ? DataKind : AsciiKind, text.size(), out);
  return std::copy(text.begin(), text.end(), out);
}

std::uint8_t* BinaryPropertyListWriter::writeContainer(const Object& object, std::uint8_t* out) {
  const bool dictionary = object.type == Type::Dictionary;
  const ContainerNode* node = NodeAccess::nodeAt<ContainerNode>(object.bits);
  const std::size_t count = node != nullptr ? node->count : 0;
  out = writeHeader(dictionary ? DictionaryKind : ArrayKind, count, out);
  if (count == 0) return out;
  if (dictionary) out = writeReferences(mKeyReferences.data() + mReferences[mNextReferences++], count, out);
  out = writeReferences(mReferences.data() + mNextReferences, count, out);
  mNextReferences += count;
  return out;
}

std::uint8_t* BinaryPropertyListWriter::writeReferences(const std::uint32_t* first, std::size_t count,
                                                        std::uint8_t* out) const {
  switch (mReferenceWidth) {
    case 1:
      return std::transform(first, first + count, out,
                            [](std::uint32_t number) { return static_cast<std::uint8_t>(number); });
    case 2:
      for (std::size_t i = 0; i < count; ++i) out = writeBigEndian(first[i], 2, out);
      return out;
    default:
      for (std::size_t i = 0; i < count; ++i) out = writeBigEndian(first[i], 4, out);
      return out;
  }
}

}  // namespace vorn::detail
