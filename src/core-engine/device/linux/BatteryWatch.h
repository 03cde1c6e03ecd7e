// Hears when UPower (org.freedesktop.UPower on the system bus) may know of another battery: that of a mouse that is
// switched on long after its receiver was plugged in, say. Nobody is asked and nothing started. One thread, the
// engine's.
#pragma once

#include <functional>

#include "ports/BusService.h"

namespace vorn::engine {

class BatteryWatch {
 public:
  // Called from the run loop, also for batteries of other devices. May end the watch.
  using Handler = std::function<void()>;

  // Connects to the system bus if nobody has.
  explicit BatteryWatch(Handler appeared);

 private:
  Handler mAppeared;
  bool mIsKnown = false;  // whether the service is there
  BusService mService;
};

}  // namespace vorn::engine
