// What the requests about macros make of a settings bundle, as pure functions. A complete bundle (BundleRules.h) stays
// complete.
//
// Clients see the events of a macro (model/MacroEvents.h) as rows: row 0 is event 0, and event k after it has two rows,
// 2k-1 for its delay and 2k for itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "model/PropertyList.h"
#include "protocol/ReturnStatus.h"

namespace vorn::engine {

inline constexpr std::size_t maximumMacros = 2'000;

struct MacroResult {
  PropertyList value;  // the changed bundle, or what was asked for; none when refused
  ReturnStatus status = ReturnStatus::Done;
  std::string reason{};  // why it was refused, in English; empty otherwise
};

// bundle, everywhere: complete. macroID: a position in "Macros"; row: a row of that macro; both integers.

MacroResult macroAt(const PropertyList& bundle, const PropertyList& macroID);  // its record
MacroResult eventAt(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row);

// Appends the record, which must be a macro as model/RecordRules.h has it. A "delay" or "sequence" that it lacks is
// filled in; "macroID" becomes its position; further keys are kept.
MacroResult withAddedMacro(const PropertyList& bundle, const PropertyList& record);
MacroResult withRenamedMacro(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& name);
// The macros behind it move up. Assignments that point at it or at them stay as they are.
MacroResult withoutMacro(const PropertyList& bundle, const PropertyList& macroID);

MacroResult withReplacedEvent(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row,
                              const PropertyList& event);
// Removes the event of an even row; an odd row keeps its event, without a delay.
MacroResult withoutRow(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row);
// contents: { "macroID", "MacroName", "sequence" }. Puts the whole sequence in the place of the macro's own, if the
// macro still has this name: a list that has changed meanwhile leads to no other macro. expected: the sequence that the
// client saw, or none; with another one than the macro has now it is refused as outdated.
MacroResult withReplacedSequence(const PropertyList& bundle, const PropertyList& contents,
                                 const PropertyList& expected = {});
MacroResult withoutEvents(const PropertyList& bundle, const PropertyList& macroID);
// Puts the events in the place of those that the macro has, or behind them.
MacroResult withRecordedEvents(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& events,
                               bool isAppending);

MacroResult withDelay(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row,
                      const PropertyList& delay);
// Every event takes the delay of this row's event.
MacroResult withDelayOfRow(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row);
MacroResult withoutDelays(const PropertyList& bundle, const PropertyList& macroID);

}  // namespace vorn::engine
