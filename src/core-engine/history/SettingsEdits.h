// What became of a settings bundle, as a list of edits that can be taken back and made again later, when other values
// have changed meanwhile. Pure; any thread.
//
// What follows from other values (DerivedSettings.h) is no part of it. It is made anew after the edits, and a mark
// stands for it in values that an edit keeps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::engine {

// One place of the bundle and what became of it.
struct Edit {
  // The keys and positions that lead from the bundle to the place, an array.
  PropertyList place;
  // The value there before and after; none where there was nothing. Of a splice: the elements, an array.
  PropertyList before;
  PropertyList after;
  // The place is a position in an array, where the elements of before gave way to those of after.
  bool isSplice = false;

  friend bool operator==(const Edit&, const Edit&) = default;
};

using Edits = std::vector<Edit>;

// Whether profiles, or macros, come and go.
bool isOfProfiles(const Edit& edit);
bool isOfMacros(const Edit& edit);
// Which profile is active.
PropertyList placeOfActiveProfile();
bool isOfActiveProfile(const Edit& edit);

// How many values the edits are about for whoever sees the settings: one that is in a profile and in the device
// settings is one, and so is what comes and goes in one array.
std::size_t valueCount(const Edits& edits);

// From start on, so many elements of an array have gone and so many have come in their place.
struct ArrayMove {
  std::int64_t start = 0;
  std::int64_t gone = 0;
  std::int64_t come = 0;
  friend bool operator==(const ArrayMove&, const ArrayMove&) = default;
};

// A bundle after edits, and the edits that did not fit: their place holds something else by now.
struct EditedBundle {
  PropertyList bundle;
  Edits conflicts{};
  std::vector<ArrayMove> macroMoves{};        // one after the other
  std::vector<std::int64_t> profilePlaces{};  // for each profile of before where it stands now; negative where it went
};

// Takes the edits back: each place that still holds what the edit put there gets what was there before. What comes and
// goes in one array does so together or, where one of it does not fit, not at all, and nothing else of that array does.
// Values that the mouse itself changes (the profile, keymap, stage and sensitivity in force) do not keep a whole record
// from being taken out, and stay in one that moves; the same profile stays active, or the one before where it goes.
EditedBundle withEditsTakenBack(const PropertyList& bundle, const Edits& edits);
// Makes the edits again, in the same way.
EditedBundle withEditsMadeAgain(const PropertyList& bundle, const Edits& edits);

}  // namespace vorn::engine
