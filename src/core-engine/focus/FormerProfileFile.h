// The profile that the mouse goes back to when no application asks for another one: "former-profile.plist" in the
// folder of the settings, so that it is known after the engine has been started again. Gone while there is none. One
// thread at a time.
//
//   profile  its position
//   name     its name, by which it is found where another one stands there
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

#include "core-engine/storage/FileSystem.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class FormerProfileFile {
 public:
  static constexpr std::size_t maximumSize = std::size_t{64} * 1024;

  // What is kept; none where there is nothing.
  using Record = PropertyList;
  static Record recordOf(const PropertyList& profiles, std::optional<std::int64_t> position);
  static std::optional<std::int64_t> positionOf(const Record& record, const PropertyList& profiles);

  // The files outlive this. Nothing is touched yet.
  FormerProfileFile(FileSystem& files, const std::string& folder);

  // None where there is no file, or none that can be used.
  Record load();
  // Returns when it is on the disk; nothing counts as changed after an error.
  std::error_code save(const Record& record);

 private:
  FileSystem& mFiles;
  std::string mFolder;
  std::string mPath;
};

}  // namespace vorn::engine
