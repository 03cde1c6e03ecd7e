// The sensitivity of a profile, as pure functions: what the controls of the mouse make of it, each time the settings to
// put into the profile, and that the axes stay together where they are locked.
#pragma once

#include <array>
#include <cstdint>

#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

// All that the controls of the mouse ever put into a profile with the functions below.
inline constexpr std::array sensitivityInForce = {keys::StageValue, keys::DPIX, keys::DPIY, keys::IndependentXYOn};

// So many stages up (down, where negative), as far as there are any: "StageValue" and the sensitivity of that stage.
// Empty for a profile without stages.
PropertyList stageStep(const PropertyList& profile, std::int32_t steps);

// "DPIX" and "DPIY" higher by so much (lower, where negative), as far as they go.
PropertyList dpiStep(const PropertyList& profile, std::int32_t step);

// The sensitivity of the stage with the lowest "dpix", the first of several. Empty for a profile without stages.
PropertyList slowestSensitivity(const PropertyList& profile);

// The profile, changed from another state of it, with both axes alike where they are locked ("IndependentXYOn",
// "independentxy" of a stage): the one that was changed counts, "DPIX" where both were. What was not changed stays,
// also where it was not alike, and so does what has no lock.
PropertyList withLockedAxes(const PropertyList& profile, const PropertyList& before);

}  // namespace vorn::engine
