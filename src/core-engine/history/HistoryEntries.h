// The changes of the settings that are kept, and what each change does to them. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/history/SettingsEdits.h"
#include "model/PropertyList.h"

namespace vorn::engine {

struct HistoryEntry {
  std::uint64_t id = 0;
  std::int64_t time = 0;     // seconds since 1970-01-01 00:00:00 UTC
  std::string sourceApp;     // empty where it was not told
  PropertyList description;  // as ChangeDescription.h has it
  Edits edits;
  friend bool operator==(const HistoryEntry&, const HistoryEntry&) = default;
};

// What becomes of the entries, in this order.
struct HistoryStep {
  bool endsUndone = false;            // those that are undone go
  bool dropsLast = false;             // the last one goes
  std::vector<std::uint64_t> gone{};  // IDs of entries that go
  std::optional<HistoryEntry> added{};
  std::size_t undone = 0;  // how many of the last ones are undone then
  friend bool operator==(const HistoryStep&, const HistoryStep&) = default;
};

class HistoryEntries {
 public:
  // So many are kept at most. Beyond so many bytes, counted as a record's (model/RecordLimits.h), the oldest go too,
  // but for the last one.
  static constexpr std::size_t maximumCount = 200;
  static constexpr std::size_t maximumSize = std::size_t{8} * 1024 * 1024;

  HistoryEntries() = default;
  // lastID: the largest that has been given, also to an entry that has gone.
  HistoryEntries(std::vector<HistoryEntry> entries, std::size_t undone, std::uint64_t lastID);

  void take(const HistoryStep& step);
  bool isChangedBy(const HistoryStep& step) const {
    return step.endsUndone || step.dropsLast || !step.gone.empty() || step.added || step.undone != mUndone;
  }

  // The oldest first. Those from standing() on are undone and can be made again.
  const std::deque<HistoryEntry>& all() const { return mEntries; }
  std::size_t standing() const { return mEntries.size() - mUndone; }
  std::size_t undone() const { return mUndone; }
  std::uint64_t lastID() const { return mLastID; }

 private:
  void add(HistoryEntry entry);
  void dropOldest();

  std::deque<HistoryEntry> mEntries;
  std::deque<std::size_t> mSizes;  // of the entries
  std::size_t mSize = 0;
  std::size_t mUndone = 0;  // how many of the last ones
  std::uint64_t mLastID = 0;
};

}  // namespace vorn::engine
