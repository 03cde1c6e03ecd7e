// Assignments that point at a profile or macro by its position.
#pragma once

#include <cstdint>

#include "ctl/Assignment.h"
#include "model/PropertyList.h"

namespace vorn::ctl {

// The profiles after the profile (command: Profile) or macro (Macro) at this position was deleted, in their groups and
// in all their keymaps: what pointed at it does what it did from the factory, what pointed behind it points at the same
// one as before.
PropertyList withoutReferencesTo(const PropertyList& profiles, AssignmentCommand command, std::int64_t deleted);

// Brings the engine's profiles into that state, where they are not; bundle: its settings after the deletion.
Outcome removeReferences(EngineClient& engine, const PropertyList& bundle, AssignmentCommand command,
                         std::int64_t deleted);

}  // namespace vorn::ctl
