// Makes the profile active that the application in front asks for: carries out what ProfileFollower decides, as changes
// of the mouse's own, and keeps over a restart which profile it goes back to. One thread, the engine's.
#pragma once

#include <optional>
#include <string>

#include "core-engine/Log.h"
#include "core-engine/focus/FormerProfileFile.h"
#include "core-engine/focus/ProfileFollower.h"
#include "core-engine/play/ProfileChanger.h"
#include "core-engine/storage/SettingsTurns.h"

namespace vorn::engine {

class ProfileFollowing {
 public:
  struct Parts {
    FileSystem& files;
    Log& log;
    Scheduler& scheduler;
    SettingsStore& store;
    SettingsTurns& turns;
    ProfileChanger& profiles;
  };

  // All of them outlive this. Nothing is touched yet.
  ProfileFollowing(const Parts& parts, const std::string& folder, ApplicationMatch::Entries entries);

  // To be called when there may be settings for the first time, and no save is under way; does nothing once there are.
  void load();
  // The settings in force have changed; to be told before any other change of them.
  void settingsChanged(const PropertyList& before, const PropertyList& after);
  // Nothing while it is not known.
  void setApplication(const std::optional<Application>& application) { mFollower.setApplication(application); }

  // Whether a profile asks for an application.
  bool isUsed() const { return mFollower.isUsed(); }
  // The name of the profile that the application in front asks for; empty for none.
  std::string chosenName() const;

 private:
  void act();
  void carryOut(const ProfileFollower::Step& step);
  void switchTo(const ProfileFollower::Step& step);
  // What is remembered on the disk follows what the follower would go back to.
  void rememberSoon();
  void remember(const FormerProfileFile::Record& record, std::function<void()> done);
  FormerProfileFile::Record formerRecord(std::optional<std::int64_t> former) const;

  Parts mParts;
  FormerProfileFile mFile;
  FormerProfileFile::Record mRemembered;  // on the disk
  ProfileFollower mFollower;
  bool mIsLoaded = false;
  bool mIsActing = false;
  bool mIsSwitching = false;
  bool mIsRememberingSoon = false;
};

}  // namespace vorn::engine
