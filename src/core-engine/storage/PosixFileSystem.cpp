#include "core-engine/storage/PosixFileSystem.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "model/FileDescriptor.h"
#include "model/RegularFile.h"

namespace vorn::engine {

namespace {

constexpr mode_t fileMode = 0600;
constexpr mode_t folderMode = 0700;

std::error_code lastError() {
  return {errno, std::generic_category()};
}

std::error_code resultOf(int returned) {
  return returned < 0 ? lastError() : std::error_code();
}

bool isFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

FileSystem::Identity identityOf(const struct stat& status) {
  constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
  return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec, S_ISREG(status.st_mode)};
}

// Whether the file under the path is the open one.
bool isFileAt(const std::string& path, int file) {
  struct stat open {};
  struct stat named {};
  return ::fstat(file, &open) == 0 && ::lstat(path.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
         open.st_ino == named.st_ino;
}

}  // namespace

PosixFileSystem::~PosixFileSystem() {
  for (const auto& [path, handle] : mLocks) ::close(handle);
}

std::error_code PosixFileSystem::read(const std::string& path, std::size_t maximum, Bytes& contents) {
  return readRegularFile(path, maximum, contents);
}

std::error_code PosixFileSystem::list(const std::string& folder, std::vector<std::string>& names) {
  names.clear();
  std::error_code error;
  std::filesystem::directory_iterator each(folder, error);
  for (const std::filesystem::directory_iterator end; !error && each != end && names.size() < maximumListed;) {
    names.push_back(each->path().filename().string());
    each.increment(error);
  }
  return error;
}

std::error_code PosixFileSystem::identify(const std::string& path, Identity& identity) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) < 0) return lastError();
  identity = identityOf(status);
  return {};
}

std::error_code PosixFileSystem::createFolder(const std::string& path) {
  for (std::size_t end = 0; end != std::string::npos;) {
    end = path.find('/', end + 1);
    const std::string part = path.substr(0, end);
    if (isFolder(part)) continue;
    if (::mkdir(part.c_str(), folderMode) < 0) {
      const std::error_code error = lastError();
      if (error != std::errc::file_exists) return error;
      if (!isFolder(part)) return std::make_error_code(std::errc::not_a_directory);
    }
    const std::size_t parentEnd = part.rfind('/');
    if (const std::error_code error = syncFolder(parentEnd == 0 ? "/" : part.substr(0, parentEnd))) return error;
  }
  return {};
}

std::error_code PosixFileSystem::create(const std::string& path, Handle& handle) {
  handle = withoutInterruption([&] {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, fileMode);
  });
  return resultOf(handle);
}

std::error_code PosixFileSystem::write(Handle handle, BytesView bytes, std::size_t& written) {
  const ssize_t count = withoutInterruption([&] { return ::write(handle, bytes.data(), bytes.size()); });
  written = count < 0 ? 0 : static_cast<std::size_t>(count);
  return count < 0 ? lastError() : std::error_code();
}

std::error_code PosixFileSystem::sync(Handle handle) {
  return resultOf(withoutInterruption([&] { return ::fsync(handle); }));
}

std::error_code PosixFileSystem::close(Handle handle) {
  // On Linux the descriptor is released even when the call was interrupted.
  const int returned = ::close(handle);
  return returned < 0 && errno != EINTR ? lastError() : std::error_code();
}

std::error_code PosixFileSystem::rename(const std::string& from, const std::string& to) {
  return resultOf(::rename(from.c_str(), to.c_str()));
}

std::error_code PosixFileSystem::renameToFree(const std::string& from, const std::string& to) {
  const std::error_code error = resultOf(::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE));
  // Some file systems have no such rename; there a link, which never replaces either, does the same in two steps.
  if (error != std::errc::invalid_argument && error != std::errc::function_not_supported) return error;
  if (const std::error_code linkError = resultOf(::link(from.c_str(), to.c_str()))) return linkError;
  return remove(from);
}

std::error_code PosixFileSystem::remove(const std::string& path) {
  return resultOf(::unlink(path.c_str()));
}

std::error_code PosixFileSystem::syncFolder(const std::string& path) {
  const FileDescriptor folder(
      withoutInterruption([&] { return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (folder.get() < 0) return lastError();
  return sync(folder.get());
}

std::error_code PosixFileSystem::lock(const std::string& path) {
  const auto held = mLocks.find(path);
  if (held != mLocks.end() && isFileAt(path, held->second)) return {};
  const int file = withoutInterruption(
      [&] { return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, fileMode); });
  if (file < 0) return lastError();
  if (withoutInterruption([&] { return ::flock(file, LOCK_EX | LOCK_NB); }) < 0) {
    const std::error_code error = lastError();
    ::close(file);
    return error;
  }
  if (held != mLocks.end()) ::close(held->second);
  mLocks[path] = file;
  return {};
}

}  // namespace vorn::engine
