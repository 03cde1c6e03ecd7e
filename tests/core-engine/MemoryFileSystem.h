// A disk in memory that fails and crashes on demand. It forgets in a crash what was not synced: the contents of a file
// that were written after its last sync, and the names that changed after the last sync of the folder.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/storage/FileSystem.h"

namespace vorn::engine::test {

class MemoryFileSystem : public FileSystem {
 public:
  struct Crash {};  // thrown out of the operation that never happens

  // What is on the disk, synced.
  void put(const std::string& path, const Bytes& contents);
  std::optional<Bytes> contents(const std::string& path) const;
  std::vector<std::string> paths() const;
  // A folder, which takes the place of a file.
  void putFolder(const std::string& path);
  // Somebody else holds the lock.
  bool isLockedByAnother = false;

  // Operations are counted from 1, from the last call of one of these.
  void failAt(int operation, std::errc error);
  void failFrom(int operation, std::errc error);
  void crashAt(int operation);
  void work();                               // nothing goes wrong any more
  int operations() const { return mCount; }  // since then
  // Called by every sync of a file before it does anything; it may take its time.
  std::function<void()> onSync;
  void setMaximumWrite(std::size_t maximum) { mMaximumWrite = maximum; }

  // Every disk that the machine may find when it starts again.
  std::vector<MemoryFileSystem> afterCrash() const;

  std::error_code read(const std::string& path, std::size_t maximum, Bytes& contents) override;
  std::error_code list(const std::string& folder, std::vector<std::string>& names) override;
  std::error_code identify(const std::string& path, Identity& identity) override;
  std::error_code createFolder(const std::string& path) override;
  std::error_code create(const std::string& path, Handle& handle) override;
  std::error_code write(Handle handle, BytesView bytes, std::size_t& written) override;
  std::error_code sync(Handle handle) override;
  std::error_code close(Handle handle) override;
  std::error_code rename(const std::string& from, const std::string& to) override;
  std::error_code renameToFree(const std::string& from, const std::string& to) override;
  std::error_code remove(const std::string& path) override;
  std::error_code syncFolder(const std::string& path) override;
  std::error_code lock(const std::string& path) override;

 private:
  struct File {
    Bytes contents;
    Bytes synced;
    bool isFolder = false;
  };
  using Names = std::map<std::string, std::shared_ptr<File>>;
  enum class Unsynced { Lost, Half, Kept };

  std::error_code step();
  bool isFolder(const std::string& path) const;
  void namesChanged() { mUnsyncedNames.push_back(mNames); }
  static MemoryFileSystem restarted(const Names& names, Unsynced unsynced);

  Names mNames;
  std::vector<Names> mUnsyncedNames = {{}};  // the synced names, then those after each change
  std::map<Handle, std::shared_ptr<File>> mOpen;
  Handle mLastHandle = 0;
  std::size_t mMaximumWrite = static_cast<std::size_t>(-1);
  int mCount = 0;
  int mFirstFailure = 0;  // 0 for none
  int mLastFailure = 0;
  std::errc mError{};
  int mCrash = 0;
};

}  // namespace vorn::engine::test
