// What follows from other values of the settings: the "Keys" and "Buttons" of a profile while they are those of the
// keymap in force, and the "macroID" of a macro while it is its position. A mark stands for it where it is left out.
// Pure; any thread.
#pragma once

#include <cstddef>

#include "model/PropertyList.h"

namespace vorn::engine {

PropertyList withoutGroupsInForce(const PropertyList& profile);
PropertyList withoutPosition(const PropertyList& macro, std::size_t position);

// The same in a whole bundle, and back.
PropertyList withoutDerived(const PropertyList& bundle);
PropertyList withDerived(const PropertyList& bundle);

}  // namespace vorn::engine
