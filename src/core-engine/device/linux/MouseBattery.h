// The battery of a mouse as UPower has it (org.freedesktop.UPower on the system bus). Nothing here ever waits; the
// service, its bus and the battery may come and go. One thread, the engine's.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "protocol/DeviceStatus.h"

namespace vorn::engine {

class MouseBattery {
 public:
  using Handler = std::function<void()>;

  // supplies: the names of the mouse's power_supply nodes ("hidpp_battery_0") or their paths below /sys. Without any,
  // nothing is asked; else this connects to the system bus if nobody has, and has UPower started if it is installed.
  // isWired: whether the mouse is on its cable.
  // changed is called from the run loop when percent() or chargingStatus() have changed, and may end this.
  MouseBattery(std::vector<std::string> supplies, bool isWired, Handler changed);
  ~MouseBattery();
  MouseBattery(const MouseBattery&) = delete;
  MouseBattery& operator=(const MouseBattery&) = delete;

  // 0 to 100; nothing while UPower does not tell of the battery.
  std::optional<int> percent() const;
  // No battery display while UPower does not tell of it, and for one that is full of a mouse on its cable.
  ChargingStatus chargingStatus() const;

 private:
  struct Client;
  std::unique_ptr<Client> mClient;
};

}  // namespace vorn::engine
