// The events of a macro: an array of { command, delay, page, argument } under "sequence" -> "events" of its record, in
// the order in which they are played. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>

#include "model/PropertyList.h"

namespace vorn {

inline constexpr std::size_t maximumMacroEvents = 15'000;  // of one macro; fits in the limits of a record
inline constexpr std::int64_t maximumDelay = 999'999;      // milliseconds
inline constexpr std::int64_t defaultDelay = 20;           // milliseconds; of a macro that does not say

// An integer from 0 to maximumDelay.
bool isMacroDelay(const PropertyList& value);

// True for the press (command 1) or release (0) of a key (page 7, argument 4 to 231) or of a mouse button (page 9,
// argument 1 to 9), with a delay from 0 to maximumDelay before it. All four are integers; further keys do no harm.
bool isMacroEvent(const PropertyList& event);

// Two events: is the second one a release of the key or button that the first one presses?
bool isReleaseOf(const PropertyList& press, const PropertyList& event);

// The events of a macro record, an array. What is no event, in settings that were written elsewhere, is left out.
PropertyList macroEvents(const PropertyList& macro);

}  // namespace vorn
