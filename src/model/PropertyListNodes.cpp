#include "model/PropertyListNodes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <type_traits>

namespace vorn::detail {

static_assert(sizeof(PropertyList) == 16);
static_assert(sizeof(ContainerNode) % alignof(PropertyList) == 0);
static_assert(sizeof(Shape) % alignof(TextNode*) == 0);

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool slabsInUse = false;  // so that every node is watched by itself
#elif defined(__has_feature)
constexpr bool slabsInUse = !__has_feature(address_sanitizer);
#else
constexpr bool slabsInUse = true;
#endif

constexpr std::size_t slabSize = std::size_t{16} * 1024;
// What is larger than this has memory of its own, so that no slab is kept for it and none is left half empty.
constexpr std::size_t largestInSlab = 1024;

// Slabs are kept for the next decoder up to this number: every change of the settings makes a bundle and frees the one
// before, and the system would take and give the same pages each time.
constexpr std::size_t largestPool = 24;

class SlabPool {
 public:
  Slab* take() {
    {
      const std::lock_guard lock(mMutex);
      if (mCount > 0) return new (mSlabs[--mCount]) Slab;
    }
    return new (::operator new(slabSize)) Slab;
  }
  void giveBack(Slab* slab) noexcept {
    {
      const std::lock_guard lock(mMutex);
      if (mCount < mSlabs.size()) {
        mSlabs[mCount++] = slab;
        return;
      }
    }
    ::operator delete(slab);
  }

 private:
  std::mutex mMutex;
  std::array<void*, largestPool> mSlabs{};
  std::size_t mCount = 0;
};

// Without a destructor, as values with static storage may go after it.
constinit SlabPool slabPool;
static_assert(std::is_trivially_destructible_v<SlabPool>);

template <typename T>
T* allocate(std::size_t count, std::size_t elementSize, SlabAllocator* slabs = nullptr) {
  if (count > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("property list too large");
  const std::size_t size = sizeof(T) + count * elementSize;
  void* memory = slabs != nullptr ? slabs->take(size) : nullptr;
  Slab* slab = memory != nullptr ? slabs->current() : nullptr;
  T* node = new (memory != nullptr ? memory : ::operator new(size)) T(static_cast<std::uint32_t>(count));
  node->slab = slab;
  return node;
}

// Gives back the memory of nodes; neighbours in one slab are counted off together.
class Reclaimer {
 public:
  Reclaimer() = default;
  ~Reclaimer() { flush(); }
  Reclaimer(const Reclaimer&) = delete;
  Reclaimer& operator=(const Reclaimer&) = delete;

  void reclaim(Node* node) noexcept {
    Slab* slab = node->slab;
    if (slab == nullptr) {
      ::operator delete(node);
      return;
    }
    if (slab != mSlab) {
      flush();
      mSlab = slab;
    }
    ++mNodes;
  }
  void releaseText(TextNode* node) noexcept {
    if (node != nullptr && NodeAccess::drop(node)) reclaim(node);
  }
  void releaseShape(Shape* shape) noexcept {
    if (!NodeAccess::drop(shape)) return;
    for (std::uint32_t i = 0; i < shape->count; ++i) releaseText(shape->keys()[i]);
    reclaim(shape);
  }

 private:
  void flush() noexcept {
    if (mSlab != nullptr && mSlab->nodes.fetch_sub(mNodes, std::memory_order_acq_rel) == mNodes) {
      slabPool.giveBack(mSlab);
    }
    mSlab = nullptr;
    mNodes = 0;
  }

  Slab* mSlab = nullptr;
  std::uint32_t mNodes = 0;
};

}  // namespace

std::size_t Shape::find(std::string_view wanted) const noexcept {
  TextNode* const* end = keys() + count;
  TextNode* const* place = std::lower_bound(
      keys(), end, wanted, [](const TextNode* node, std::string_view key) { return textOf(node) < key; });
  return place != end && textOf(*place) == wanted ? static_cast<std::size_t>(place - keys()) : count;
}

SlabAllocator::~SlabAllocator() {
  close();
}

void* SlabAllocator::take(std::size_t size) {
  constexpr std::size_t alignment = alignof(ContainerNode);
  size = (size + alignment - 1) / alignment * alignment;
  if (size > largestInSlab || !slabsInUse) return nullptr;
  if (mLeft < size) open();
  void* memory = mFree;
  mFree += size;
  mLeft -= size;
  ++mTaken;
  return memory;
}

void SlabAllocator::open() {
  close();
  static_assert(sizeof(Slab) % alignof(ContainerNode) == 0);
  mSlab = slabPool.take();
  // Whatever happens to its nodes meanwhile, the slab stays until it is closed.
  mSlab->nodes.store(slabSize, std::memory_order_relaxed);
  mFree = reinterpret_cast<std::byte*>(mSlab + 1);
  mLeft = slabSize - sizeof(Slab);
}

void SlabAllocator::close() noexcept {
  if (mSlab == nullptr) return;
  const std::uint32_t excess = static_cast<std::uint32_t>(slabSize) - mTaken;
  if (mSlab->nodes.fetch_sub(excess, std::memory_order_acq_rel) == excess) slabPool.giveBack(mSlab);
  mSlab = nullptr;
  mLeft = 0;
  mTaken = 0;
}

TextNode* NodeAccess::newText(std::size_t size, SlabAllocator* slabs) {
  return allocate<TextNode>(size, 1, slabs);
}

TextNode* NodeAccess::newText(std::string_view text) {
  TextNode* node = newText(text.size());
  std::memcpy(node->text(), text.data(), text.size());
  return node;
}

Shape* NodeAccess::newShape(std::span<TextNode* const> sortedKeys, SlabAllocator* slabs) {
  Shape* shape = allocate<Shape>(sortedKeys.size(), sizeof(void*), slabs);
  std::copy(sortedKeys.begin(), sortedKeys.end(), shape->keys());
  return shape;
}

ContainerNode* NodeAccess::newArray(std::size_t size, SlabAllocator* slabs) {
  ContainerNode* node = allocate<ContainerNode>(size, sizeof(PropertyList), slabs);
  std::uninitialized_default_construct_n(node->values(), size);
  return node;
}

ContainerNode* NodeAccess::newDictionary(Shape* shape, SlabAllocator* slabs) {
  ContainerNode* node = newArray(shape->count, slabs);
  node->shape = shape;
  return node;
}

void NodeAccess::releaseText(TextNode* node) noexcept {
  Reclaimer().releaseText(node);
}

void NodeAccess::releaseShape(Shape* shape) noexcept {
  Reclaimer().releaseShape(shape);
}

void NodeAccess::destroyContainer(ContainerNode* node) noexcept {
  Reclaimer reclaimer;
  ContainerNode* dead = nullptr;
  const auto bury = [&](ContainerNode* container) {
    if (container->shape != nullptr) reclaimer.releaseShape(container->shape);
    container->nextDead = dead;
    dead = container;
  };
  bury(node);
  while (dead != nullptr) {
    ContainerNode* container = dead;
    dead = dead->nextDead;
    for (std::uint32_t i = 0; i < container->count; ++i) {
      const PropertyList& value = container->values()[i];
      if (!value.isShared()) continue;
      if (value.isArray() || value.isDictionary()) {
        if (drop(NodeAccess::container(value))) bury(NodeAccess::container(value));
      } else {
        reclaimer.releaseText(text(value));
      }
    }
    reclaimer.reclaim(container);
  }
}

}  // namespace vorn::detail
