// Which profile the application in front asks for, and to which one it goes back afterwards. Decides only; the settings
// and what becomes of them are the owner's. One thread, the engine's.
//
// A profile with "AutoSwitchOn" that is tied to the application in front becomes the active one: the first of them, or
// the active one where it is among them. Where none is, the profile that was active before becomes it again, wherever
// it stands by then, if it is still there. Where somebody else makes another profile the active one, that stays as long
// as the same application is in front.
//
// What is in front counts when it has been for a moment (quietTime), so that nothing happens for one that passes.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/focus/Application.h"
#include "core-engine/focus/ApplicationMatch.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class ProfileFollower {
 public:
  static constexpr Scheduler::Duration quietTime = std::chrono::milliseconds(25);

  // What is to be done.
  struct Step {
    std::int64_t profile = 0;              // the position of the one to be made the active one
    std::optional<std::int64_t> former{};  // then, the one to go back to
    friend bool operator==(const Step&, const Step&) = default;
  };

  // due is called, from the scheduler, when next() may have something. The scheduler outlives the follower.
  ProfileFollower(Scheduler& scheduler, ApplicationMatch::Entries entries, std::function<void()> due);
  ~ProfileFollower();
  ProfileFollower(const ProfileFollower&) = delete;
  ProfileFollower& operator=(const ProfileFollower&) = delete;

  // The settings, complete or none, as they are when nothing has been followed yet; former: the position of the profile
  // that an earlier follower would have gone back to.
  void begin(const PropertyList& bundle, std::optional<std::int64_t> former);
  // They have changed. isOwn: by the step that next() told last, whose former counts from now on.
  void settingsChanged(const PropertyList& before, const PropertyList& after, bool isOwn);
  // Nothing while it is not known. What it is called makes no other application of it.
  void setApplication(const std::optional<Application>& application);

  // Whether a profile asks for an application.
  bool isUsed() const;
  // The position of the profile that the application in front asks for.
  std::optional<std::int64_t> choice() const;
  // The position of the profile to go back to.
  const std::optional<std::int64_t>& former() const { return mFormer; }
  // What is to be done now. Nothing while what is in front has not been there for long enough.
  std::optional<Step> next();
  // The step came to no change of the settings.
  void stepped(const Step& step) { keepFormer(step.former); }

 private:
  struct Rule {
    PropertyList appInfo;
    ApplicationMatch match;
    bool isOn = false;
  };

  void readRules();
  std::int64_t active() const;
  void keepFormer(std::optional<std::int64_t> former);
  void forget();
  void wait();
  void waited();

  Scheduler& mScheduler;
  ApplicationMatch::Entries mEntries;
  std::function<void()> mDue;
  PropertyList mBundle;
  std::vector<Rule> mRules;  // one for each profile
  std::optional<Application> mFront;
  std::optional<Application> mChosenIn;  // in front when somebody else chose a profile
  std::optional<std::int64_t> mFormer;
  std::optional<Step> mStep;  // told last
  Scheduler::Ticket mTicket = 0;
  Scheduler::Duration mQuietFrom{};
};

}  // namespace vorn::engine
