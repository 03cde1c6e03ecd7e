#include "core-engine/device/linux/SleepWatch.h"

#include <utility>

namespace vorn::engine {

SleepWatch::SleepWatch(Handler handler) : mService(Bus::System, "org.freedesktop.login1", {}) {
  mService.watch("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep",
                 [handler = std::move(handler)](const ReceivedSignal& received) {
                   if (received.values.size() == 1 && received.values.front().isBoolean())
                     handler(received.values.front().toBool());
                 });
}

}  // namespace vorn::engine
