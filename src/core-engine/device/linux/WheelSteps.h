// The steps of one wheel whose turns a control takes. The kernel tells of a turn once or twice: in steps, and of some
// mice in 120ths of a step besides (Documentation/input/event-codes.rst); where both exist the plain ones only follow
// the others as well as they can, and do not count. Pure; one thread at a time.
#pragma once

#include <cstdint>

#include "core-engine/device/linux/KernelEvent.h"

namespace vorn::engine {

class WheelSteps {
 public:
  // A mouse that tells of more steps at once than a hand can turn is cut off here.
  static constexpr std::int32_t maximumSteps = 1000;

  // isHighResolution: the node tells of this wheel in 120ths, too.
  explicit WheelSteps(bool isHighResolution) noexcept : mIsHighResolution(isHighResolution) {}

  // A turn of this wheel, of either kind, in a direction that a control takes: the steps that it makes full, 0 to
  // maximumSteps. A part of a step waits for the rest, and is dropped when the wheel turns in the other direction.
  std::int32_t take(const KernelEvent& turn) noexcept;
  // A turn in a direction that no control takes, or an end of it all.
  void drop() noexcept { mRest = 0; }

 private:
  bool mIsHighResolution;
  std::int32_t mRest = 0;  // in 120ths, of the sign of the direction, less than a step
};

}  // namespace vorn::engine
