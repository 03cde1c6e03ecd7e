#include "core-engine/focus/FormerProfileFile.h"

#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

namespace words {
constexpr std::string_view Profile = "profile";
constexpr std::string_view Name = "name";
}  // namespace words

}  // namespace

PropertyList FormerProfileFile::recordOf(const PropertyList& profiles, std::optional<std::int64_t> position) {
  if (!position) return {};
  return PropertyList::dictionary(
      {{words::Profile, *position}, {words::Name, profiles.at(*position)[keys::ProfileName]}});
}

std::optional<std::int64_t> FormerProfileFile::positionOf(const Record& record, const PropertyList& profiles) {
  const PropertyList& name = record[words::Name];
  if (name.isNone()) return std::nullopt;
  const std::int64_t position = record[words::Profile].toInt64();
  if (profiles.at(position)[keys::ProfileName] == name) return position;
  const auto count = static_cast<std::int64_t>(profiles.size());
  for (std::int64_t each = 0; each < count; ++each) {
    if (profiles.at(each)[keys::ProfileName] == name) return each;
  }
  return std::nullopt;
}

FormerProfileFile::FormerProfileFile(FileSystem& files, const std::string& folder)
    : mFiles(files), mFolder(folder), mPath(folder + "/former-profile.plist") {}

PropertyList FormerProfileFile::load() {
  Bytes bytes;
  if (mFiles.read(mPath, maximumSize, bytes)) return {};
  return decodePropertyList(bytes).value_or(PropertyList()).dictionaryOrEmpty();
}

std::error_code FormerProfileFile::save(const Record& record) {
  if (record.isNone()) {
    const std::error_code error = mFiles.remove(mPath);
    return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
  }
  const auto bytes = encodeBinaryPropertyList(record);
  if (!bytes || bytes->size() > maximumSize) return std::make_error_code(std::errc::file_too_large);
  return replaceSynced(mFiles, mFolder, "former-profile.plist", "former-profile.new.plist", *bytes);
}

}  // namespace vorn::engine
