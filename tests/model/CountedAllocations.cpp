#include "model/CountedAllocations.h"

#include <atomic>

namespace {
std::atomic<std::size_t> bytes = 0;
}

std::size_t vorn::allocatedBytes() noexcept {
  return bytes;
}

// The address and thread sanitizers bring an operator new of their own and tell of its calls instead.
#if defined(__has_feature)
#define HAS_FEATURE(feature) __has_feature(feature)
#else
#define HAS_FEATURE(feature) 0
#endif

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || HAS_FEATURE(address_sanitizer) || \
    HAS_FEATURE(thread_sanitizer)

// g++ comes without the header that declares it.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, std::size_t),
                                                         void (*freed)(const volatile void*));

namespace {
[[maybe_unused]] const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t size) { bytes += size; }, [](const volatile void*) {});
}

#else

#include <cstdlib>
#include <new>

void* operator new(std::size_t size) {
  bytes += size;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

#endif
