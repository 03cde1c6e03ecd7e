#include "core-engine/device/linux/WheelSteps.h"

#include <algorithm>
#include <cstdlib>

namespace vorn::engine {

std::int32_t WheelSteps::take(const KernelEvent& turn) noexcept {
  if (isHighResolutionWheel(turn) != mIsHighResolution) return 0;
  constexpr std::int32_t farthest = maximumSteps * highResolutionStep;
  const std::int32_t unit = mIsHighResolution ? 1 : highResolutionStep;
  const std::int32_t part = std::clamp(turn.value, -farthest / unit, farthest / unit) * unit;
  if (directionOf(part) != directionOf(mRest)) mRest = 0;
  const std::int32_t whole = std::clamp(mRest + part, -farthest, farthest);
  mRest = whole % highResolutionStep;
  return std::abs(whole / highResolutionStep);
}

}  // namespace vorn::engine
