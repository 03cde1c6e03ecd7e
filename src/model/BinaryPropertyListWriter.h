// Writes one binary property list; for the files of this folder only.
//
// First every object gets its number, in the order in which a reader going down from the top object meets it: a
// container, its keys, its values. Then the sizes are known and everything is written into memory of the final size.
// Equal scalars, strings and data are one object; a container is one object however often it is referred to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "model/NumberTable.h"
#include "model/PropertyList.h"
#include "model/PropertyListNodes.h"

namespace vorn::detail {

class BinaryPropertyListWriter {
 public:
  // To be called once.
  std::optional<Bytes> write(const PropertyList& value);
  // Why write() gave nothing.
  const char* error() const { return mError; }

 private:
  struct Object {
    std::uint64_t bits;
    std::uint32_t weight;  // elements it expands to, itself included
    std::uint16_t height;  // levels of containers in it
    PropertyList::Type type;
    bool ascii;  // of a string
  };

  // A container whose values are being numbered.
  struct Frame {
    const ContainerNode* node;
    std::size_t references;  // place of the first value's reference
    std::uint32_t next;
    std::uint32_t object;
    std::uint32_t weight;
    std::uint16_t height;
  };

  bool numberTree(const PropertyList& top);
  bool numberTopFrame();
  bool finishTopFrame();
  bool take(Frame& frame, const Object& object);

  // Gives a value its number; a new container gets a frame of its own.
  bool number(const PropertyList& value, std::uint32_t& result);
  bool numberContainer(const PropertyList& value, std::uint32_t& result);
  void open(const ContainerNode* node, std::uint32_t object);
  std::uint32_t knownSmallInteger(const PropertyList& value) const;
  std::uint32_t numberScalar(PropertyList::Type type, std::uint64_t bits);
  std::uint32_t numberText(PropertyList::Type type, TextNode* node);
  std::uint32_t addText(PropertyList::Type type, TextNode* node);
  std::uint32_t keyReferencesOf(Shape* shape);
  std::uint32_t add(const Object& object, std::size_t size);

  std::uint8_t* writeObject(const Object& object, std::uint8_t* out);
  static std::uint8_t* writeText(const Object& object, std::uint8_t* out);
  std::uint8_t* writeContainer(const Object& object, std::uint8_t* out);
  std::uint8_t* writeReferences(const std::uint32_t* first, std::size_t count, std::uint8_t* out) const;

  bool fail(const char* message) {
    mError = message;
    return false;
  }

  const char* mError = "";
  std::vector<Object> mObjects;
  std::vector<Frame> mFrames;
  // For each container in order: for a dictionary the place of its shape's key references, then its values.
  std::vector<std::uint32_t> mReferences;
  std::vector<std::uint32_t> mKeyReferences;
  std::size_t mNextReferences = 0;  // of the next container, while writing
  std::size_t mSize = 0;            // bytes of all objects without their references
  std::size_t mReferenceCount = 0;  // references that will be written
  std::size_t mReferenceWidth = 0;
  std::size_t mElements = 0;  // of all containers so far

  std::array<std::uint32_t, 1024> mSmallIntegers{};  // number + 1 of each integer from 0 on
  NumberTable mScalars;
  NumberTable mNodes;  // shared texts, containers and shapes by address
  NumberTable mTexts;  // texts by a hash of their content
};

}  // namespace vorn::detail
