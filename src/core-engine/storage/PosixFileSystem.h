// The file operations on the real file system.
#pragma once

#include <map>
#include <string>

#include "core-engine/storage/FileSystem.h"

namespace vorn::engine {

class PosixFileSystem : public FileSystem {
 public:
  PosixFileSystem() = default;
  ~PosixFileSystem() override;  // gives up its locks
  PosixFileSystem(const PosixFileSystem&) = delete;
  PosixFileSystem& operator=(const PosixFileSystem&) = delete;

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
  std::map<std::string, Handle> mLocks;  // by their paths
};

}  // namespace vorn::engine
