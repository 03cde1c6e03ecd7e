// What a change of the settings was, for people: its kind and its subject, in the words of protocol/History.h, from
// which every client makes a sentence in its own language. Pure; any thread.
#pragma once

#include "core-engine/history/SettingsEdits.h"
#include "core-engine/storage/ChangeOrigin.h"
#include "model/PropertyList.h"

namespace vorn::engine {

// A dictionary with "kind" and those of the other words that apply. edits: those that lead from one bundle to the
// other; origin: the request that asked for them.
PropertyList descriptionOf(const Edits& edits, const PropertyList& before, const PropertyList& after,
                           const ChangeOrigin& origin);

}  // namespace vorn::engine
