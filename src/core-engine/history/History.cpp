#include "core-engine/history/History.h"

#include <algorithm>
#include <array>
#include <chrono>
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
constexpr auto pauseWithinCleanUp = std::chrono::seconds(3);

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

void History::note(const PropertyList& before, const PropertyList& after) {
  if (mIsUndoing) return;
  if (!mAuthor) {
    // What comes after it could not be told from it.
    mGesture.reset();
    return;
  }
  if (!continuesGesture() || !replaceLast(after)) add(before, after);
}

bool History::continuesGesture() const {
  if (!mGesture || mEntries.empty() || mUndone > 0 || mGesture->author.client != mAuthor->client) return false;
  const auto pause = mScheduler.now() - mGesture->lastStep;
  const std::string_view kind = kindOf(mEntries.back().description);
  if (isOneOf(kind, deletions)) {
    const bool isCleanUp =
        mAuthor->request == MessageID::ReplaceAllProfiles || mAuthor->request == MessageID::SwitchProfile;
    return isCleanUp && pause <= pauseWithinCleanUp;
  }
  return isOneOf(kind, draggedKinds) && mAuthor->request == mGesture->author.request && pause <= pauseWithinDrag;
}

void History::add(const PropertyList& before, const PropertyList& after) {
  Edits edits = editsBetween(before, after);
  if (edits.empty()) return;
  mEntries.resize(undoneFrom());
  mUndone = 0;
  if (mEntries.size() == maximumEntries) mEntries.pop_front();
  PropertyList description = descriptionOf(edits, before, after);
  mEntries.push_back({++mLastID, mClock(), mAuthor->sourceApp, std::move(description), std::move(edits)});
  mGesture = {*mAuthor, before, mScheduler.now()};
  changed();
}

bool History::replaceLast(const PropertyList& after) {
  Edits edits = editsBetween(mGesture->before, after);
  PropertyList description = descriptionOf(edits, mGesture->before, after);
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

History::Result History::undo() {
  // What a client asked for before comes before.
  mStore.settle();
  if (undoneFrom() == 0) return {Outcome::NothingLeft};
  const std::size_t position = undoneFrom() - 1;
  Result result{Outcome::Done, mEntries[position]};
  result.outcome = apply(result.entry, withEditsTakenBack, result.conflicts);
  if (result.outcome == Outcome::NotSaved) return result;
  if (result.outcome == Outcome::Done) {
    ++mUndone;
  } else {
    mEntries.erase(mEntries.begin() + static_cast<std::ptrdiff_t>(position));
  }
  changed();
  return result;
}

History::Result History::redo() {
  mStore.settle();
  if (mUndone == 0) return {Outcome::NothingLeft};
  const std::size_t position = undoneFrom();
  Result result{Outcome::Done, mEntries[position]};
  result.outcome = apply(result.entry, withEditsMadeAgain, result.conflicts);
  if (result.outcome == Outcome::NotSaved) return result;
  --mUndone;
  if (result.outcome != Outcome::Done) mEntries.erase(mEntries.begin() + static_cast<std::ptrdiff_t>(position));
  changed();
  return result;
}

History::Outcome History::apply(const Entry& entry, Edit edit, Edits& conflicts) {
  mGesture.reset();
  mIsUndoing = true;
  const auto outcome = mStore.apply([&](const PropertyList& bundle) -> std::optional<PropertyList> {
    EditedBundle edited = edit(bundle, entry.edits);
    conflicts = std::move(edited.conflicts);
    if (conflicts.size() == entry.edits.size()) return std::nullopt;
    return std::move(edited.bundle);
  });
  mIsUndoing = false;
  switch (outcome) {
    case SettingsStore::Outcome::Done:
      return Outcome::Done;
    case SettingsStore::Outcome::Refused:
      return Outcome::ChangedSince;
    case SettingsStore::Outcome::NotSaved:
    case SettingsStore::Outcome::TooLarge:
      break;
  }
  return Outcome::NotSaved;
}

void History::changed() {
  if (mChanged) mChanged();
}

}  // namespace vorn::engine
