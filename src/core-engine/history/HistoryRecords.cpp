#include "core-engine/history/HistoryRecords.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "model/RecordLimits.h"

namespace vorn::engine {

namespace {

namespace words {
constexpr std::string_view ID = "id";
constexpr std::string_view Time = "time";
constexpr std::string_view SourceApp = "sourceApp";
constexpr std::string_view Description = "description";
constexpr std::string_view Edits = "edits";
constexpr std::string_view Place = "place";
constexpr std::string_view Before = "before";
constexpr std::string_view After = "after";
constexpr std::string_view IsSplice = "isSplice";
constexpr std::string_view Gone = "gone";
constexpr std::string_view EndsUndone = "endsUndone";
constexpr std::string_view DropsLast = "dropsLast";
constexpr std::string_view Added = "added";
constexpr std::string_view Undone = "undone";
constexpr std::string_view Entries = "entries";
constexpr std::string_view LastID = "lastID";
}  // namespace words

using Pairs = std::vector<PropertyList::Pair>;

PropertyList dictionaryOf(Pairs pairs) {
  std::erase_if(pairs, [](const auto& each) { return each.second.isNone(); });
  return PropertyList::dictionary(std::move(pairs));
}

PropertyList trueOrNone(bool value) {
  return value ? PropertyList(true) : PropertyList();
}

PropertyList recordOf(const Edit& edit) {
  return dictionaryOf({{words::Place, edit.place},
                       {words::Before, edit.before},
                       {words::After, edit.after},
                       {words::IsSplice, trueOrNone(edit.isSplice)}});
}

PropertyList recordOf(const HistoryEntry& entry) {
  std::vector<PropertyList> edits;
  for (const Edit& each : entry.edits) edits.push_back(recordOf(each));
  return dictionaryOf({{words::ID, entry.id},
                       {words::Time, entry.time},
                       {words::SourceApp, entry.sourceApp},
                       {words::Description, entry.description},
                       {words::Edits, PropertyList::array(std::move(edits))}});
}

// Nothing in the settings lies deeper: in a record, and that in an array of the bundle.
constexpr std::size_t maximumSteps = maximumRecordDepth + 2;

// Whether the place leads from a dictionary through dictionaries and arrays.
bool isPlace(const PropertyList& place, bool isSplice) {
  const auto steps = place.elements();
  const auto isStep = [](const PropertyList& step) {
    return step.isString() || (step.isInteger() && step.toInt64() >= 0);
  };
  return !steps.empty() && steps.size() <= maximumSteps && steps.front().isString() &&
         std::all_of(steps.begin(), steps.end(), isStep) && (!isSplice || steps.back().isInteger());
}

std::optional<Edit> editIn(const PropertyList& record) {
  Edit edit{record[words::Place], record[words::Before], record[words::After], record[words::IsSplice].toBool()};
  const bool hasValues = edit.isSplice ? edit.before.isArray() && edit.after.isArray() : edit.before != edit.after;
  if (!record.isDictionary() || !isPlace(edit.place, edit.isSplice)) return std::nullopt;
  // A splice of profiles goes with the active one, whether that has changed or not.
  const bool isUnchanged = !edit.isSplice && !edit.before.isNone() && !edit.after.isNone();
  return hasValues || isUnchanged ? std::optional(edit) : std::nullopt;
}

std::optional<HistoryEntry> entryIn(const PropertyList& record) {
  HistoryEntry entry{record[words::ID].toUnsigned(),
                     record[words::Time].toInt64(),
                     record[words::SourceApp].toString(),
                     record[words::Description],
                     {}};
  if (entry.id == 0 || !entry.description.isDictionary()) return std::nullopt;
  for (const PropertyList& each : record[words::Edits].elements()) {
    const auto edit = editIn(each);
    if (!edit) return std::nullopt;
    entry.edits.push_back(*edit);
  }
  return entry.edits.empty() ? std::nullopt : std::optional(entry);
}

}  // namespace

PropertyList recordOf(const HistoryStep& step) {
  std::vector<PropertyList> gone(step.gone.begin(), step.gone.end());
  return dictionaryOf({{words::Gone, gone.empty() ? PropertyList() : PropertyList::array(std::move(gone))},
                       {words::EndsUndone, trueOrNone(step.endsUndone)},
                       {words::DropsLast, trueOrNone(step.dropsLast)},
                       {words::Added, step.added ? recordOf(*step.added) : PropertyList()},
                       {words::Undone, step.undone}});
}

PropertyList recordOf(const HistoryEntries& entries) {
  std::vector<PropertyList> records;
  for (const HistoryEntry& each : entries.all()) records.push_back(recordOf(each));
  return dictionaryOf({{words::Entries, PropertyList::array(std::move(records))},
                       {words::Undone, entries.undone()},
                       {words::LastID, entries.lastID()}});
}

std::optional<HistoryStep> stepIn(const PropertyList& record) {
  if (!record.isDictionary() || !record[words::Undone].isInteger()) return std::nullopt;
  HistoryStep step;
  for (const PropertyList& each : record[words::Gone].elements()) step.gone.push_back(each.toUnsigned());
  step.endsUndone = record[words::EndsUndone].toBool();
  step.dropsLast = record[words::DropsLast].toBool();
  step.undone = record[words::Undone].toUnsigned();
  if (record.contains(words::Added)) {
    step.added = entryIn(record[words::Added]);
    if (!step.added) return std::nullopt;
  }
  return step;
}

std::optional<HistoryEntries> entriesIn(const PropertyList& record) {
  if (!record[words::Entries].isArray() || !record[words::Undone].isInteger()) return std::nullopt;
  std::vector<HistoryEntry> entries;
  for (const PropertyList& each : record[words::Entries].elements()) {
    auto entry = entryIn(each);
    // Each is later than those before it.
    if (!entry || (!entries.empty() && entry->id <= entries.back().id)) return std::nullopt;
    entries.push_back(*std::move(entry));
  }
  return HistoryEntries(std::move(entries), record[words::Undone].toUnsigned(), record[words::LastID].toUnsigned());
}

}  // namespace vorn::engine
