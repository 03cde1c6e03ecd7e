// Another order of the profiles: which profile stands where, and what follows when they move. Pure; any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

// The position now of the profile that stands at each place then; a permutation of the positions.
using ProfileOrder = std::vector<std::size_t>;

// The order in which one of the profiles has moved to another place and those between have made room. from, to:
// positions of count profiles.
ProfileOrder orderAfterMove(std::size_t count, std::size_t from, std::size_t to);

// As an array of integers, and back: nothing where that holds anything else than each of its own positions once.
PropertyList orderRecord(const ProfileOrder& order);
std::optional<ProfileOrder> orderOfRecord(const PropertyList& record);

// The place then of the profile that stands at a position now; the position itself where the order has none such.
std::int64_t placeInOrder(const ProfileOrder& order, std::int64_t position);

// The profiles in this order, one for each of them. An assignment that switches to a profile switches to the same one,
// at its new place, in the groups of every profile and in all its keymaps; one that points at no profile stays.
PropertyList profilesInOrder(const PropertyList& profiles, const ProfileOrder& order);

// "ProfileName" of each profile, an array: what somebody saw who wants them in another order.
PropertyList profileNames(const PropertyList& profiles);

}  // namespace vorn
