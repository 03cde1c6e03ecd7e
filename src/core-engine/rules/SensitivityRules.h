// What the controls of the mouse make of the sensitivity of a profile, as pure functions. Each gives the settings to
// put into the profile: keys of a profile record.
#pragma once

#include <cstdint>

#include "model/PropertyList.h"

namespace vorn::engine {

// So many stages up (down, where negative), as far as there are any: "StageValue" and the sensitivity of that stage.
// Empty for a profile without stages.
PropertyList stageStep(const PropertyList& profile, std::int32_t steps);

// "DPIX" and "DPIY" higher by so much (lower, where negative), as far as they go.
PropertyList dpiStep(const PropertyList& profile, std::int32_t step);

// The sensitivity of the stage with the lowest "dpix", the first of several. Empty for a profile without stages.
PropertyList slowestSensitivity(const PropertyList& profile);

}  // namespace vorn::engine
