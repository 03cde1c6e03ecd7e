// What became of a settings bundle. Pure; any thread.
#pragma once

#include "core-engine/history/SettingsEdits.h"
#include "model/PropertyList.h"

namespace vorn::engine {

// The edits that lead from one complete bundle to the other, in the order in which they are to be made. Records with a
// name are followed to another position; what is equal in both costs nothing to keep.
Edits editsBetween(const PropertyList& before, const PropertyList& after);

}  // namespace vorn::engine
