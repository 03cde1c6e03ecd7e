// The few file operations that the engine's storage needs, behind an interface so that tests can make every one of
// them fail. Paths are absolute. Errors are those of the operating system (std::errc compares with them); an empty
// error code is success. One thread at a time; read() may be called beside the others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::engine {

class FileSystem {
 public:
  using Handle = int;  // an open file; never negative

  // Tells a file from every other that ever stands under its name, and from itself after somebody wrote to it. Renaming
  // keeps it.
  struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  // nanoseconds
    bool isRegular = true;      // no folder, link or device
    friend bool operator==(const Identity&, const Identity&) = default;
  };

  virtual ~FileSystem() = default;

  // Reads a whole regular file of at most maximum bytes. std::errc::no_such_file_or_directory where there is none,
  // file_too_large above the maximum, invalid_argument for anything that is no regular file.
  virtual std::error_code read(const std::string& path, std::size_t maximum, Bytes& contents) = 0;

  // The names of what is in a folder, in any order; at most 10,000 of them.
  virtual std::error_code list(const std::string& folder, std::vector<std::string>& names) = 0;
  static constexpr std::size_t maximumListed = 10'000;

  // What stands under the path itself, also where that is no regular file.
  virtual std::error_code identify(const std::string& path, Identity& identity) = 0;

  // Creates the folder and its missing parents, readable by the user alone.
  virtual std::error_code createFolder(const std::string& path) = 0;
  // Creates an empty file for writing, readable by the user alone, in place of one that exists.
  virtual std::error_code create(const std::string& path, Handle& handle) = 0;
  // Appends as many bytes as go in one piece; written may be less than asked for.
  virtual std::error_code write(Handle handle, BytesView bytes, std::size_t& written) = 0;
  // Returns when the file's contents are on the disk.
  virtual std::error_code sync(Handle handle) = 0;
  // The handle is gone afterwards, also after an error.
  virtual std::error_code close(Handle handle) = 0;

  // Renames within one folder, replacing what has the new name.
  virtual std::error_code rename(const std::string& from, const std::string& to) = 0;
  // The same, but fails with std::errc::file_exists where the new name is taken.
  virtual std::error_code renameToFree(const std::string& from, const std::string& to) = 0;
  virtual std::error_code remove(const std::string& path) = 0;
  // Returns when the names in the folder are on the disk.
  virtual std::error_code syncFolder(const std::string& path) = 0;

  // Holds the file (created where missing) for this process until the process ends, however it ends. A file that is
  // held already stays so; where somebody removed or replaced it, the one under the path is held from now on.
  // std::errc::resource_unavailable_try_again where another process holds it.
  virtual std::error_code lock(const std::string& path) = 0;
};

// Appends all of the bytes.
std::error_code writeAll(FileSystem& files, FileSystem::Handle handle, BytesView bytes);

// Writes a whole file, in place of one that exists, and returns when its contents are on the disk. What failed half way
// is removed again.
std::error_code writeSynced(FileSystem& files, const std::string& path, BytesView bytes);

// The same for a file of that name in the folder, which is the old or the new one whatever happens; it is written as
// freshName first. When this returns without an error, the new one is there also after a loss of power.
std::error_code replaceSynced(FileSystem& files, const std::string& folder, const std::string& name,
                              const std::string& freshName, BytesView bytes);

// Moves what cannot be used out of the way: to PATH.damaged-N, newPath, with the first free number.
std::error_code setAside(FileSystem& files, const std::string& path, std::string& newPath);

}  // namespace vorn::engine
