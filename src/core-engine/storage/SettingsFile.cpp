#include "core-engine/storage/SettingsFile.h"

#include <algorithm>
#include <utility>

#include "model/PropertyListCodec.h"

namespace vorn::engine {

namespace {

constexpr const char* currentName = "settings.plist";
constexpr const char* lastGoodName = "settings.last-good.plist";
constexpr const char* newName = "settings.new.plist";
constexpr const char* lockName = "lock";
constexpr int maximumDamagedFiles = 1000;

bool isMissing(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory;
}

}  // namespace

SettingsFile::SettingsFile(FileSystem& files, Log& log, std::string folder)
    : mFiles(files), mLog(log), mFolder(std::move(folder)) {}

std::error_code SettingsFile::claim() {
  if (const std::error_code error = mFiles.createFolder(mFolder)) return error;
  return mFiles.lock(path(lockName));
}

std::optional<PropertyList> SettingsFile::load(const Check& check) {
  mFiles.remove(path(newName));
  mDamaged.clear();
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
    if (auto usable = check(*decoded, reason)) return usable;
  }
  mLog.line("cannot use " + path + ": " + reason);
  std::string newPath;
  if (const std::error_code moveError = setAside(path, newPath)) {
    mLog.line("cannot move " + path + " aside: " + moveError.message() + "; no change will be saved until it can be");
    mDamaged.push_back(path);
  } else {
    mLog.line("it is kept as " + newPath);
  }
  return std::nullopt;
}

std::error_code SettingsFile::setAside(const std::string& path, std::string& newPath) {
  std::error_code error;
  for (int number = 1; number <= maximumDamagedFiles; ++number) {
    newPath = path + ".damaged-" + std::to_string(number);
    error = mFiles.renameToFree(path, newPath);
    if (error != std::errc::file_exists) break;
  }
  return error;
}

std::error_code SettingsFile::setDamagedAside() {
  while (!mDamaged.empty()) {
    std::string newPath;
    const std::error_code error = setAside(mDamaged.back(), newPath);
    if (error && !isMissing(error)) return error;
    if (!error) mLog.line(mDamaged.back() + " is kept as " + newPath);
    mDamaged.pop_back();
  }
  return {};
}

bool SettingsFile::save(const PropertyList& contents, std::string& error) {
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(contents, &error);
  if (!bytes) return false;
  std::error_code failure = setDamagedAside();
  if (!failure) failure = mFiles.createFolder(mFolder);
  if (!failure) failure = writeNew(*bytes);
  if (!failure) failure = putInForce();
  if (failure) error = failure.message();
  return !failure;
}

std::error_code SettingsFile::writeNew(BytesView bytes) {
  FileSystem::Handle handle = -1;
  if (const std::error_code error = mFiles.create(path(newName), handle)) return error;
  std::error_code error = writeAll(handle, bytes);
  if (!error) error = mFiles.sync(handle);
  const std::error_code closeError = mFiles.close(handle);
  if (!error) error = closeError;
  if (error) mFiles.remove(path(newName));
  return error;
}

std::error_code SettingsFile::writeAll(FileSystem::Handle handle, BytesView bytes) {
  while (!bytes.empty()) {
    std::size_t written = 0;
    if (const std::error_code error = mFiles.write(handle, bytes, written)) return error;
    if (written == 0) return std::make_error_code(std::errc::io_error);
    bytes = bytes.subspan(std::min(written, bytes.size()));
  }
  return {};
}

std::error_code SettingsFile::putInForce() {
  const std::string current = path(currentName);
  const std::string lastGood = path(lastGoodName);
  const std::string fresh = path(newName);
  std::error_code error = mFiles.rename(current, lastGood);
  const bool hadCurrent = !error;
  if (error && !isMissing(error)) {
    mFiles.remove(fresh);
    return error;
  }
  error = mFiles.rename(fresh, current);
  if (!error) {
    error = mFiles.syncFolder(mFolder);
    if (!error) return {};
    mFiles.rename(current, fresh);
  }
  if (hadCurrent) mFiles.rename(lastGood, current);
  mFiles.remove(fresh);
  return error;
}

}  // namespace vorn::engine
