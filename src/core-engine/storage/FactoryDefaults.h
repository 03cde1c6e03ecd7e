// The factory settings: the "Default Settings" of a default-settings file.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "core-engine/storage/FileSystem.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class FactoryDefaults {
 public:
  static constexpr std::size_t maximumFileSize = std::size_t{16} * 1024 * 1024;

  // ownFile is the engine's own default-settings file; it need not exist. The file system outlives this object.
  FactoryDefaults(FileSystem& files, std::string ownFile);

  const std::string& ownFile() const { return mOwnFile; }

  // The complete bundle that a default-settings file describes. The path must be absolute, the file regular, of at
  // most maximumFileSize bytes, and its bundle must have a profile; otherwise nothing, with the reason in error.
  std::optional<PropertyList> read(const std::string& path, std::string& error) const;
  // The same of the engine's own file. It is read at every call: it is needed once in the life of most engines.
  std::optional<PropertyList> readOwn(std::string& error) const;

  // The first profile of the engine's own file; none where that cannot be used.
  PropertyList ownProfile() const;

 private:
  FileSystem& mFiles;
  std::string mOwnFile;
};

}  // namespace vorn::engine
