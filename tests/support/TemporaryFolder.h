// A folder of a test's own, removed with all its contents at the end.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include "model/PropertyList.h"

namespace vorn::engine::test {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "core-engine-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) std::abort();
    mPath = name;
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(mPath, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string path(const std::string& name = "") const { return name.empty() ? mPath : mPath + "/" + name; }

  std::string write(const std::string& name, BytesView bytes) const {
    std::ofstream file(path(name), std::ios::binary);
    for (const std::uint8_t byte : bytes) file.put(static_cast<char>(byte));
    return path(name);
  }

  Bytes read(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
  }

 private:
  std::string mPath;
};

}  // namespace vorn::engine::test
