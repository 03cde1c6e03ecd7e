#include "model/RecordRules.h"

#include <algorithm>

#include "model/MacroEvents.h"
#include "model/RecordLimits.h"
#include "model/SettingsKeys.h"

namespace vorn {

namespace {

using Kind = RecordFault::Kind;

std::string nounOf(RecordKind kind) {
  return kind == RecordKind::Profile ? "profile" : "macro";
}

std::optional<RecordFault> faultOfGroups(const PropertyList& profile) {
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    const std::string key = "\"" + std::string(group) + "\"";
    if (!profile.contains(group)) return RecordFault{Kind::Missing, "the profile has no " + key, group};
    if (!profile[group].isDictionary()) return RecordFault{Kind::Unusable, "its " + key + " is no dictionary", group};
  }
  return std::nullopt;
}

std::optional<RecordFault> faultOfMacro(const PropertyList& macro) {
  if (macro.contains(keys::Delay) && !isMacroDelay(macro[keys::Delay])) {
    return RecordFault{Kind::Unusable, "its delay is out of range", keys::Delay};
  }
  const PropertyList& sequence = macro[keys::Sequence];
  if (macro.contains(keys::Sequence) && !sequence.isDictionary()) {
    return RecordFault{Kind::Unusable, "its sequence is no dictionary", keys::Sequence};
  }
  const PropertyList& events = sequence[keys::Events];
  if (sequence.contains(keys::Events) && !events.isArray()) {
    return RecordFault{Kind::Unusable, "its events are no array", keys::Events};
  }
  if (events.size() > maximumMacroEvents) return RecordFault{Kind::TooManyEvents, "the macro has too many events"};
  const auto all = events.elements();
  const auto unplayable = std::ranges::find_if_not(all, isMacroEvent);
  if (unplayable == all.end()) return std::nullopt;
  const auto number = static_cast<std::size_t>(unplayable - all.begin()) + 1;
  return RecordFault{Kind::NoEvent, "its event " + std::to_string(number) + " is none", keys::Events, number};
}

}  // namespace

std::string_view nameKeyOf(RecordKind kind) {
  return kind == RecordKind::Profile ? keys::ProfileName : keys::MacroName;
}

std::optional<RecordFault> faultOfRecord(const PropertyList& record, RecordKind kind) {
  const std::string noun = nounOf(kind);
  if (!record.isDictionary()) return RecordFault{Kind::NoDictionary, "there is no " + noun + " record"};
  // Before anything is walked whose length nobody has looked at.
  if (!isWithinRecordLimits(record)) return RecordFault{Kind::TooLarge, "the " + noun + " is too large"};
  if (record[nameKeyOf(kind)].string().empty()) {
    return RecordFault{Kind::NoName, "the " + noun + " has no name", nameKeyOf(kind)};
  }
  return kind == RecordKind::Profile ? faultOfGroups(record) : faultOfMacro(record);
}

}  // namespace vorn
