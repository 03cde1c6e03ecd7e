#include "core-engine/play/ProfileChanger.h"

#include <algorithm>
#include <iterator>

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

void ProfileChanger::switchTo(const PropertyList& profileID) {
  mStore.apply([&](const PropertyList& bundle) { return withActiveProfile(bundle, profileID).bundle; });
}

void ProfileChanger::change(const PropertyList& settings) {
  changeProfile(activeProfileID(), settings);
}

SettingsStore::Outcome ProfileChanger::changeProfile(std::int64_t profileID, const PropertyList& settings) {
  return mStore.apply(
      [&](const PropertyList& bundle) { return withUpdatedProfile(bundle, profileID, settings).bundle; });
}

void ProfileChanger::changeWhileHeld(std::string_view control, const PropertyList& settings) {
  const std::int64_t profileID = activeProfileID();
  const PropertyList before = valuesUnderKeysOf(settings, activeProfile());
  if (changeProfile(profileID, settings) != SettingsStore::Outcome::Done) return;
  mHeldChanges.push_back({std::string(control), profileID, before, valuesUnderKeysOf(settings, profileAt(profileID))});
}

void ProfileChanger::release(std::string_view control) {
  for (HeldChange& each : mHeldChanges) {
    if (each.control == control) each.isHeld = false;
  }
  takeBackReleased();
}

void ProfileChanger::takeBackReleased() {
  // The earliest first: a later one may take over what it has to put back.
  for (auto each = mHeldChanges.begin(); each != mHeldChanges.end();) {
    each = !each->isHeld && takeBack(each) ? mHeldChanges.erase(each) : std::next(each);
  }
}

bool ProfileChanger::takeBack(HeldChanges::iterator ended) {
  const auto later = std::find_if(std::next(ended), mHeldChanges.end(), [&](const HeldChange& each) {
    return each.profileID == ended->profileID && each.before == ended->after;
  });
  if (later != mHeldChanges.end()) {
    later->before = ended->before;
    return true;
  }
  if (valuesUnderKeysOf(ended->after, profileAt(ended->profileID)) != ended->after) return true;
  return changeProfile(ended->profileID, ended->before) != SettingsStore::Outcome::NotSaved;
}

void ProfileChanger::profileDeleted(std::int64_t profileID) {
  std::erase_if(mHeldChanges, [&](const HeldChange& each) { return each.profileID == profileID; });
  for (HeldChange& each : mHeldChanges) {
    if (each.profileID > profileID) --each.profileID;
  }
}

void ProfileChanger::profilesReplaced(const PropertyList& former) {
  std::erase_if(mHeldChanges, [&](const HeldChange& each) {
    const PropertyList& before = former.at(each.profileID);
    const PropertyList& now = profileAt(each.profileID);
    return before[keys::ProfileName] != now[keys::ProfileName] ||
           valuesUnderKeysOf(each.after, before) != valuesUnderKeysOf(each.after, now);
  });
}

}  // namespace vorn::engine
