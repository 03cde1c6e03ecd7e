#include "core-engine/focus/ProfileFollowing.h"

#include <memory>
#include <system_error>
#include <utility>

#include "model/SettingsKeys.h"

namespace vorn::engine {

ProfileFollowing::ProfileFollowing(const Parts& parts, const std::string& folder, ApplicationMatch::Entries entries)
    : mParts(parts), mFile(parts.files, folder), mFollower(parts.scheduler, std::move(entries), [this] { act(); }) {}

void ProfileFollowing::load() {
  if (mIsLoaded || mParts.store.isEmpty()) return;
  mIsLoaded = true;
  mRemembered = mFile.load();
  mFollower.begin(mParts.store.bundle(),
                  FormerProfileFile::positionOf(mRemembered, mParts.store.bundle()[keys::Profiles]));
  rememberSoon();
}

void ProfileFollowing::settingsChanged(const PropertyList& before, const PropertyList& after) {
  load();
  mFollower.settingsChanged(before, after, mIsSwitching);
  rememberSoon();
}

std::string ProfileFollowing::chosenName() const {
  const auto choice = mFollower.choice();
  return choice ? mParts.store.bundle()[keys::Profiles].at(*choice)[keys::ProfileName].toString() : std::string();
}

void ProfileFollowing::act() {
  if (std::exchange(mIsActing, true)) return;
  mParts.turns.whenSaved([this] {
    mIsActing = false;
    if (mParts.store.isEmpty()) return;
    if (const auto step = mFollower.next()) carryOut(*step);
    rememberSoon();
  });
}

// First what to go back to, so that no end of the engine leaves the mouse in a profile that nobody has chosen.
void ProfileFollowing::carryOut(const ProfileFollower::Step& step) {
  const FormerProfileFile::Record record = formerRecord(step.former);
  if (record.isNone() || record == mRemembered) return switchTo(step);
  remember(record, [this, step] { switchTo(step); });
}

void ProfileFollowing::switchTo(const ProfileFollower::Step& step) {
  mIsSwitching = true;
  mParts.profiles.switchTo(step.profile, [this, step](SettingsStore::Outcome outcome) {
    mIsSwitching = false;
    if (outcome == SettingsStore::Outcome::Done) mFollower.stepped(step);
    rememberSoon();
  });
}

void ProfileFollowing::rememberSoon() {
  if (mIsRememberingSoon || formerRecord(mFollower.former()) == mRemembered) return;
  mIsRememberingSoon = true;
  mParts.scheduler.after(Scheduler::Duration::zero(), [this] {
    mParts.turns.whenSaved([this] {
      mIsRememberingSoon = false;
      const FormerProfileFile::Record record = formerRecord(mFollower.former());
      if (record != mRemembered) remember(record, [] {});
    });
  });
}

void ProfileFollowing::remember(const FormerProfileFile::Record& record, std::function<void()> done) {
  const auto error = std::make_shared<std::error_code>();
  mParts.store.useDisk([this, record, error] { *error = mFile.save(record); },
                       [this, record, error, done = std::move(done)] {
                         const std::string fault = "cannot remember the profile to go back to";
                         if (*error) mParts.log.fault("the disk", fault, fault + ": " + error->message());
                         // Where it failed, the next change tries again.
                         mRemembered = record;
                         done();
                       });
}

FormerProfileFile::Record ProfileFollowing::formerRecord(std::optional<std::int64_t> former) const {
  return FormerProfileFile::recordOf(mParts.store.bundle()[keys::Profiles], former);
}

}  // namespace vorn::engine
