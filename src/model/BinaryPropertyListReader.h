// Reads one binary property list; for the files of this folder only.
//
// Objects are decoded from the top one downwards with a stack of their own, each at most once. A value that several
// containers refer to is shared. Dictionaries that name their keys by the same references share one shape.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "model/PropertyList.h"
#include "model/PropertyListNodes.h"

namespace vorn::detail {

class BinaryPropertyListReader {
 public:
  explicit BinaryPropertyListReader(BytesView bytes) : mBytes(bytes) {}
  ~BinaryPropertyListReader();
  BinaryPropertyListReader(const BinaryPropertyListReader&) = delete;
  BinaryPropertyListReader& operator=(const BinaryPropertyListReader&) = delete;

  // To be called once.
  std::optional<PropertyList> read();
  // Why read() gave nothing.
  const char* error() const { return mError; }

 private:
  enum class State : std::uint8_t { Unread, Open, Done };

  // What is known about an object. A node in here has no reference of its own: the first container that takes it
  // owns it, and everything lives until the reading ends.
  struct Object {
    std::uint64_t bits;
    std::uint32_t weight;  // elements it expands to, itself included
    std::uint16_t height;  // levels of containers in it
    PropertyList::Type type;
    State state;
  };

  // A container that is being filled.
  struct Frame {
    ContainerNode* node;
    const std::uint8_t* references;  // of the values
    const std::uint32_t* slots;      // place of each value in the node; null for their own order
    std::uint32_t next;
    std::uint32_t count;
    std::uint32_t object;
    std::uint32_t weight;
    std::uint16_t height;
  };

  // A shape that was made for these key references.
  struct KnownShape {
    BytesView references;
    Shape* shape = nullptr;
    const std::uint32_t* slots = nullptr;
  };

  bool readTrailer();
  bool readTree();
  bool fillTopFrame(std::size_t referenceWidth);
  bool finishTopFrame();
  bool take(Frame& frame, const Object& object);

  // Reads an object that is unread: it is done afterwards, or a frame has been opened for it.
  bool readObject(std::size_t index);
  bool readSingleton(Object& object, std::uint8_t marker);
  bool readInteger(Object& object, std::size_t position, std::uint8_t marker);
  bool readReal(Object& object, std::size_t position, std::uint8_t marker);
  bool readDate(Object& object, std::size_t position, std::uint8_t marker);
  bool readUid(Object& object, std::size_t position, std::uint8_t marker);
  bool readBytes(Object& object, std::size_t position, std::uint8_t marker);
  bool readUtf16(Object& object, std::size_t position, std::uint8_t marker);
  bool readArray(std::size_t index, std::size_t position, std::uint8_t marker);
  bool readDictionary(std::size_t index, std::size_t position, std::uint8_t marker);

  std::optional<std::size_t> positionOf(std::size_t index);
  std::optional<std::size_t> reference(const std::uint8_t* position);
  // So many bytes behind the marker at this position; null when they are not there.
  const std::uint8_t* scalar(std::size_t position, std::size_t width);
  // What the length behind the marker at this position spans, of elements of this width.
  std::optional<BytesView> payload(std::size_t position, std::uint8_t marker, std::size_t width);
  TextNode* newText(std::size_t size);
  static bool keep(Object& object, PropertyList::Type type, std::uint64_t bits);

  bool admit(std::size_t count);
  void open(std::size_t index, PropertyList::Type type, Frame frame);
  const KnownShape* shapeFor(BytesView references);
  bool makeShape(KnownShape& known, BytesView references);
  bool readKey(const std::uint8_t* position, PropertyList& key);

  bool fail(const char* message) {
    mError = message;
    return false;
  }

  BytesView mBytes;
  const char* mError = "";

  std::size_t mOffsetWidth = 0;
  std::size_t mReferenceWidth = 0;
  std::size_t mTop = 0;
  std::size_t mTable = 0;  // position of the offset table, where the objects end

  SlabAllocator mSlabs;
  std::vector<Object> mObjects;
  std::vector<Frame> mFrames;
  std::size_t mElements = 0;   // of all containers so far
  std::size_t mTextBytes = 0;  // of all strings and data so far

  std::array<KnownShape, 64> mShapes;  // found by some of their references; a newer one replaces an older one
  std::deque<std::vector<std::uint32_t>> mSlotOrders;  // a deque, as they are pointed at
  std::vector<PropertyList> mReplaced;  // keys and values that came again, alive while they may be referred to
};

}  // namespace vorn::detail
