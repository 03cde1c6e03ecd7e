#include "core-engine/device/linux/BatteryWatch.h"

#include <utility>

namespace vorn::engine {

BatteryWatch::BatteryWatch(Handler appeared)
    : mAppeared(std::move(appeared)), mService(Bus::System, "org.freedesktop.UPower", [this] {
        const Handler handler = mAppeared;
        // One that comes later does not tell of what it finds at first.
        if (std::exchange(mIsKnown, true) && mService.isThere()) handler();
      }) {
  mService.watch("/org/freedesktop/UPower", "org.freedesktop.UPower", "DeviceAdded", [this](const ReceivedSignal&) {
    const Handler handler = mAppeared;
    handler();
  });
}

}  // namespace vorn::engine
