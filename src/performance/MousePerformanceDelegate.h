// What the Performance tab asks of its owner. Main thread.
#pragma once

#include "model/PropertyList.h"

namespace skarn {

class MousePerformanceDelegate {
 public:
  virtual ~MousePerformanceDelegate() = default;

  // Changes the given keys of the current profile; blocks until the answer, and the tab is reloaded.
  virtual void updateValueForSetting(const vorn::PropertyList& settings) = 0;
};

}  // namespace skarn
