// Counts what a program takes from the free store, from its start on and in all its threads: the same for every run,
// so a test can tell how the cost of an operation grows without a clock. Linking CountedAllocations.cpp replaces the
// global operator new; it stands in a file of its own so that the compiler never inlines only half of the pair.
#pragma once

#include <cstddef>

namespace vorn {

// Bytes asked for so far; what was given back is not subtracted.
std::size_t allocatedBytes() noexcept;

}  // namespace vorn
