// Hears when the machine goes to sleep and when it is awake again, from logind (org.freedesktop.login1 on the system
// bus). Where there is none, nothing is heard. One thread, the engine's.
#pragma once

#include <functional>

#include "ports/BusService.h"

namespace vorn::engine {

class SleepWatch {
 public:
  // Called from the run loop, with true before the sleep, which waits for nobody here, and with false after it. May end
  // the watch.
  using Handler = std::function<void(bool isGoingToSleep)>;

  // Connects to the system bus if nobody has.
  explicit SleepWatch(Handler handler);

 private:
  BusService mService;
};

}  // namespace vorn::engine
