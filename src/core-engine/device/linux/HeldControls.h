// The controls that are held, by whichever nodes of the mouse: two of them may send the same one, and it is let go of
// with the last. Pure; one thread at a time.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "core-engine/device/Device.h"

namespace vorn::engine {

class HeldControls {
 public:
  // Each node tells of a press and a release in turn. Whether this is news: the first press, or the last release.
  bool take(const ControlChanged& change);

 private:
  std::map<std::string, int, std::less<>> mCounts;
};

}  // namespace vorn::engine
