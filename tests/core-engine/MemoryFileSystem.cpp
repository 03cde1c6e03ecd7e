#include "core-engine/MemoryFileSystem.h"

#include <algorithm>
#include <climits>

namespace vorn::engine::test {

void MemoryFileSystem::put(const std::string& path, const Bytes& contents) {
  mNames[path] = std::make_shared<File>(File{contents, contents});
  mUnsyncedNames = {mNames};
}

void MemoryFileSystem::putFolder(const std::string& path) {
  put(path, {});
  mNames[path]->isFolder = true;
}

bool MemoryFileSystem::isFolder(const std::string& path) const {
  const auto found = mNames.find(path);
  return found != mNames.end() && found->second->isFolder;
}

std::optional<Bytes> MemoryFileSystem::contents(const std::string& path) const {
  const auto found = mNames.find(path);
  return found == mNames.end() ? std::nullopt : std::optional(found->second->contents);
}

std::vector<std::string> MemoryFileSystem::paths() const {
  std::vector<std::string> result;
  for (const auto& [path, file] : mNames) result.push_back(path);
  return result;
}

void MemoryFileSystem::failAt(int operation, std::errc error) {
  work();
  mFirstFailure = mLastFailure = operation;
  mError = error;
}

void MemoryFileSystem::failFrom(int operation, std::errc error) {
  failAt(operation, error);
  mLastFailure = INT_MAX;
}

void MemoryFileSystem::crashAt(int operation) {
  work();
  mCrash = operation;
}

void MemoryFileSystem::work() {
  mCount = 0;
  mFirstFailure = mLastFailure = 0;
  mCrash = 0;
}

std::error_code MemoryFileSystem::step() {
  ++mCount;
  if (mCount == mCrash) throw Crash();
  if (mFirstFailure != 0 && mCount >= mFirstFailure && mCount <= mLastFailure) return std::make_error_code(mError);
  return {};
}

MemoryFileSystem MemoryFileSystem::restarted(const Names& names, Unsynced unsynced) {
  MemoryFileSystem disk;
  for (const auto& [path, file] : names) {
    Bytes contents = file->synced;
    if (unsynced != Unsynced::Lost) contents = file->contents;
    if (unsynced == Unsynced::Half && file->contents != file->synced) contents.resize(contents.size() / 2);
    disk.put(path, contents);
  }
  return disk;
}

std::vector<MemoryFileSystem> MemoryFileSystem::afterCrash() const {
  std::vector<MemoryFileSystem> disks;
  for (const Names& names : mUnsyncedNames) {
    for (const Unsynced unsynced : {Unsynced::Lost, Unsynced::Half, Unsynced::Kept}) {
      disks.push_back(restarted(names, unsynced));
    }
  }
  return disks;
}

std::error_code MemoryFileSystem::read(const std::string& path, std::size_t maximum, Bytes& contents) {
  if (const std::error_code error = step()) return error;
  const auto found = mNames.find(path);
  if (found == mNames.end()) return std::make_error_code(std::errc::no_such_file_or_directory);
  if (found->second->isFolder) return std::make_error_code(std::errc::invalid_argument);
  if (found->second->contents.size() > maximum) return std::make_error_code(std::errc::file_too_large);
  contents = found->second->contents;
  return {};
}

std::error_code MemoryFileSystem::list(const std::string& folder, std::vector<std::string>& names) {
  names.clear();
  if (const std::error_code error = step()) return error;
  const std::string start = folder + "/";
  for (const auto& [path, file] : mNames) {
    if (path.starts_with(start)) names.push_back(path.substr(start.size()));
  }
  return {};
}

std::error_code MemoryFileSystem::identify(const std::string& path, Identity& identity) {
  if (const std::error_code error = step()) return error;
  const auto found = mNames.find(path);
  if (found == mNames.end()) return std::make_error_code(std::errc::no_such_file_or_directory);
  identity = {0, reinterpret_cast<std::uintptr_t>(found->second.get()), found->second->contents.size(), 0,
              !found->second->isFolder};
  return {};
}

std::error_code MemoryFileSystem::createFolder(const std::string&) {
  return step();
}

std::error_code MemoryFileSystem::create(const std::string& path, Handle& handle) {
  if (const std::error_code error = step()) return error;
  if (isFolder(path)) return std::make_error_code(std::errc::is_a_directory);
  mNames[path] = std::make_shared<File>();
  namesChanged();
  handle = ++mLastHandle;
  mOpen[handle] = mNames[path];
  return {};
}

std::error_code MemoryFileSystem::write(Handle handle, BytesView bytes, std::size_t& written) {
  written = 0;
  if (const std::error_code error = step()) return error;
  written = std::min(bytes.size(), mMaximumWrite);
  Bytes& contents = mOpen.at(handle)->contents;
  contents.insert(contents.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(written));
  return {};
}

std::error_code MemoryFileSystem::sync(Handle handle) {
  if (onSync) onSync();
  if (const std::error_code error = step()) return error;
  mOpen.at(handle)->synced = mOpen.at(handle)->contents;
  return {};
}

std::error_code MemoryFileSystem::close(Handle handle) {
  mOpen.erase(handle);
  return step();
}

std::error_code MemoryFileSystem::rename(const std::string& from, const std::string& to) {
  if (const std::error_code error = step()) return error;
  if (isFolder(to)) return std::make_error_code(std::errc::is_a_directory);
  auto node = mNames.extract(from);
  if (node.empty()) return std::make_error_code(std::errc::no_such_file_or_directory);
  mNames[to] = node.mapped();
  namesChanged();
  return {};
}

std::error_code MemoryFileSystem::renameToFree(const std::string& from, const std::string& to) {
  if (!mNames.contains(to)) return rename(from, to);
  const std::error_code error = step();
  return error ? error : std::make_error_code(std::errc::file_exists);
}

std::error_code MemoryFileSystem::remove(const std::string& path) {
  if (const std::error_code error = step()) return error;
  if (isFolder(path)) return std::make_error_code(std::errc::is_a_directory);
  if (mNames.erase(path) == 0) return std::make_error_code(std::errc::no_such_file_or_directory);
  namesChanged();
  return {};
}

std::error_code MemoryFileSystem::syncFolder(const std::string&) {
  if (const std::error_code error = step()) return error;
  mUnsyncedNames = {mNames};
  return {};
}

std::error_code MemoryFileSystem::lock(const std::string&) {
  const std::error_code error = step();
  return isLockedByAnother ? std::make_error_code(std::errc::resource_unavailable_try_again) : error;
}

}  // namespace vorn::engine::test
