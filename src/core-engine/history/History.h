// The changes of the settings that people make, the newest last, and their undoing. What the mouse itself switches in
// play is not among them. One thread, the engine's.
//
// The changes are taken back in their order, the newest first, and made again in the opposite one; a new change ends
// what could be made again. The steps of one gesture are one change: what a slider sends while it is dragged, what a
// client sends after it has deleted a macro or a profile, to clean up the assignments, and what it sends to add several
// profiles and to switch to a new one. Another keymap in force, alone, is no change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/history/HistoryEntries.h"
#include "core-engine/storage/ChangeOrigin.h"
#include "core-engine/storage/SettingsStore.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class History {
 public:
  // Seconds since 1970-01-01 00:00:00 UTC.
  using Clock = std::function<std::int64_t()>;
  using ChangeHandler = std::function<void()>;

  using Entry = HistoryEntry;

  enum class Outcome {
    Done,
    NothingLeft,   // to be taken back or made again; or there is no such entry
    ChangedSince,  // none of it stands any more, or it no longer fits; the entries are gone
    NotSaved,      // the entries stay
    Outdated,      // another entry than the one that is meant comes next; nothing is done
  };

  // What became of one entry, or of all that were taken back or made again together.
  struct Result {
    Outcome outcome;
    Entry entry{};              // the last one that it was about; none with NothingLeft
    std::size_t entries = 0;    // how many were taken back or made again
    std::size_t conflicts = 0;  // how many of their values stay as they are now, since others have changed them
  };
  using Done = std::function<void(const Result& result)>;

  // What was taken back or made again is in force. profilePlaces: where each profile of before stands now, negative
  // where it is gone. macroMoves: how macros moved.
  using AppliedHandler = std::function<void(const PropertyList& before, const std::vector<std::int64_t>& profilePlaces,
                                            const std::vector<ArrayMove>& macroMoves)>;

  // The store and the scheduler outlive the history.
  History(SettingsStore& store, const Scheduler& scheduler, Clock clock);

  // Told of every change of the entries. One handler.
  void setChangeHandler(ChangeHandler handler) { mChanged = std::move(handler); }
  // One handler, which changes no settings.
  void setAppliedHandler(AppliedHandler handler) { mApplied = std::move(handler); }

  // What the change is to the entries. To be asked for before note(), where it has to be known then, on its way to the
  // disk.
  HistoryStep stepFor(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin);
  // The settings have changed.
  void note(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin);

  // Each is one durable change of the settings. done is called once: within the call, or when the change is saved. Only
  // while no save is under way. id: of the entry that is meant, which has to be the next one; 0 for whichever that is.
  void undo(std::uint64_t id, const Done& done);
  void redo(std::uint64_t id, const Done& done);
  // Makes the settings what they were right after the change with this ID: takes back what is newer, or makes again
  // what was undone up to it. With 0, what they were before all changes that are kept.
  void goTo(std::uint64_t id, const Done& done);

  // Puts a backup, a complete bundle, in the place of the settings, as a change that can be taken back.
  void putBackup(const PropertyList& bundle, const std::string& date, const Done& done);

  const HistoryEntries& entries() const { return mEntries; }
  // Puts entries in the place of those that are there.
  void restore(HistoryEntries entries) { mEntries = std::move(entries); }
  // Another number after each step, also one that changes no entry.
  std::uint64_t revision() const { return mRevision; }

 private:
  // What taking back, or making again, comes to.
  struct Plan;
  // The gesture under way.
  struct Gesture {
    ChangeOrigin origin;
    PropertyList before;           // the settings at its begin
    Scheduler::Duration lastStep;  // of what is dragged; of a deletion: when it was
    bool isSwitched = false;       // after a deletion, to another profile
    int cleanUps = 0;              // after a deletion
  };
  // What a change is to the entries and to the gesture.
  struct Change {
    HistoryStep step;
    std::optional<Gesture> gesture{};
  };

  Change changeFor(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) const;
  Change requested(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) const;
  // The last entry, or the next one, as the change from the begin of the gesture on.
  Entry entryFor(std::uint64_t id, Edits edits, const Gesture& gesture, const PropertyList& after) const;
  bool continuesGesture(const ChangeOrigin& origin, const PropertyList& after) const;
  bool isCleanUp(std::string_view deletion, MessageID request) const;
  // Takes back or makes again until so many entries stand.
  void leave(std::size_t standing, const Done& done);
  // Without those that would come to no change, or to settings that cannot be. isSizeChecked: also to too large ones.
  Plan planned(std::size_t standing, bool isSizeChecked) const;
  void carryOut(const Change& change);

  SettingsStore& mStore;
  const Scheduler& mScheduler;
  Clock mClock;
  ChangeHandler mChanged;
  AppliedHandler mApplied;
  HistoryEntries mEntries;
  std::uint64_t mRevision = 0;
  std::optional<Change> mPrepared;  // told before its change is in force
  HistoryStep mPlanned;             // while changes are taken back or made again
  std::optional<Gesture> mGesture;
};

}  // namespace vorn::engine
