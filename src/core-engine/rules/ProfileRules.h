// What the requests about profiles make of a settings bundle, as pure functions. A complete bundle (BundleRules.h)
// stays complete.
//
// In every profile that is changed here the current "Keys" and "Buttons" are those of the keymap in force, the element
// "KeymapID" of "Keymap".
#pragma once

#include <optional>
#include <vector>

#include "core-engine/rules/ProfileValues.h"
#include "model/PropertyList.h"
#include "protocol/ReturnStatus.h"

namespace vorn::engine {

struct ProfileChange {
  std::optional<PropertyList> bundle;  // nothing: refused as a whole
  ReturnStatus status = ReturnStatus::Done;
  std::vector<Complaint> complaints = {};  // why something was refused
};

// profileID, everywhere: a position in "Profiles", an integer. bundle: complete.

// Appends a profile made of the record. What it lacks comes from the factory profile.
ProfileChange withAddedProfile(const PropertyList& bundle, const PropertyList& record,
                               const PropertyList& factoryProfile);

// Puts the settings (some or all keys of a profile record) into the profile.
//   - "Keymap" replaces the keymaps that it has elements for.
//   - "KeymapID" makes the groups of that keymap the current ones.
//   - "Keys" and "Buttons", and what they lack as it was, become the current groups and those of the keymap in force
//     then.
//   - Where X and Y are locked, one axis takes the other along (SensitivityRules.h).
//   - Device-wide keys are repeated in "DeviceSettings". A record that gives the profile another name was sent for the
//     name: there, device-wide values that the profile has already do not count.
ProfileChange withUpdatedProfile(const PropertyList& bundle, const PropertyList& profileID,
                                 const PropertyList& settings);

// Whether an update with these settings, whatever name it gives, makes a profile what it is from the factory.
bool areFactorySettings(const PropertyList& settings, const PropertyList& factoryProfile);

// Puts 1 to 5 records in the place of all profiles; what they lack comes from the factory profile. One unusable value
// refuses them all. The active position stays, or becomes the last one where there are fewer now.
ProfileChange withReplacedProfiles(const PropertyList& bundle, const PropertyList& records,
                                   const PropertyList& factoryProfile);

// Puts the profiles into another order, a permutation (model/ProfileOrder.h). Assignments that switch to a profile and
// the active position follow. names: those that the client saw, in the order of now; with others than there are now it
// is refused as outdated, so that no other profile moves than was meant.
ProfileChange withReorderedProfiles(const PropertyList& bundle, const PropertyList& order, const PropertyList& names);

// The same profile stays active; in the place of the active one itself it is the one before, or the first.
ProfileChange withoutProfile(const PropertyList& bundle, const PropertyList& profileID);

ProfileChange withActiveProfile(const PropertyList& bundle, const PropertyList& profileID);

}  // namespace vorn::engine
