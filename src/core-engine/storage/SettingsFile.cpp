#include "core-engine/storage/SettingsFile.h"

#include <utility>

#include "core-engine/storage/Fingerprint.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine {

namespace {

constexpr const char* currentName = "settings.plist";
constexpr const char* lastGoodName = "settings.last-good.plist";
constexpr const char* newName = "settings.new.plist";
constexpr const char* lockName = "lock";

bool isMissing(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory;
}

// Whether something stands there that is no file: a folder, a symbolic link, a pipe.
bool isObstacle(const std::error_code& error) {
  return error == std::errc::is_a_directory || error == std::errc::too_many_symbolic_link_levels ||
         error == std::errc::no_such_device_or_address;
}

}  // namespace

SettingsFile::SettingsFile(FileSystem& files, Log& log, std::string folder)
    : mFiles(files), mLog(log), mFolder(std::move(folder)) {}

std::error_code SettingsFile::claim() {
  if (const std::error_code error = mFiles.createFolder(mFolder)) return error;
  return withoutObstacle(path(lockName), [this] { return mFiles.lock(path(lockName)); });
}

std::optional<PropertyList> SettingsFile::load(const Check& check) {
  mFiles.remove(path(newName));
  mDamaged.clear();
  mOwn.reset();
  mLoadedFingerprint = 0;
  if (auto contents = loadFile(path(currentName), check)) return contents;
  auto contents = loadFile(path(lastGoodName), check);
  if (contents) mLog.line("using the last good settings, " + path(lastGoodName));
  return contents;
}

std::optional<PropertyList> SettingsFile::loadFile(const std::string& path, const Check& check) {
  Bytes bytes;
  std::string reason;
  const std::error_code error = mFiles.read(path, maximumSize, bytes);
  if (isMissing(error)) return std::nullopt;
  if (error) {
    reason = error.message();
  } else if (const auto decoded = decodePropertyList(bytes, &reason)) {
    if (auto usable = check(*decoded, reason)) {
      FileSystem::Identity identity;
      if (!mFiles.identify(path, identity)) mOwn = identity;
      mLoadedFingerprint = fingerprintOf(bytes);
      return usable;
    }
  }
  mLog.line("cannot use " + path + ": " + reason);
  std::string newPath;
  if (const std::error_code moveError = setAside(mFiles, path, newPath)) {
    mLog.line("cannot move " + path + " aside: " + moveError.message() + "; no change will be saved until it can be");
    mDamaged.push_back(path);
  } else {
    mLog.line("it is kept as " + newPath);
  }
  return std::nullopt;
}

// What is gone already needs no other place.
std::error_code SettingsFile::setAsideAndTell(const std::string& path) {
  std::string newPath;
  const std::error_code error = setAside(mFiles, path, newPath);
  if (!error) mLog.line(path + " is kept as " + newPath);
  return isMissing(error) ? std::error_code() : error;
}

std::error_code SettingsFile::setDamagedAside() {
  while (!mDamaged.empty()) {
    if (const std::error_code error = setAsideAndTell(mDamaged.back())) return error;
    mDamaged.pop_back();
  }
  return {};
}

// Does the operation, which wants a file under the path; once more after what is no file has been moved out of its way.
std::error_code SettingsFile::withoutObstacle(const std::string& path,
                                              const std::function<std::error_code()>& operation) {
  const std::error_code error = operation();
  if (!isObstacle(error)) return error;
  if (const std::error_code moveError = setAsideAndTell(path)) return moveError;
  return operation();
}

bool SettingsFile::save(BytesView bytes, std::string& error) {
  std::error_code failure = setDamagedAside();
  if (!failure) failure = claim();
  if (failure == std::errc::resource_unavailable_try_again) {
    error = "another engine uses them";
    return false;
  }
  FileSystem::Identity written;
  if (!failure) failure = writeNew(bytes, written);
  if (!failure) failure = putInForce(written);
  if (failure) error = failure.message();
  return !failure;
}

std::error_code SettingsFile::writeNew(BytesView bytes, FileSystem::Identity& written) {
  const std::string fresh = path(newName);
  const auto write = [&] { return writeSynced(mFiles, fresh, bytes); };
  if (const std::error_code error = withoutObstacle(fresh, write)) return error;
  const std::error_code error = mFiles.identify(fresh, written);
  if (error) mFiles.remove(fresh);
  return error;
}

std::error_code SettingsFile::setForeignAside() {
  FileSystem::Identity identity;
  const std::error_code error = mFiles.identify(path(currentName), identity);
  if (isMissing(error)) return {};
  if (error || identity == mOwn) return error;
  mLog.line("somebody changed " + path(currentName));
  return setAsideAndTell(path(currentName));
}

std::error_code SettingsFile::putInForce(const FileSystem::Identity& written) {
  const std::string current = path(currentName);
  const std::string lastGood = path(lastGoodName);
  const std::string fresh = path(newName);
  std::error_code error = setForeignAside();
  if (!error) error = withoutObstacle(lastGood, [&] { return mFiles.rename(current, lastGood); });
  const bool hadCurrent = !error;
  if (error && !isMissing(error)) {
    mFiles.remove(fresh);
    return error;
  }
  error = mFiles.rename(fresh, current);
  if (!error) {
    error = mFiles.syncFolder(mFolder);
    if (!error) {
      mOwn = written;
      return {};
    }
    // Where there is no way back the new file stays, and is no stranger's.
    if (mFiles.rename(current, fresh)) mOwn = written;
  }
  if (hadCurrent) mFiles.rename(lastGood, current);
  mFiles.remove(fresh);
  return error;
}

}  // namespace vorn::engine
