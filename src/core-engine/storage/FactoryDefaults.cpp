#include "core-engine/storage/FactoryDefaults.h"

#include <system_error>
#include <utility>

#include "core-engine/rules/BundleRules.h"
#include "model/PropertyListCodec.h"
#include "model/RegularFile.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

FactoryDefaults::FactoryDefaults(FileSystem& files, std::string ownFile)
    : mFiles(files), mOwnFile(std::move(ownFile)) {}

std::optional<PropertyList> FactoryDefaults::read(const std::string& path, std::string& error) const {
  if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos) {
    error = "not an absolute path";
    return std::nullopt;
  }
  Bytes bytes;
  if (const std::error_code failure = mFiles.read(path, maximumFileSize, bytes)) {
    error = reasonOf(failure);
    return std::nullopt;
  }
  const std::optional<PropertyList> file = decodePropertyList(bytes, &error);
  if (!file) return std::nullopt;
  const PropertyList& bundle = (*file)[keys::DefaultSettings];
  if (!bundle.isDictionary()) {
    error = "no \"" + std::string(keys::DefaultSettings) + "\" in it";
    return std::nullopt;
  }
  auto usable = repairedBundle(bundle, bundle[keys::Profiles].at(0), &error);
  if (!usable || isSendableBundle(*usable)) return usable;
  error = unsendableReason;
  return std::nullopt;
}

std::optional<PropertyList> FactoryDefaults::readOwn(std::string& error) const {
  return read(mOwnFile, error);
}

PropertyList FactoryDefaults::ownProfile() const {
  std::string error;
  return readOwn(error).value_or(PropertyList())[keys::Profiles].at(0);
}

}  // namespace vorn::engine
