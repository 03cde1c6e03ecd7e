// How the mouse's battery is told: the values of "DeviceChargingStatus" and "BatteryPercentLevel".
#pragma once

#include <cstdint>
#include <string_view>

namespace vorn {

enum class ChargingStatus : std::int32_t { OnBattery = 0, Charging = 1, NoBatteryDisplay = 2 };

inline constexpr ChargingStatus chargingStatuses[] = {ChargingStatus::OnBattery, ChargingStatus::Charging,
                                                      ChargingStatus::NoBatteryDisplay};

// In place of a percentage, 0 to 100, while no mouse is there or its battery is not displayed.
inline constexpr std::int32_t noBatteryLevel = 255;

// The word for a charging status where people read or write it; that of no battery display for any other number.
constexpr std::string_view chargingWord(ChargingStatus status) {
  switch (status) {
    case ChargingStatus::OnBattery:
      return "battery";
    case ChargingStatus::Charging:
      return "charging";
    case ChargingStatus::NoBatteryDisplay:
      break;
  }
  return "none";
}

}  // namespace vorn
