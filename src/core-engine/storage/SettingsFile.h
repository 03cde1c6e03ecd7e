// The settings on disk: one property list in two files of one folder, so that whatever happens between two steps of a
// save, a later load finds either the old or the new contents.
//
//   settings.plist            the contents in force
//   settings.last-good.plist  the contents before them
//   settings.new.plist        a save in progress; what is left of one is removed by the next load
//   NAME.damaged-N            a file that could not be used, moved aside
//   lock                      held by the engine that uses the folder
//
// A save writes settings.new.plist and syncs it, renames settings.plist to settings.last-good.plist and
// settings.new.plist to settings.plist, and syncs the folder. What stands in its way without being a file is moved
// aside like a damaged file; so is a settings.plist that somebody else put there, as the last good contents are always
// the engine's own. One thread at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "core-engine/Log.h"
#include "core-engine/storage/FileSystem.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class SettingsFile {
 public:
  // Makes usable contents of what a file holds; nothing, with the reason, when that cannot be.
  using Check = std::function<std::optional<PropertyList>(const PropertyList& contents, std::string& reason)>;

  // The file system and the log outlive this object. Nothing is touched yet.
  SettingsFile(FileSystem& files, Log& log, std::string folder);

  const std::string& folder() const { return mFolder; }
  // Of the file whose contents load() gave (Fingerprint.h); 0 without one.
  std::uint64_t loadedFingerprint() const { return mLoadedFingerprint; }

  // Makes the folder and holds it for this process. std::errc::resource_unavailable_try_again when another process
  // holds it.
  std::error_code claim();

  // The contents of the first usable file; nothing when there is none. A file that cannot be read, decoded or used is
  // moved aside under a free name and reported.
  std::optional<PropertyList> load(const Check& check);

  // Returns true when the bytes, encoded contents, are on the disk. The folder is claimed again where its lock was
  // lost; nothing is written while another process holds it. On failure the files hold what they held, as far as the
  // disk still takes orders, and the reason is in error.
  bool save(BytesView bytes, std::string& error);

 private:
  std::string path(const char* name) const { return mFolder + "/" + name; }
  std::optional<PropertyList> loadFile(const std::string& path, const Check& check);
  std::error_code setAsideAndTell(const std::string& path);
  std::error_code withoutObstacle(const std::string& path, const std::function<std::error_code()>& operation);
  std::error_code setDamagedAside();
  std::error_code writeNew(BytesView bytes, FileSystem::Identity& written);
  std::error_code putInForce(const FileSystem::Identity& written);
  std::error_code setForeignAside();

  FileSystem& mFiles;
  Log& mLog;
  std::string mFolder;
  std::optional<FileSystem::Identity> mOwn;  // the file that the engine loaded or put in force last
  std::uint64_t mLoadedFingerprint = 0;
  std::vector<std::string> mDamaged;  // still in the way: a save would overwrite them
};

}  // namespace vorn::engine
