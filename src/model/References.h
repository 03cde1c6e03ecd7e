// Assignments that point at a macro or a profile by its position, and what becomes of them when one of these is
// deleted: a deletion never changes what another control does. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "model/Assignments.h"
#include "model/PropertyList.h"

namespace vorn {

struct Deletion {
  AssignmentCommand command;  // Macro or Profile: what was deleted
  std::int64_t position;      // where it stood
  std::size_t count;          // how many there were, itself included
};

// The profiles as they must be after the deletion. before: "Profiles" before it, with the deleted profile still there;
// after: "Profiles" now, whatever has been cleaned up in them since.
//   - What pointed behind the deleted one points at the same one as before, at its new position.
//   - What pointed at the deleted one has its default: the record of the default profile under the same identifier, or
//     the factory's where that has none. So has what pointed behind the last one, a left-over of an earlier deletion.
//   - What has been given another assignment meanwhile keeps it, and so does everything else.
// This holds in the groups of every profile and in all its keymaps. after itself comes back, equal, where all this is
// so already, and where before and after are not the same profiles but for the deleted one.
PropertyList withReferencesKept(const PropertyList& before, const PropertyList& after, const Deletion& deletion,
                                const PropertyList& defaultProfile);

// An assignment to the entry.
struct Reference {
  std::size_t profile;     // its position
  std::string identifier;  // of the control
  friend bool operator==(const Reference&, const Reference&) = default;
};

// The controls that lose their assignment when the entry is deleted, in whatever keymap, each once, in the order of the
// profiles and of the identifiers; those of a profile that is deleted with it are left out.
std::vector<Reference> referencesTo(const PropertyList& profiles, const Deletion& deletion);

}  // namespace vorn
