#include "core-engine/storage/FileSystem.h"

#include <algorithm>

namespace vorn::engine {

std::error_code writeAll(FileSystem& files, FileSystem::Handle handle, BytesView bytes) {
  while (!bytes.empty()) {
    std::size_t written = 0;
    if (const std::error_code error = files.write(handle, bytes, written)) return error;
    if (written == 0) return std::make_error_code(std::errc::io_error);
    bytes = bytes.subspan(std::min(written, bytes.size()));
  }
  return {};
}

}  // namespace vorn::engine
