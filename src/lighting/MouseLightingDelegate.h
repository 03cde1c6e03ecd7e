// What the Lighting tab asks of its owner. Main thread.
#pragma once

#include "model/PropertyList.h"

namespace skarn {

class MouseLightingDelegate {
 public:
  virtual ~MouseLightingDelegate() = default;

  // Changes the given keys of the current profile; blocks until the answer, and the tab is reloaded.
  virtual void updateValueForSetting(const vorn::PropertyList& settings) = 0;
  virtual void switchProfileWithID(int profileID) = 0;
};

}  // namespace skarn
