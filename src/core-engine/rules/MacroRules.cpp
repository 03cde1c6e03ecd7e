#include "core-engine/rules/MacroRules.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "model/MacroEvents.h"
#include "model/RecordLimits.h"
#include "model/RecordRules.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

MacroResult refused(ReturnStatus status, std::string reason) {
  return {{}, status, std::move(reason)};
}

// Nothing for a position below count.
std::optional<MacroResult> complaintAbout(const PropertyList& position, std::size_t count, const std::string& noun) {
  if (!position.isInteger()) return refused(ReturnStatus::Malformed, "it names no " + noun);
  if (position.toInt64() >= 0 && std::cmp_less(position.toInt64(), count)) return std::nullopt;
  return refused(ReturnStatus::OutOfRange, "there is no " + noun + " " + std::to_string(position.toInt64()));
}

std::optional<MacroResult> complaintAboutRow(const PropertyList& row, const PropertyList& events) {
  return complaintAbout(row, events.isEmpty() ? 0 : 2 * events.size() - 1, "row");
}

std::int64_t eventOfRow(const PropertyList& row) {
  return (row.toInt64() + 1) / 2;
}

std::optional<MacroResult> complaintAboutSize(const PropertyList& macro) {
  if (macroEvents(macro).size() > maximumMacroEvents || !isWithinRecordLimits(macro)) {
    return refused(ReturnStatus::TooLarge, "the macro becomes too large");
  }
  return std::nullopt;
}

std::optional<MacroResult> complaintAboutRecord(const PropertyList& record) {
  const auto fault = faultOfRecord(record, RecordKind::Macro);
  if (!fault) return std::nullopt;
  const bool isTooLarge = fault->kind == RecordFault::Kind::TooLarge || fault->kind == RecordFault::Kind::TooManyEvents;
  return refused(isTooLarge ? ReturnStatus::TooLarge : ReturnStatus::Malformed, fault->reason);
}

PropertyList withMacros(const PropertyList& bundle, std::vector<PropertyList> macros) {
  for (std::size_t position = 0; position < macros.size(); ++position) {
    if (macros[position][keys::MacroID] == PropertyList(position)) continue;
    macros[position] = macros[position].with(keys::MacroID, position);
  }
  return bundle.with(keys::Macros, PropertyList::array(std::move(macros)));
}

std::vector<PropertyList> copied(const PropertyList& array) {
  return {array.elements().begin(), array.elements().end()};
}

PropertyList withMacro(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& macro) {
  return bundle.with(keys::Macros, bundle[keys::Macros].replacing(macroID.toInt64(), macro));
}

// Makes the new events of the old ones.
using EventEdit = std::function<MacroResult(const PropertyList& events)>;

MacroResult withEditedEvents(const PropertyList& bundle, const PropertyList& macroID, const EventEdit& edit) {
  MacroResult macro = macroAt(bundle, macroID);
  if (macro.status != ReturnStatus::Done) return macro;
  MacroResult events = edit(macroEvents(macro.value));
  if (events.status != ReturnStatus::Done) return events;
  const PropertyList sequence = macro.value[keys::Sequence].with(keys::Events, events.value);
  const PropertyList edited = macro.value.with(keys::Sequence, sequence);
  if (const auto complaint = complaintAboutSize(edited)) return *complaint;
  return {withMacro(bundle, macroID, edited)};
}

MacroResult withEveryDelay(const PropertyList& events, const PropertyList& delay) {
  std::vector<PropertyList> result;
  result.reserve(events.size());
  for (const PropertyList& event : events.elements()) result.push_back(event.with(keys::Delay, delay));
  return {PropertyList::array(std::move(result))};
}

}  // namespace

MacroResult macroAt(const PropertyList& bundle, const PropertyList& macroID) {
  const PropertyList& macros = bundle[keys::Macros];
  if (const auto complaint = complaintAbout(macroID, macros.size(), "macro")) return *complaint;
  return {macros.at(macroID.toInt64())};
}

MacroResult eventAt(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row) {
  MacroResult macro = macroAt(bundle, macroID);
  if (macro.status != ReturnStatus::Done) return macro;
  const PropertyList events = macroEvents(macro.value);
  if (const auto complaint = complaintAboutRow(row, events)) return *complaint;
  return {events.at(eventOfRow(row))};
}

MacroResult withAddedMacro(const PropertyList& bundle, const PropertyList& record) {
  if (const auto complaint = complaintAboutRecord(record)) return *complaint;
  std::vector<PropertyList> macros = copied(bundle[keys::Macros]);
  if (macros.size() >= maximumMacros) return refused(ReturnStatus::OutOfRange, "there are too many macros");
  const PropertyList defaults =
      PropertyList::dictionary({{keys::Delay, defaultDelay}, {keys::Sequence, PropertyList::dictionary()}});
  macros.push_back(defaults.merging(record));
  return {withMacros(bundle, std::move(macros))};
}

MacroResult withRenamedMacro(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& name) {
  MacroResult macro = macroAt(bundle, macroID);
  if (macro.status != ReturnStatus::Done) return macro;
  if (name.string().empty()) return refused(ReturnStatus::Malformed, "the new name is empty");
  const PropertyList renamed = macro.value.with(keys::MacroName, name);
  if (const auto complaint = complaintAboutSize(renamed)) return *complaint;
  return {withMacro(bundle, macroID, renamed)};
}

MacroResult withoutMacro(const PropertyList& bundle, const PropertyList& macroID) {
  MacroResult macro = macroAt(bundle, macroID);
  if (macro.status != ReturnStatus::Done) return macro;
  std::vector<PropertyList> macros = copied(bundle[keys::Macros]);
  macros.erase(macros.begin() + macroID.toInt64());
  return {withMacros(bundle, std::move(macros))};
}

MacroResult withReplacedEvent(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row,
                              const PropertyList& event) {
  return withEditedEvents(bundle, macroID, [&](const PropertyList& events) -> MacroResult {
    if (const auto complaint = complaintAboutRow(row, events)) return *complaint;
    if (!isMacroEvent(event)) return refused(ReturnStatus::Malformed, "the new event is none");
    return {events.replacing(eventOfRow(row), event)};
  });
}

MacroResult withReplacedSequence(const PropertyList& bundle, const PropertyList& contents,
                                 const PropertyList& expected) {
  const PropertyList& macroID = contents[keys::MacroID];
  MacroResult macro = macroAt(bundle, macroID);
  if (macro.status != ReturnStatus::Done) return macro;
  if (!contents[keys::MacroName].isString()) return refused(ReturnStatus::Malformed, "it tells no name of the macro");
  if (contents[keys::MacroName] != macro.value[keys::MacroName]) {
    return refused(ReturnStatus::OutOfRange, "the macro has another name");
  }
  // A missing one is no empty one.
  if (!contents[keys::Sequence].isDictionary()) return refused(ReturnStatus::Malformed, "it brings no sequence");
  if (!expected.isNone() && !expected.isDictionary()) {
    return refused(ReturnStatus::Malformed, "the expected sequence is none");
  }
  if (expected.isDictionary() && expected != macro.value[keys::Sequence].dictionaryOrEmpty()) {
    return refused(ReturnStatus::Outdated, "the macro has another sequence than the client saw");
  }
  const PropertyList edited = macro.value.with(keys::Sequence, contents[keys::Sequence]);
  if (const auto complaint = complaintAboutRecord(edited)) return *complaint;
  return {withMacro(bundle, macroID, edited)};
}

MacroResult withoutRow(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row) {
  if (row.toInt64() % 2 != 0) return withDelay(bundle, macroID, row, 0);
  return withEditedEvents(bundle, macroID, [&](const PropertyList& events) -> MacroResult {
    if (const auto complaint = complaintAboutRow(row, events)) return *complaint;
    return {events.removing(eventOfRow(row))};
  });
}

MacroResult withoutEvents(const PropertyList& bundle, const PropertyList& macroID) {
  return withEditedEvents(bundle, macroID, [](const PropertyList&) -> MacroResult { return {PropertyList::array()}; });
}

MacroResult withRecordedEvents(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& events,
                               bool isAppending) {
  return withEditedEvents(bundle, macroID, [&](const PropertyList& present) -> MacroResult {
    if (!isAppending) return {events};
    std::vector<PropertyList> all = copied(present);
    all.insert(all.end(), events.elements().begin(), events.elements().end());
    return {PropertyList::array(std::move(all))};
  });
}

MacroResult withDelay(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row,
                      const PropertyList& delay) {
  return withEditedEvents(bundle, macroID, [&](const PropertyList& events) -> MacroResult {
    if (const auto complaint = complaintAboutRow(row, events)) return *complaint;
    if (!delay.isInteger()) return refused(ReturnStatus::Malformed, "the new delay is no number");
    if (!isMacroDelay(delay)) return refused(ReturnStatus::OutOfRange, "the new delay is out of range");
    const std::int64_t index = eventOfRow(row);
    return {events.replacing(index, events.at(index).with(keys::Delay, delay))};
  });
}

MacroResult withDelayOfRow(const PropertyList& bundle, const PropertyList& macroID, const PropertyList& row) {
  return withEditedEvents(bundle, macroID, [&](const PropertyList& events) -> MacroResult {
    if (const auto complaint = complaintAboutRow(row, events)) return *complaint;
    return withEveryDelay(events, events.at(eventOfRow(row))[keys::Delay]);
  });
}

MacroResult withoutDelays(const PropertyList& bundle, const PropertyList& macroID) {
  return withEditedEvents(bundle, macroID, [](const PropertyList& events) { return withEveryDelay(events, 0); });
}

}  // namespace vorn::engine
