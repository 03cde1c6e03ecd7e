#include "core-engine/history/History.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <string_view>
#include <utility>

#include "core-engine/history/ChangeDescription.h"
#include "protocol/History.h"

namespace vorn::engine {

namespace {

namespace kinds = history::kinds;

// A slider tells its value while it is dragged; a client cleans up right after a deletion.
constexpr std::array draggedKinds = {kinds::Sensitivity, kinds::Stages, kinds::Acceleration, kinds::Light,
                                     kinds::Power};
constexpr std::array deletions = {kinds::ProfileDeleted, kinds::MacroDeleted};
constexpr auto pauseWithinDrag = std::chrono::seconds(1);
constexpr auto pauseWithinCleanUp = std::chrono::seconds(5);

template <typename Range>
bool isOneOf(std::string_view kind, const Range& kinds) {
  return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

std::string_view kindOf(const PropertyList& description) {
  return description[history::keys::Kind].string();
}

}  // namespace

History::History(SettingsStore& store, const Scheduler& scheduler, Clock clock)
    : mStore(store), mScheduler(scheduler), mClock(std::move(clock)) {}

void History::note(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
  switch (origin.kind) {
    case ChangeOrigin::Kind::Mouse:
      // What comes after it could not be told from it.
      mGesture.reset();
      return;
    case ChangeOrigin::Kind::History:
      return;
    case ChangeOrigin::Kind::Request:
      break;
  }
  if (!continuesGesture(origin) || !replaceLast(after)) add(before, after, origin);
}

bool History::continuesGesture(const ChangeOrigin& origin) const {
  if (!mGesture || mEntries.empty() || mUndone > 0 || mGesture->origin.client != origin.client) return false;
  const auto pause = mScheduler.now() - mGesture->lastStep;
  const std::string_view kind = kindOf(mEntries.back().description);
  if (isOneOf(kind, deletions)) {
    const bool isSwitch = kind == kinds::ProfileDeleted && origin.request == MessageID::SwitchProfile;
    const bool isCleanUp = origin.request == MessageID::ReplaceAllProfiles || isSwitch;
    return isCleanUp && pause <= pauseWithinCleanUp;
  }
  return isOneOf(kind, draggedKinds) && origin.request == mGesture->origin.request && pause <= pauseWithinDrag;
}

void History::add(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
  Edits edits = editsBetween(before, after);
  if (edits.empty()) return;
  mEntries.resize(undoneFrom());
  mUndone = 0;
  if (mEntries.size() == maximumEntries) mEntries.pop_front();
  PropertyList description = descriptionOf(edits, before, after, origin.request);
  mEntries.push_back({++mLastID, mClock(), origin.sourceApp, std::move(description), std::move(edits)});
  mGesture = {origin, before, mScheduler.now()};
  changed();
}

bool History::replaceLast(const PropertyList& after) {
  Edits edits = editsBetween(mGesture->before, after);
  PropertyList description = descriptionOf(edits, mGesture->before, after, mGesture->origin.request);
  Entry& last = mEntries.back();
  // A step that is about something else than the gesture is a change of its own.
  const bool isSame =
      edits.empty() || (kindOf(description) == kindOf(last.description) &&
                        description[history::keys::Profile] == last.description[history::keys::Profile]);
  if (!isSame) return false;
  if (edits.empty()) {
    // Dragged back to where it was.
    mEntries.pop_back();
    mGesture.reset();
  } else {
    last.edits = std::move(edits);
    last.description = std::move(description);
    last.time = mClock();
    mGesture->lastStep = mScheduler.now();
  }
  changed();
  return true;
}

struct History::Plan {
  PropertyList bundle;
  std::size_t standing = 0;           // how many entries stand then, those that are gone not counted
  std::vector<std::uint64_t> gone{};  // IDs of entries of which nothing stands any more
  std::vector<ArrayMove> macroMoves{};
  Result result{Outcome::ChangedSince};
};

void History::undo(const Done& done) {
  if (undoneFrom() == 0) return done({Outcome::NothingLeft});
  leave(undoneFrom() - 1, done);
}

void History::redo(const Done& done) {
  if (mUndone == 0) return done({Outcome::NothingLeft});
  leave(undoneFrom() + 1, done);
}

void History::goTo(std::uint64_t id, const Done& done) {
  const auto entry = std::find_if(mEntries.begin(), mEntries.end(), [id](const Entry& each) { return each.id == id; });
  if (id != 0 && entry == mEntries.end()) return done({Outcome::NothingLeft});
  const std::size_t standing = id == 0 ? 0 : static_cast<std::size_t>(entry - mEntries.begin()) + 1;
  if (standing == undoneFrom()) return done({Outcome::Done, id == 0 ? Entry() : *entry});
  leave(standing, done);
}

void History::leave(std::size_t standing, const Done& done) {
  mGesture.reset();
  const Plan plan = planned(standing);
  if (plan.result.outcome == Outcome::ChangedSince) {
    carryOut(plan);
    return done(plan.result);
  }
  const auto saved = [this, plan, done, before = mStore.bundle()](SettingsStore::Outcome outcome) {
    Result result = plan.result;
    if (outcome == SettingsStore::Outcome::Done) {
      carryOut(plan);
      if (mApplied) mApplied(before, plan.macroMoves);
    } else {
      result.outcome = Outcome::NotSaved;
    }
    done(result);
  };
  mStore.put(plan.bundle, saved, {ChangeOrigin::Kind::History});
}

History::Plan History::planned(std::size_t standing) const {
  Plan plan{mStore.bundle(), standing};
  const auto take = [&plan](const Entry& entry, EditedBundle edited) {
    plan.result.entry = entry;
    plan.result.conflicts += edited.conflicts.size();
    if (edited.conflicts.size() == entry.edits.size()) {
      plan.gone.push_back(entry.id);
      return;
    }
    plan.bundle = std::move(edited.bundle);
    plan.macroMoves.insert(plan.macroMoves.end(), edited.macroMoves.begin(), edited.macroMoves.end());
    plan.result.outcome = Outcome::Done;
    ++plan.result.entries;
  };
  for (std::size_t each = undoneFrom(); each > standing; --each) {
    const Entry& entry = mEntries[each - 1];
    take(entry, withEditsTakenBack(plan.bundle, entry.edits));
  }
  for (std::size_t each = undoneFrom(); each < standing; ++each) {
    take(mEntries[each], withEditsMadeAgain(plan.bundle, mEntries[each].edits));
  }
  if (standing > undoneFrom()) plan.standing -= plan.gone.size();
  return plan;
}

void History::carryOut(const Plan& plan) {
  std::erase_if(mEntries, [&plan](const Entry& each) {
    return std::find(plan.gone.begin(), plan.gone.end(), each.id) != plan.gone.end();
  });
  mUndone = mEntries.size() - plan.standing;
  changed();
}

void History::changed() {
  if (mChanged) mChanged();
}

}  // namespace vorn::engine
