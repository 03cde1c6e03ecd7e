// What a person does to the events of a macro with several of them selected: pure functions from a list of events to
// another one. An event (model/MacroEvents.h) carries the delay before it. A press and its release are a pair: the
// release is the next one of the same key or button, with no further press of it before. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "model/KernelKeys.h"
#include "model/PropertyList.h"

namespace vorn {

using MacroEventList = std::vector<PropertyList>;
using Places = std::set<std::size_t>;  // of events, from 0

struct EditedEvents {
  MacroEventList events;
  Places chosen;  // what the edit was about, where it stands now

  friend bool operator==(const EditedEvents&, const EditedEvents&) = default;
};

// The rows of events, as clients show them (model/MacroLines.h).
constexpr std::size_t eventOfRow(std::size_t row) {
  return (row + 1) / 2;
}
constexpr std::size_t rowOfEvent(std::size_t event) {
  return 2 * event;
}

PropertyList macroEvent(bool isPress, std::int64_t delay, HidUsage usage);
HidUsage usageOfEvent(const PropertyList& event);
// A press and its release.
MacroEventList stroke(HidUsage usage, std::int64_t delay);

// For every event the place of the other one of its pair; nothing where it has none.
std::vector<std::optional<std::size_t>> pairsOf(const MacroEventList& events);
// The chosen ones, and the other one of each pair of theirs.
Places withPartners(const MacroEventList& events, const Places& chosen);
// What is still pressed when the events are over, in the order of the presses.
std::vector<HidUsage> pressedAtEnd(const MacroEventList& events);

// --- Edits. A place beyond the list is passed over. Nothing for an edit that cannot be or would change nothing.

std::optional<EditedEvents> withoutEvents(const MacroEventList& events, const Places& chosen);
// places: chosen events whose delay becomes 0; those of removed events play no part.
std::optional<EditedEvents> withDelays(const MacroEventList& events, const Places& chosen, std::int64_t delay);
// Before the event at this place, or behind the last one. The added ones are chosen then.
std::optional<EditedEvents> withInserted(const MacroEventList& events, std::size_t place, const MacroEventList& added);
// The chosen ones once more, behind the last of them.
std::optional<EditedEvents> withDuplicates(const MacroEventList& events, const Places& chosen);
// The events get this key or button; whether they press or release, and their delays, stay.
std::optional<EditedEvents> withUsage(const MacroEventList& events, const Places& chosen, HidUsage usage);

// Each run of chosen events changes places with its neighbour; the time between the two stays where it was, and what
// passes within the run stays as it is. Nothing where one of them has reached the end. keepsPairs: the pairs of the
// list are the same afterwards; a neighbour that would come between is passed together with its partner.
std::optional<EditedEvents> movedUp(const MacroEventList& events, const Places& chosen, bool keepsPairs);
std::optional<EditedEvents> movedDown(const MacroEventList& events, const Places& chosen, bool keepsPairs);

}  // namespace vorn
