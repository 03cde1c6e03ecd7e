// Storage behind a property-list value, for the files of this folder only.
//
// A value of 16 bytes holds a number itself, or the address of a reference-counted node: text (string or data) or a
// container. A container node is a header with its values behind it. A dictionary's keys live in a shape, which all
// dictionaries with the same keys may share, so a thousand records of one kind hold their keys once.
// Nothing of no length has a node: the address is null.
#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn::detail {

// Memory for many nodes that are made together, as by a decoder. It goes when its last node has gone.
struct alignas(8) Slab {
  std::atomic<std::uint32_t> nodes{0};
};

struct Node {
  explicit Node(std::uint32_t size) noexcept : count(size) {}
  std::atomic<std::uint32_t> references{1};
  std::uint32_t count;   // bytes, keys or values behind the header
  Slab* slab = nullptr;  // null for a node in memory of its own
};

// Hands out memory for nodes from slabs. Not for use by several threads; its nodes are like any others.
class SlabAllocator {
 public:
  SlabAllocator() = default;
  ~SlabAllocator();
  SlabAllocator(const SlabAllocator&) = delete;
  SlabAllocator& operator=(const SlabAllocator&) = delete;

  // Null for what is better kept in memory of its own.
  void* take(std::size_t size);
  Slab* current() const noexcept { return mSlab; }

 private:
  void open();
  void close() noexcept;

  Slab* mSlab = nullptr;
  std::byte* mFree = nullptr;
  std::size_t mLeft = 0;
  std::uint32_t mTaken = 0;
};

// The bytes of a string (UTF-8) or of data.
struct TextNode : Node {
  using Node::Node;
  char* text() noexcept { return reinterpret_cast<char*>(this + 1); }
  const char* text() const noexcept { return reinterpret_cast<const char*>(this + 1); }
};

inline std::string_view textOf(const TextNode* node) noexcept {
  return node ? std::string_view(node->text(), node->count) : std::string_view();
}

// The keys of a dictionary in byte order, each once. The shape owns a reference to every key.
struct Shape : Node {
  using Node::Node;
  TextNode** keys() noexcept { return reinterpret_cast<TextNode**>(this + 1); }
  TextNode* const* keys() const noexcept { return reinterpret_cast<TextNode* const*>(this + 1); }
  std::string_view key(std::size_t index) const noexcept { return textOf(keys()[index]); }
  // Position of the key, or the number of keys when it is not there.
  std::size_t find(std::string_view key) const noexcept;
};

struct ContainerNode : Node {
  using Node::Node;
  PropertyList* values() noexcept { return reinterpret_cast<PropertyList*>(this + 1); }
  const PropertyList* values() const noexcept { return reinterpret_cast<const PropertyList*>(this + 1); }
  union {
    Shape* shape = nullptr;   // null in an array
    ContainerNode* nextDead;  // while the container is being destroyed
  };
};

class NodeAccess {
 public:
  // New nodes have one reference, the caller's. The size is not zero; above 32 bits they throw std::length_error.
  static TextNode* newText(std::size_t size, SlabAllocator* slabs = nullptr);
  static TextNode* newText(std::string_view text);
  // Takes over one reference to each key.
  static Shape* newShape(std::span<TextNode* const> sortedKeys, SlabAllocator* slabs = nullptr);
  // Of none values.
  static ContainerNode* newArray(std::size_t size, SlabAllocator* slabs = nullptr);
  // Of none values; takes over the reference.
  static ContainerNode* newDictionary(Shape* shape, SlabAllocator* slabs = nullptr);

  static void retain(Node* node) noexcept { node->references.fetch_add(1, std::memory_order_relaxed); }
  // Whether that was the last reference.
  static bool drop(Node* node) noexcept {
    return node->references.load(std::memory_order_acquire) == 1 ||
           node->references.fetch_sub(1, std::memory_order_acq_rel) == 1;
  }
  static void releaseText(TextNode* node) noexcept;  // null allowed
  static void releaseShape(Shape* shape) noexcept;
  // Whatever its reference count says; what it holds alone goes with it, without recursion.
  static void destroyContainer(ContainerNode* node) noexcept;

  // Takes over one reference of a node.
  static PropertyList make(PropertyList::Type type, std::uint64_t bits) noexcept {
    PropertyList value;
    value.mType = type;
    value.mBits = bits;
    return value;
  }
  // The same for a place that holds none.
  static void initialize(PropertyList& place, PropertyList::Type type, std::uint64_t bits) noexcept {
    place.mType = type;
    place.mBits = bits;
  }
  static PropertyList make(PropertyList::Type type, Node* node) noexcept { return make(type, addressBits(node)); }

  static std::uint64_t bits(const PropertyList& value) noexcept { return value.mBits; }
  static TextNode* text(const PropertyList& value) noexcept { return nodeAt<TextNode>(value.mBits); }
  static ContainerNode* container(const PropertyList& value) noexcept { return nodeAt<ContainerNode>(value.mBits); }
  static Shape* shape(const PropertyList& dictionary) noexcept {
    return dictionary.mBits != 0 ? container(dictionary)->shape : nullptr;
  }
  static std::uint64_t addressBits(Node* node) noexcept { return reinterpret_cast<std::uintptr_t>(node); }
  template <typename T>
  static T* nodeAt(std::uint64_t bits) noexcept {
    return static_cast<T*>(std::bit_cast<Node*>(static_cast<std::uintptr_t>(bits)));
  }
};

}  // namespace vorn::detail
