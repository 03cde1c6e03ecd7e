// What becomes of assignments whose macro or profile was deleted. Pure; any thread.
#pragma once

#include "model/PropertyList.h"

namespace skarn {

// The profiles with every record of "Keys" and "Buttons" reset whose command is the mapping and whose param1 is the
// deleted index or past the end of a list of listSize elements. A reset record is the default profile's for the same
// identifier; where that has none, the record is kept. Identifiers are looked up by their number, in the buttons group
// with at least two digits. Elements that are no dictionaries are kept as they are.
vorn::PropertyList remappedProfiles(const vorn::PropertyList& profiles, const vorn::PropertyList& defaultProfile,
                                    int mapping, int deletedIndex, int listSize);

}  // namespace skarn
