// What is told to everybody about the mouse itself: that it came or went, its battery, its charging status and its
// firmware version. One thread, the engine's.
#pragma once

#include <cstdint>
#include <string>

#include "core-engine/device/Device.h"
#include "core-engine/news/NewsPort.h"
#include "model/PropertyList.h"

namespace vorn::engine {

// The product that the mouse is now: 273 on its cable, 0 on its receiver. Only for a mouse that is present.
std::int32_t productInUse(const Device& device);

// The user information of "commandReplyNotification%d" for messages 14, 15 and 16.
//
// "ReturnStatus" 0 and the version; 1 and an empty version when the mouse is absent or does not tell it. With
// "IsDeviceWired", 1 on the cable and 0 on the receiver, while the mouse is present.
PropertyList firmwareReport(const Device& device);
// "BatteryPercentLevel"; noBatteryLevel, which changes no battery picture, when the mouse is absent or its battery is
// not displayed.
PropertyList batteryReport(const Device& device);
// "DeviceChargingStatus"; without a battery display when the mouse is absent.
PropertyList chargingReport(const Device& device);

class DeviceNews {
 public:
  // Both outlive the news.
  DeviceNews(const Device& device, NewsPort& port);

  // Tells that the mouse is here, and its charging status, or that it is not. For a mouse that comes, goes or changes
  // between cable and receiver, and for those who may not know.
  void announce();
  // Tells the battery level and the charging status, as far as they are others than at the last time.
  void batteryChanged();
  // Tells the firmware version, where it is another one than at the last time. One that is no longer known is what it
  // was.
  void firmwareChanged();

 private:
  void remember();

  const Device& mDevice;
  NewsPort& mPort;
  int mBatteryPercent = 0;
  ChargingStatus mChargingStatus = ChargingStatus::NoBatteryDisplay;
  std::string mFirmwareVersion;
};

}  // namespace vorn::engine
