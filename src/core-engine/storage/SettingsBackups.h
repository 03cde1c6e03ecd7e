// The settings as they were before the first change of each day, as files "backups/settings-2026-11-22.plist" beside
// the settings, by the date where the user is. The last thirty are kept; of more, those of days to come go first, and
// never the one just written. What cannot be written keeps no change from being saved, and is tried again with the next
// one.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/Log.h"
#include "core-engine/storage/ChangeKeeper.h"
#include "core-engine/storage/FileSystem.h"

namespace vorn::engine {

class SettingsBackups : public ChangeKeeper {
 public:
  static constexpr std::size_t maximumCount = 30;
  // The date as "2026-11-22".
  using Today = std::function<std::string()>;

  struct Backup {
    std::string date;
    std::int64_t time = 0;  // when it was written, seconds since 1970-01-01 00:00:00 UTC
    std::uint64_t size = 0;
    friend bool operator==(const Backup&, const Backup&) = default;
  };

  // The file system and the log outlive the backups. Nothing is touched yet.
  SettingsBackups(FileSystem& files, Log& log, const std::string& folder, Today today);

  void willSave(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) override;
  void keep(BytesView bytes) override;
  void hasEnded(bool) override {}

  // On the thread of the disk:
  // Those that there are, the newest first.
  std::vector<Backup> list() const;
  // The bundle of a backup, complete; nothing, with the reason in error, where it is damaged or missing.
  std::optional<PropertyList> read(const std::string& date, std::string& error) const;

 private:
  std::string pathOf(std::string_view date) const;
  std::vector<Backup> all() const;  // the oldest first
  std::error_code write(const std::string& date, const PropertyList& bundle);
  void removeOldest(const std::string& written);

  FileSystem& mFiles;
  Log& mLog;
  std::string mFolder;
  Today mToday;
  std::string mKeptDay;  // the last one whose backup is there
  // Of the change under way, the disk thread has them until it has ended: what is to be kept for which day.
  PropertyList mBundle;
  std::string mDay;
  bool mIsTold = false;  // in the log that it cannot be written
};

}  // namespace vorn::engine
