// What makes a settings bundle usable, as pure functions. A bundle is complete when
//   - "Profiles" holds 1 to 5 profile records, "Macros" is an array of dictionaries with a name each, and
//     "DeviceSettings" a dictionary whose "ActiveProfile" is a position in "Profiles";
//   - each profile has a name, a "KeymapID" from 0 to 7, its "Keys" and "Buttons", and eight keymaps with "Keys" and
//     "Buttons" of their own;
//   - each "Keys" and "Buttons" has a record for every control of its group, with a number under "command" and a
//     number or a string under "param1" and "param2".
// Further keys are nobody's fault and are kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn::engine {

// Whether a record has all that an assignment needs: a number under "command" and a number or a string under "param1"
// and "param2".
bool isAssignment(const PropertyList& record);

// The profile with everything that is missing or unusable taken from the factory profile and, where that has nothing
// usable either, from the factory assignments. A complete profile comes back as it is.
PropertyList repairedProfile(const PropertyList& profile, const PropertyList& factoryProfile);

// The bundle made complete. The positions of profiles and macros stay, since assignments refer to them: an unusable
// one in the middle is replaced, what lies beyond the fifth profile is dropped. Nothing, with the reason in error,
// when the bundle is no dictionary or has no profile at all.
std::optional<PropertyList> repairedBundle(const PropertyList& bundle, const PropertyList& factoryProfile,
                                           std::string* error = nullptr);

bool isCompleteBundle(const PropertyList& bundle);

// Whether any message that carries a whole bundle, an answer or a notification, can carry this one. Encodes it.
bool isSendableBundle(const PropertyList& bundle);
inline constexpr const char* unsendableReason = "the settings would be too large to be sent";

}  // namespace vorn::engine
