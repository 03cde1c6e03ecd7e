#include "core-engine/ProfileChanger.h"

#include <algorithm>

#include "core-engine/ProfileRules.h"
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

void ProfileChanger::changeProfile(std::int64_t profileID, const PropertyList& settings) {
  mStore.apply([&](const PropertyList& bundle) { return withUpdatedProfile(bundle, profileID, settings).bundle; });
}

void ProfileChanger::changeWhileHeld(std::string_view control, const PropertyList& settings) {
  const std::int64_t profileID = activeProfileID();
  const PropertyList before = valuesUnderKeysOf(settings, activeProfile());
  changeProfile(profileID, settings);
  mHeldChanges.push_back({std::string(control), profileID, before, valuesUnderKeysOf(settings, profileAt(profileID))});
}

void ProfileChanger::release(std::string_view control) {
  const auto found = std::find_if(mHeldChanges.begin(), mHeldChanges.end(),
                                  [&](const HeldChange& each) { return each.control == control; });
  if (found == mHeldChanges.end()) return;
  const HeldChange ended = *found;
  const auto next = mHeldChanges.erase(found);
  const auto later = std::find_if(next, mHeldChanges.end(), [&](const HeldChange& each) {
    return each.profileID == ended.profileID && each.before == ended.after;
  });
  if (later != mHeldChanges.end()) {
    later->before = ended.before;
  } else if (valuesUnderKeysOf(ended.after, profileAt(ended.profileID)) == ended.after) {
    changeProfile(ended.profileID, ended.before);
  }
}

}  // namespace vorn::engine
