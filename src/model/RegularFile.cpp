#include "model/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "model/FileDescriptor.h"

namespace vorn {

namespace {

constexpr mode_t newFileMode = 0666;  // less what the process takes away
constexpr mode_t permissions = 0777;
constexpr int maximumLinks = 40;
constexpr int maximumNames = 100;

std::error_code lastError() {
  return {errno, std::generic_category()};
}

std::error_code notRegular() {
  return std::make_error_code(std::errc::invalid_argument);
}

// The system would take the part before a null byte for the path.
bool isPath(const std::string& path) {
  return path.find('\0') == std::string::npos;
}

std::error_code readAll(int descriptor, std::size_t maximum, Bytes& contents) {
  std::size_t filled = 0;
  for (;;) {
    // A file that grows while it is read is met by one byte more than was expected.
    if (filled == contents.size()) contents.resize(filled + 1);
    const ssize_t count =
        withoutInterruption([&] { return ::read(descriptor, contents.data() + filled, contents.size() - filled); });
    if (count < 0) return lastError();
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
    if (filled > maximum) return std::make_error_code(std::errc::file_too_large);
  }
  contents.resize(filled);
  return {};
}

std::error_code readOpened(const std::string& path, std::size_t maximum, Bytes& contents) {
  if (!isPath(path)) return std::make_error_code(std::errc::no_such_file_or_directory);
  // Without O_NONBLOCK the opening of a named pipe would wait for its writer.
  const FileDescriptor file(
      withoutInterruption([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
  // What a socket gives.
  if (file.get() < 0) return errno == ENXIO ? notRegular() : lastError();
  struct stat status {};
  if (::fstat(file.get(), &status) < 0) return lastError();
  if (!S_ISREG(status.st_mode)) return notRegular();
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > maximum) return std::make_error_code(std::errc::file_too_large);
  contents.resize(size + 1);
  return readAll(file.get(), maximum, contents);
}

// Where a chain of symbolic links ends, whether or not there is something.
std::error_code followLinks(std::filesystem::path& path) {
  std::error_code error;
  for (int links = 0; std::filesystem::is_symlink(std::filesystem::symlink_status(path, error)); ++links) {
    if (links == maximumLinks) return std::make_error_code(std::errc::too_many_symbolic_link_levels);
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    if (error) return error;
    path = path.parent_path() / target;
  }
  return {};
}

// An unfinished file beside the one that it is to become; gone at the end unless it has become it.
class TemporaryFile {
 public:
  TemporaryFile(const std::filesystem::path& folder, mode_t mode) {
    std::random_device random;
    for (int tries = 0; mDescriptor < 0 && tries < maximumNames; ++tries) {
      char name[32];
      std::snprintf(name, sizeof name, ".skarn-%08x%08x", random(), random());
      mPath = folder / name;
      mDescriptor = withoutInterruption(
          [&] { return ::open(mPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode); });
      if (mDescriptor < 0 && errno != EEXIST) break;
    }
    mIsLeft = mDescriptor >= 0;
  }
  ~TemporaryFile() {
    if (mIsLeft) ::unlink(mPath.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  int descriptor() const { return mDescriptor; }
  bool become(const std::filesystem::path& path) {
    mIsLeft = ::rename(mPath.c_str(), path.c_str()) != 0;
    return !mIsLeft;
  }

 private:
  std::filesystem::path mPath;
  int mDescriptor = -1;
  bool mIsLeft = false;
};

bool writeAll(int descriptor, BytesView bytes) {
  while (!bytes.empty()) {
    const ssize_t count = withoutInterruption([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
    if (count < 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

// The new name has to outlive a crash too. A folder that may not be read is left to the system.
bool syncFolder(const std::filesystem::path& folder) {
  const char* path = folder.empty() ? "." : folder.c_str();
  const FileDescriptor descriptor(::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return descriptor.get() < 0 || withoutInterruption([&] { return ::fsync(descriptor.get()); }) == 0;
}

}  // namespace

std::error_code readRegularFile(const std::string& path, std::size_t maximum, Bytes& contents) {
  contents.clear();
  const std::error_code error = readOpened(path, maximum, contents);
  if (error) contents.clear();
  return error;
}

std::error_code writeRegularFile(const std::string& path, BytesView bytes) {
  if (!isPath(path)) return notRegular();
  std::filesystem::path target(path);
  if (const std::error_code error = followLinks(target)) return error;
  struct stat status {};
  const bool isThere = ::lstat(target.c_str(), &status) == 0;
  if (!isThere && errno != ENOENT) return lastError();
  if (isThere && !S_ISREG(status.st_mode)) return notRegular();
  // A rename would replace a file that nobody may write to.
  if (isThere && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return lastError();

  const mode_t mode = isThere ? status.st_mode & permissions : newFileMode;
  TemporaryFile file(target.parent_path(), mode);
  FileDescriptor descriptor(file.descriptor());
  const bool isDone = descriptor.get() >= 0 && (!isThere || ::fchmod(descriptor.get(), mode) == 0) &&
                      writeAll(descriptor.get(), bytes) &&
                      withoutInterruption([&] { return ::fsync(descriptor.get()); }) == 0 && descriptor.close() &&
                      file.become(target) && syncFolder(target.parent_path());
  return isDone ? std::error_code() : lastError();
}

bool isMissingFile(std::error_code error) {
  return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

std::string reasonOf(std::error_code error) {
  if (error == std::errc::invalid_argument) return "not a regular file";
  return error.message();
}

}  // namespace vorn
