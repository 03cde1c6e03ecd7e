// Macros built in code, for the tests of the engine.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "core-engine/TestBundle.h"

namespace vorn::engine::test {

inline PropertyList keyPress(std::int32_t usage, std::int32_t delay = 0) {
  return macroEvent(1, delay, 7, usage);
}

inline PropertyList keyRelease(std::int32_t usage, std::int32_t delay = 0) {
  return macroEvent(0, delay, 7, usage);
}

inline PropertyList sequenceOf(std::vector<PropertyList> events) {
  return PropertyList::dictionary({{"events", PropertyList::array(std::move(events))}});
}

// A macro record as the engine keeps it.
inline PropertyList macro(std::string_view name, std::int32_t position, std::vector<PropertyList> events = {}) {
  return vorn::test::macro(name, std::move(events)).with(keys::MacroID, position).with(keys::Delay, 20);
}

inline PropertyList bundleWithMacros(std::vector<PropertyList> macros) {
  return bundle().with("Macros", PropertyList::array(std::move(macros)));
}

}  // namespace vorn::engine::test
