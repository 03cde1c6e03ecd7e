#include "core-engine/storage/FileSystem.h"

#include <algorithm>

namespace vorn::engine {

namespace {

constexpr int maximumDamagedFiles = 1000;

}  // namespace

std::error_code writeAll(FileSystem& files, FileSystem::Handle handle, BytesView bytes) {
  while (!bytes.empty()) {
    std::size_t written = 0;
    if (const std::error_code error = files.write(handle, bytes, written)) return error;
    if (written == 0) return std::make_error_code(std::errc::io_error);
    bytes = bytes.subspan(std::min(written, bytes.size()));
  }
  return {};
}

std::error_code writeSynced(FileSystem& files, const std::string& path, BytesView bytes) {
  FileSystem::Handle handle = -1;
  if (const std::error_code error = files.create(path, handle)) return error;
  std::error_code error = writeAll(files, handle, bytes);
  if (!error) error = files.sync(handle);
  const std::error_code closeError = files.close(handle);
  if (!error) error = closeError;
  if (error) files.remove(path);
  return error;
}

std::error_code replaceSynced(FileSystem& files, const std::string& folder, const std::string& name,
                              const std::string& freshName, BytesView bytes) {
  const std::string fresh = folder + "/" + freshName;
  if (const std::error_code error = writeSynced(files, fresh, bytes)) return error;
  if (const std::error_code error = files.rename(fresh, folder + "/" + name)) {
    files.remove(fresh);
    return error;
  }
  return files.syncFolder(folder);
}

std::error_code setAside(FileSystem& files, const std::string& path, std::string& newPath) {
  std::error_code error;
  for (int number = 1; number <= maximumDamagedFiles; ++number) {
    newPath = path + ".damaged-" + std::to_string(number);
    error = files.renameToFree(path, newPath);
    if (error != std::errc::file_exists) break;
  }
  return error;
}

}  // namespace vorn::engine
