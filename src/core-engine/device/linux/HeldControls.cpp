#include "core-engine/device/linux/HeldControls.h"

namespace vorn::engine {

bool HeldControls::take(const ControlChanged& change) {
  if (change.isPressed) return ++mCounts[change.control] == 1;
  const auto held = mCounts.find(change.control);
  // What nobody has pressed nobody waits for.
  if (held == mCounts.end()) return false;
  if (--held->second > 0) return false;
  mCounts.erase(held);
  return true;
}

}  // namespace vorn::engine
