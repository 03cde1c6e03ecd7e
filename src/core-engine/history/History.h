// The changes of the settings that people make, the newest last, and their undoing. What the mouse itself switches in
// play is not among them. One thread, the engine's.
//
// The changes are taken back in their order, the newest first, and made again in the opposite one; a new change ends
// what could be made again. The steps of one gesture are one change: what a slider sends while it is dragged, and what
// a client sends after it has deleted a macro or a profile, to clean up the assignments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "core-engine/Scheduler.h"
#include "core-engine/history/SettingsEdits.h"
#include "core-engine/storage/SettingsStore.h"
#include "model/PropertyList.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

// Whose request makes a change.
struct Author {
  std::string client;     // whatever tells clients apart
  std::string sourceApp;  // empty where it gave none
  MessageID request{};
};

class History {
 public:
  // Seconds since 1970-01-01 00:00:00 UTC.
  using Clock = std::function<std::int64_t()>;
  using ChangeHandler = std::function<void()>;

  static constexpr std::size_t maximumEntries = 200;

  struct Entry {
    std::uint64_t id = 0;
    std::int64_t time = 0;
    std::string sourceApp;
    PropertyList description;  // as ChangeDescription.h has it
    Edits edits;
  };

  enum class Outcome {
    Done,
    NothingLeft,   // to be taken back or made again
    ChangedSince,  // none of it stands any more; the entry is gone
    NotSaved,      // the entry stays
  };

  struct Result {
    Outcome outcome;
    Entry entry{};      // what it was about; none with NothingLeft
    Edits conflicts{};  // what was left as it is now, since others have changed it
  };

  // The store and the scheduler outlive the history.
  History(SettingsStore& store, const Scheduler& scheduler, Clock clock);

  // Told of every change of the entries. One handler.
  void setChangeHandler(ChangeHandler handler) { mChanged = std::move(handler); }

  // Whose request is served from now on; nobody's where it is the mouse's own doing.
  void setAuthor(std::optional<Author> author) { mAuthor = std::move(author); }
  // The settings have changed.
  void note(const PropertyList& before, const PropertyList& after);

  // Each is one durable change of the settings.
  Result undo();
  Result redo();

  // The oldest first. Those from undoneFrom() on are undone and can be made again.
  const std::deque<Entry>& entries() const { return mEntries; }
  std::size_t undoneFrom() const { return mEntries.size() - mUndone; }

 private:
  bool continuesGesture() const;
  void add(const PropertyList& before, const PropertyList& after);
  // Makes the last entry the change from the begin of the gesture to this. False where that would be another change.
  bool replaceLast(const PropertyList& after);
  using Edit = EditedBundle (*)(const PropertyList& bundle, const Edits& edits);
  Outcome apply(const Entry& entry, Edit edit, Edits& conflicts);
  void changed();

  SettingsStore& mStore;
  const Scheduler& mScheduler;
  Clock mClock;
  ChangeHandler mChanged;
  std::optional<Author> mAuthor;
  std::deque<Entry> mEntries;
  std::size_t mUndone = 0;  // how many of the last ones
  std::uint64_t mLastID = 0;
  bool mIsUndoing = false;

  // The gesture under way.
  struct Gesture {
    Author author;
    PropertyList before;  // the settings at its begin
    Scheduler::Duration lastStep;
  };
  std::optional<Gesture> mGesture;
};

}  // namespace vorn::engine
