// Settings bundles of fixed sizes and contents, as an engine sends them.
#pragma once

#include <cstddef>

#include "model/PropertyList.h"

namespace vorn::test {

// A bundle of 5 profiles with 8 keymaps each, every keymap with all 24 keys and 3 buttons assigned, and so many macros
// of 40 events each. Names are unique ("Profile 1", "Macro 1"), profile 0 is active, and an assignment or event
// differs from its neighbours. A macro's events are the array under "events" in its sequence.
PropertyList bundleWithMacros(std::size_t macros);

inline PropertyList standardBundle() {
  return bundleWithMacros(50);
}
inline PropertyList largeBundle() {
  return bundleWithMacros(1000);
}

}  // namespace vorn::test
