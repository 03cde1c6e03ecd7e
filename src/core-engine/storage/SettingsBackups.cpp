#include "core-engine/storage/SettingsBackups.h"

#include <algorithm>
#include <utility>

#include "core-engine/rules/BundleRules.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine {

namespace {

constexpr std::string_view prefix = "settings-";
constexpr std::string_view suffix = ".plist";
constexpr std::string_view datePattern = "0000-00-00";
constexpr const char* newName = "/settings.new.plist";

bool isDate(std::string_view text) {
  const auto fits = [](char character, char pattern) {
    return pattern == '0' ? character >= '0' && character <= '9' : character == pattern;
  };
  return std::equal(text.begin(), text.end(), datePattern.begin(), datePattern.end(), fits);
}

// The date of a backup's file; empty for another one.
std::string_view dateIn(std::string_view name) {
  if (!name.starts_with(prefix) || !name.ends_with(suffix)) return {};
  if (name.size() != prefix.size() + datePattern.size() + suffix.size()) return {};
  const std::string_view date = name.substr(prefix.size(), datePattern.size());
  return isDate(date) ? date : std::string_view();
}

}  // namespace

SettingsBackups::SettingsBackups(FileSystem& files, Log& log, const std::string& folder, Today today)
    : mFiles(files), mLog(log), mFolder(folder + "/backups"), mToday(std::move(today)) {}

std::string SettingsBackups::pathOf(std::string_view date) const {
  return std::string(mFolder).append("/").append(prefix).append(date).append(suffix);
}

void SettingsBackups::willSave(const PropertyList& before, const PropertyList& /*after*/,
                               const ChangeOrigin& /*origin*/) {
  const std::string today = mToday();
  // What could not be written is what was before the first change.
  if (today == mKeptDay || today == mDay) return;
  mBundle = before;
  mDay = today;
}

void SettingsBackups::keep(BytesView /*bytes*/) {
  if (mDay.empty()) return;
  FileSystem::Identity identity;
  const bool isThere = !mFiles.identify(pathOf(mDay), identity) && identity.isRegular;
  const std::error_code error = isThere ? std::error_code() : write(mDay, mBundle);
  if (error) {
    if (!std::exchange(mIsTold, true)) mLog.line("cannot keep a backup in " + mFolder + ": " + error.message());
    return;
  }
  mIsTold = false;
  mKeptDay = std::exchange(mDay, {});
  mBundle = {};
}

std::error_code SettingsBackups::write(const std::string& date, const PropertyList& bundle) {
  if (const std::error_code error = mFiles.createFolder(mFolder)) return error;
  const auto bytes = encodeBinaryPropertyList(bundle);
  if (!bytes) return std::make_error_code(std::errc::file_too_large);
  const std::string fresh = mFolder + newName;
  if (const std::error_code error = writeSynced(mFiles, fresh, *bytes)) return error;
  if (const std::error_code error = mFiles.rename(fresh, pathOf(date))) {
    mFiles.remove(fresh);
    return error;
  }
  removeOldest(date);
  return mFiles.syncFolder(mFolder);
}

void SettingsBackups::removeOldest(const std::string& written) {
  std::vector<Backup> others = all();
  std::erase_if(others, [&](const Backup& each) { return each.date == written; });
  std::stable_partition(others.begin(), others.end(), [&](const Backup& each) { return each.date > written; });
  for (std::size_t each = 0; each + maximumCount <= others.size(); ++each) mFiles.remove(pathOf(others[each].date));
}

std::vector<SettingsBackups::Backup> SettingsBackups::all() const {
  constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
  std::vector<std::string> names;
  mFiles.list(mFolder, names);
  std::sort(names.begin(), names.end());
  std::vector<Backup> result;
  for (const std::string& each : names) {
    const std::string date(dateIn(each));
    FileSystem::Identity identity;
    if (date.empty() || mFiles.identify(pathOf(date), identity) || !identity.isRegular) continue;
    result.push_back({date, identity.modified / nanosecondsPerSecond, identity.size});
  }
  return result;
}

std::vector<SettingsBackups::Backup> SettingsBackups::list() const {
  std::vector<Backup> result = all();
  std::reverse(result.begin(), result.end());
  return result;
}

std::optional<PropertyList> SettingsBackups::read(const std::string& date, std::string& error) const {
  Bytes bytes;
  if (!isDate(date)) {
    error = "\"" + date + "\" is no date like 2026-11-22";
    return std::nullopt;
  }
  if (const std::error_code failure = mFiles.read(pathOf(date), maximumSize, bytes)) {
    error = failure == std::errc::no_such_file_or_directory ? "there is no backup of " + date
                                                            : "cannot read " + pathOf(date) + ": " + failure.message();
    return std::nullopt;
  }
  std::string reason = "it does not hold whole settings";
  auto bundle = decodeBinaryPropertyList(bytes, &reason);
  if (bundle && isCompleteBundle(*bundle)) return bundle;
  error = "the backup of " + date + " is damaged (" + reason + "); the settings stay as they are";
  return std::nullopt;
}

}  // namespace vorn::engine
