// What differs between two profiles of the same mouse. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/Controls.h"
#include "model/PropertyList.h"

namespace vorn {

// In the order in which they are told.
enum class ProfilePart : std::uint8_t { Application, Controls, Sensitivity, Light, Other };

struct ProfileDifference {
  ProfilePart part;
  // Of an assignment: the control and its keymap, 0 to 7; otherwise nullptr and -1.
  const Control* control = nullptr;
  std::int64_t keymap = -1;
  std::string key;  // of the profile's record; of an assignment that of its group
  // The values under the key, or the assignments; none where there is nothing.
  PropertyList left;
  PropertyList right;
};

// The assignments are those of all eight keymaps, by their numbers, and within a keymap in the order of the controls;
// assignments that do the same are equal however they are written, and so are flags, numbers and colours. The name is
// no difference, and neither is a value of the device, which is the same for all profiles whatever their records hold.
std::vector<ProfileDifference> profileDifferences(const PropertyList& left, const PropertyList& right);

// The record of a control in one of the profile's keymaps; of the keymap in force as it is now.
const PropertyList& assignmentIn(const PropertyList& profile, std::int64_t keymap, const Control& control);

}  // namespace vorn
