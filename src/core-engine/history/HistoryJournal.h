// The history on the disk, in "history" beside the settings: whole at the begin of the file, and behind that a record
// for each change since. A record is there before the settings are saved and tells which settings it leads to, so that
// after whatever end of the engine the last one that leads to the settings that are there counts, and what is behind it
// does not. Nothing waits for it to be on the disk: where the machine ends, what it had not written yet is gone.
//
// The file begins with "VornHistory1\n". A record is, with little-endian numbers, the size of its property list (4
// bytes), the fingerprint of the settings' file after it (8), a checksum of these, of the property list and of the
// checksum of the record before (8), and the property list, binary (HistoryRecords.h).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core-engine/Log.h"
#include "core-engine/history/History.h"
#include "core-engine/storage/ChangeKeeper.h"
#include "core-engine/storage/FileSystem.h"

namespace vorn::engine {

class HistoryJournal : public ChangeKeeper {
 public:
  // Behind the first record so many bytes of others, or as many as that has, and the file is written anew.
  static constexpr std::size_t usualSize = std::size_t{256} * 1024;
  // What is larger is no history.
  static constexpr std::size_t maximumFileSize = std::size_t{64} * 1024 * 1024;

  // All of them outlive the journal. Nothing is touched yet.
  HistoryJournal(FileSystem& files, Log& log, const std::string& folder, History& history);
  ~HistoryJournal() override;

  // Gives the history what the file holds of it and what leads to the settings whose file has this fingerprint. A
  // damaged file is kept as "history.damaged".
  void load(std::uint64_t fingerprint);

  void willSave(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) override;
  void keep(BytesView bytes) override;
  void hasEnded(bool isSaved) override;

 private:
  void append(Bytes& to, const PropertyList& record, std::uint64_t fingerprint);
  std::error_code writeAnew(const Bytes& contents);
  // Keeps a file that is of no use, since the next change would take its place.
  void putAside();
  void close();

  FileSystem& mFiles;
  Log& mLog;
  std::string mPath;
  History& mHistory;
  // Of the change under way; the disk thread has them until it has ended.
  HistoryStep mStep;
  std::optional<HistoryEntries> mWhole;  // where the file is to be written anew
  std::uint64_t mFingerprint = 0;        // of the settings in force
  std::uint64_t mNextFingerprint = 0;
  std::uint64_t mNextRevision = 0;  // of the history, where the change is its only step
  // The file.
  FileSystem::Handle mFile = -1;  // open behind its last record; negative where it is to be written anew
  std::uint64_t mChecksum = 0;    // of the last record
  std::size_t mWholeSize = 0;     // of the first record
  std::size_t mSize = 0;          // of the others
  bool mIsTold = false;           // in the log that it cannot be written
};

}  // namespace vorn::engine
