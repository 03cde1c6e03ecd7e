#include "core-engine/history/History.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

#include "core-engine/history/ChangeDescription.h"
#include "core-engine/history/SettingsComparison.h"
#include "core-engine/rules/BundleRules.h"
#include "model/SettingsKeys.h"
#include "protocol/History.h"

namespace vorn::engine {

namespace {

namespace kinds = history::kinds;

// A slider tells its value while it is dragged; a client cleans up right after a deletion.
constexpr std::array draggedKinds = {kinds::Sensitivity, kinds::Stages, kinds::Acceleration, kinds::Light,
                                     kinds::Power};
constexpr std::array deletions = {kinds::ProfileDeleted, kinds::MacroDeleted};
constexpr auto pauseWithinDrag = std::chrono::seconds(1);
constexpr auto pauseWithinAddition = std::chrono::seconds(5);
constexpr auto timeOfCleanUp = std::chrono::seconds(5);
// What pointed at the deleted one goes; then what pointed at others follows them.
constexpr int maximumCleanUps = 2;

template <typename Range>
bool isOneOf(std::string_view kind, const Range& kinds) {
  return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

std::string_view kindOf(const PropertyList& description) {
  return description[history::keys::Kind].string();
}

// New profiles come to the end.
bool isLastProfileActive(const PropertyList& bundle) {
  const auto count = static_cast<std::int64_t>(bundle[keys::Profiles].size());
  return bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64() == count - 1;
}

}  // namespace

History::History(SettingsStore& store, const Scheduler& scheduler, Clock clock)
    : mStore(store), mScheduler(scheduler), mClock(std::move(clock)) {}

HistoryStep History::stepFor(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
  mPrepared = changeFor(before, after, origin);
  return mPrepared->step;
}

void History::note(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
  if (!mPrepared) mPrepared = changeFor(before, after, origin);
  carryOut(*mPrepared);
}

History::Change History::changeFor(const PropertyList& before, const PropertyList& after,
                                   const ChangeOrigin& origin) const {
  switch (origin.kind) {
    case ChangeOrigin::Kind::Request:
      return requested(before, after, origin);
    case ChangeOrigin::Kind::History:
      return {mPlanned};
    case ChangeOrigin::Kind::Mouse:
      break;
  }
  // What comes after it could not be told from it.
  return {{.undone = mEntries.undone()}};
}

History::Change History::requested(const PropertyList& before, const PropertyList& after,
                                   const ChangeOrigin& origin) const {
  if (continuesGesture(origin, after)) {
    Edits edits = editsBetween(mGesture->before, after);
    // Dragged back to where it was.
    if (edits.empty()) return {{.dropsLast = true}};
    const Entry& last = mEntries.all().back();
    Entry entry = entryFor(last.id, std::move(edits), *mGesture, after);
    // A step that is about something else than the gesture is a change of its own.
    if (kindOf(entry.description) == kindOf(last.description) &&
        entry.description[history::keys::Profile] == last.description[history::keys::Profile]) {
      Gesture gesture = *mGesture;
      if (!isOneOf(kindOf(last.description), deletions)) gesture.lastStep = mScheduler.now();
      if (origin.request == MessageID::SwitchProfile) gesture.isSwitched = true;
      if (origin.request == MessageID::ReplaceAllProfiles) ++gesture.cleanUps;
      return {{.dropsLast = true, .added = std::move(entry)}, std::move(gesture)};
    }
  }
  Edits edits = editsBetween(before, after);
  if (edits.empty()) return {{.undone = mEntries.undone()}, mGesture};
  Gesture gesture{origin, before, mScheduler.now()};
  Entry entry = entryFor(mEntries.lastID() + 1, std::move(edits), gesture, after);
  // Who looks at another keymap changes nothing that could be taken back, and ends nothing that could be made again.
  if (kindOf(entry.description) == kinds::KeymapInForce) return {{.undone = mEntries.undone()}};
  return {{.endsUndone = true, .added = std::move(entry)}, std::move(gesture)};
}

History::Entry History::entryFor(std::uint64_t id, Edits edits, const Gesture& gesture,
                                 const PropertyList& after) const {
  const std::string& backup = gesture.origin.backup;
  PropertyList description =
      backup.empty()
          ? descriptionOf(edits, gesture.before, after, gesture.origin)
          : PropertyList::dictionary({{history::keys::Kind, kinds::BackupRestored}, {history::keys::Date, backup}});
  return {id, mClock(), gesture.origin.sourceApp, std::move(description), std::move(edits)};
}

void History::carryOut(const Change& change) {
  // Handlers may begin another one.
  const Change carriedOut = change;
  const bool hasChanged = mEntries.isChangedBy(carriedOut.step);
  mPrepared.reset();
  mEntries.take(carriedOut.step);
  mGesture = carriedOut.gesture;
  ++mRevision;
  if (hasChanged && mChanged) mChanged();
}

bool History::continuesGesture(const ChangeOrigin& origin, const PropertyList& after) const {
  if (!mGesture || mEntries.all().empty() || mEntries.undone() > 0 || mGesture->origin.client != origin.client ||
      origin.isRestoring)
    return false;
  const auto pause = mScheduler.now() - mGesture->lastStep;
  const std::string_view kind = kindOf(mEntries.all().back().description);
  if (isOneOf(kind, deletions)) return isCleanUp(kind, origin.request) && pause <= timeOfCleanUp;
  if (kind == kinds::ProfileAdded) {
    return pause <= pauseWithinAddition && (origin.request == MessageID::SwitchProfile
                                                ? isLastProfileActive(after)
                                                : origin.request == MessageID::AddProfile && origin.isContinuation);
  }
  // A press and its release are edited by one request each.
  if (kind == kinds::MacroEvents && origin.isContinuation)
    return origin.request == MessageID::UpdateMacroEvent && origin.request == mGesture->origin.request &&
           pause <= pauseWithinAddition;
  return isOneOf(kind, draggedKinds) && origin.request == mGesture->origin.request && pause <= pauseWithinDrag;
}

// A profile goes with one switch to another one, before anything else.
bool History::isCleanUp(std::string_view deletion, MessageID request) const {
  if (request == MessageID::ReplaceAllProfiles) return mGesture->cleanUps < maximumCleanUps;
  return request == MessageID::SwitchProfile && deletion == kinds::ProfileDeleted && !mGesture->isSwitched &&
         mGesture->cleanUps == 0;
}

struct History::Plan {
  PropertyList bundle;
  HistoryStep step{};
  std::vector<std::int64_t> profilePlaces{};
  std::vector<ArrayMove> macroMoves{};
  Result result{Outcome::ChangedSince};
};

void History::undo(std::uint64_t id, const Done& done) {
  if (mEntries.standing() == 0) return done({Outcome::NothingLeft});
  if (id != 0 && mEntries.all()[mEntries.standing() - 1].id != id) return done({Outcome::Outdated});
  leave(mEntries.standing() - 1, done);
}

void History::redo(std::uint64_t id, const Done& done) {
  if (mEntries.undone() == 0) return done({Outcome::NothingLeft});
  if (id != 0 && mEntries.all()[mEntries.standing()].id != id) return done({Outcome::Outdated});
  leave(mEntries.standing() + 1, done);
}

void History::goTo(std::uint64_t id, const Done& done) {
  const auto& entries = mEntries.all();
  const auto entry = std::find_if(entries.begin(), entries.end(), [id](const Entry& each) { return each.id == id; });
  if (id != 0 && entry == entries.end()) return done({Outcome::NothingLeft});
  const std::size_t standing = id == 0 ? 0 : static_cast<std::size_t>(entry - entries.begin()) + 1;
  if (standing == mEntries.standing()) return done({Outcome::Done, id == 0 ? Entry() : *entry});
  leave(standing, done);
}

void History::putBackup(const PropertyList& bundle, const std::string& date, const Done& done) {
  const PropertyList before = mStore.bundle();
  const auto saved = [this, before, done](SettingsStore::Outcome outcome) {
    if (outcome != SettingsStore::Outcome::Done) return done({Outcome::NotSaved});
    if (mApplied) {
      const EditedBundle now = withEditsMadeAgain(before, editsBetween(before, mStore.bundle()));
      mApplied(before, now.profilePlaces, now.macroMoves);
    }
    done({Outcome::Done});
  };
  mStore.put(bundle, saved, {.kind = ChangeOrigin::Kind::Request, .backup = date});
}

void History::leave(std::size_t standing, const Done& done) {
  Plan plan = planned(standing, false);
  // Which change makes them too large is looked for only then.
  if (!isSendableBundle(plan.bundle)) plan = planned(standing, true);
  mPlanned = plan.step;
  const auto saved = [this, plan, done, before = mStore.bundle(),
                      revision = mRevision](SettingsStore::Outcome outcome) {
    Result result = plan.result;
    if (outcome == SettingsStore::Outcome::Done) {
      // What came to no change is saved all the same, so that it is kept, but nobody is told of it.
      if (mRevision == revision) carryOut({plan.step});
      if (mApplied) mApplied(before, plan.profilePlaces, plan.macroMoves);
    } else {
      result.outcome = Outcome::NotSaved;
    }
    done(result);
  };
  mStore.put(plan.bundle, saved, {ChangeOrigin::Kind::History});
}

History::Plan History::planned(std::size_t standing, bool isSizeChecked) const {
  Plan plan{mStore.bundle()};
  plan.profilePlaces.resize(plan.bundle[keys::Profiles].size());
  std::iota(plan.profilePlaces.begin(), plan.profilePlaces.end(), 0);
  const auto take = [&plan, isSizeChecked](const Entry& entry, EditedBundle edited) {
    plan.result.entry = entry;
    plan.result.conflicts += valueCount(edited.conflicts);
    if (edited.bundle == plan.bundle || !isCompleteBundle(edited.bundle) ||
        (isSizeChecked && !isSendableBundle(edited.bundle))) {
      plan.step.gone.push_back(entry.id);
      return;
    }
    plan.bundle = std::move(edited.bundle);
    for (std::int64_t& place : plan.profilePlaces) {
      if (place >= 0) place = edited.profilePlaces.at(static_cast<std::size_t>(place));
    }
    plan.macroMoves.insert(plan.macroMoves.end(), edited.macroMoves.begin(), edited.macroMoves.end());
    plan.result.outcome = Outcome::Done;
    ++plan.result.entries;
  };
  const auto& entries = mEntries.all();
  for (std::size_t each = mEntries.standing(); each > standing; --each) {
    take(entries[each - 1], withEditsTakenBack(plan.bundle, entries[each - 1].edits));
  }
  for (std::size_t each = mEntries.standing(); each < standing; ++each) {
    take(entries[each], withEditsMadeAgain(plan.bundle, entries[each].edits));
  }
  // Of what was to be taken back, what is left is undone; what is gone was among the standing ones before.
  const std::size_t goneUndone = standing > mEntries.standing() ? 0 : plan.step.gone.size();
  plan.step.undone = entries.size() - standing - goneUndone;
  return plan;
}

}  // namespace vorn::engine
