#include "core-engine/play/ProfileChanger.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core-engine/rules/ProfileRules.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

// The values that the profile has under the keys of the settings.
PropertyList valuesUnderKeysOf(const PropertyList& settings, const PropertyList& profile) {
  PropertyList result = PropertyList::dictionary();
  for (const std::string_view key : settings.keys()) {
    if (profile.contains(key)) result = result.with(key, profile[key]);
  }
  return result;
}

}  // namespace

std::int64_t ProfileChanger::activeProfileID() const {
  return mStore.bundle()[keys::DeviceSettings][keys::ActiveProfile].toInt64();
}

const PropertyList& ProfileChanger::profileAt(std::int64_t profileID) const {
  return mStore.bundle()[keys::Profiles].at(profileID);
}

const PropertyList& ProfileChanger::activeProfile() const {
  return profileAt(activeProfileID());
}

void ProfileChanger::switchTo(const PropertyList& profileID, SettingsStore::Done done) {
  if (mStore.isEmpty()) return done(SettingsStore::Outcome::Refused);
  mStore.put(withActiveProfile(mStore.bundle(), profileID).bundle, std::move(done));
}

void ProfileChanger::change(const PropertyList& settings) {
  changeProfile(activeProfileID(), settings, [](SettingsStore::Outcome) {});
}

void ProfileChanger::changeProfile(std::int64_t profileID, const PropertyList& settings, SettingsStore::Done done) {
  if (mStore.isEmpty()) return done(SettingsStore::Outcome::Refused);
  mStore.put(withUpdatedProfile(mStore.bundle(), profileID, settings).bundle, std::move(done));
}

void ProfileChanger::changeWhileHeld(std::string_view control, const PropertyList& settings) {
  const std::int64_t profileID = activeProfileID();
  const auto done = [this, control = std::string(control), profileID, settings,
                     before = valuesUnderKeysOf(settings, activeProfile())](SettingsStore::Outcome outcome) {
    if (outcome != SettingsStore::Outcome::Done) return;
    mHeldChanges.push_back({control, profileID, before, valuesUnderKeysOf(settings, profileAt(profileID))});
  };
  changeProfile(profileID, settings, done);
}

void ProfileChanger::release(std::string_view control) {
  for (HeldChange& each : mHeldChanges) {
    if (each.control == control) each.isHeld = false;
  }
  takeBackReleased();
}

void ProfileChanger::takeBackReleased() {
  if (!mStore.isSaving()) takeBackFrom(0);
}

// The earliest first: a later one may take over what it has to put back.
void ProfileChanger::takeBackFrom(std::size_t position) {
  while (position < mHeldChanges.size() && mHeldChanges[position].isHeld) ++position;
  if (position == mHeldChanges.size()) return;
  takeBack(position, [this, position](bool isDone) {
    if (isDone) mHeldChanges.erase(mHeldChanges.begin() + static_cast<std::ptrdiff_t>(position));
    takeBackFrom(isDone ? position : position + 1);
  });
}

void ProfileChanger::takeBack(std::size_t position, const std::function<void(bool isDone)>& done) {
  const auto ended = mHeldChanges.begin() + static_cast<std::ptrdiff_t>(position);
  const auto later = std::find_if(std::next(ended), mHeldChanges.end(), [&](const HeldChange& each) {
    return each.profileID == ended->profileID && each.before == ended->after;
  });
  if (later != mHeldChanges.end()) {
    later->before = ended->before;
    return done(true);
  }
  if (valuesUnderKeysOf(ended->after, profileAt(ended->profileID)) != ended->after) return done(true);
  changeProfile(ended->profileID, ended->before,
                [done](SettingsStore::Outcome outcome) { done(outcome != SettingsStore::Outcome::NotSaved); });
}

void ProfileChanger::profileDeleted(std::int64_t profileID) {
  std::erase_if(mHeldChanges, [&](const HeldChange& each) { return each.profileID == profileID; });
  for (HeldChange& each : mHeldChanges) {
    if (each.profileID > profileID) --each.profileID;
  }
}

void ProfileChanger::profilesReordered(const ProfileOrder& order) {
  for (HeldChange& each : mHeldChanges) each.profileID = placeInOrder(order, each.profileID);
}

void ProfileChanger::profilesReplaced(const PropertyList& former) {
  std::erase_if(mHeldChanges, [&](const HeldChange& each) {
    const PropertyList& before = former.at(each.profileID);
    const PropertyList& now = profileAt(each.profileID);
    return before[keys::ProfileName] != now[keys::ProfileName] ||
           valuesUnderKeysOf(each.after, before) != valuesUnderKeysOf(each.after, now);
  });
}

void ProfileChanger::profilesMoved(const PropertyList& former, const std::vector<std::int64_t>& places) {
  std::erase_if(mHeldChanges, [&](HeldChange& each) {
    const PropertyList before = valuesUnderKeysOf(each.after, former.at(each.profileID));
    const auto position = static_cast<std::size_t>(each.profileID);
    each.profileID = position < places.size() ? places[position] : -1;
    return each.profileID < 0 || before != valuesUnderKeysOf(each.after, profileAt(each.profileID));
  });
}

}  // namespace vorn::engine
