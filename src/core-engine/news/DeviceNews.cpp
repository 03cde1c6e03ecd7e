#include "core-engine/news/DeviceNews.h"

#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

PropertyList report(MessageID messageID, std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries).with(newsKeys::MessageID, static_cast<std::int32_t>(messageID));
}

PropertyList levelReport(std::int32_t percent) {
  return report(MessageID::QueryBatteryLevel, {{newsKeys::BatteryPercentLevel, percent}});
}

}  // namespace

std::int32_t productInUse(const Device& device) {
  return device.isWired() ? wiredProductID : wirelessProductID;
}

PropertyList firmwareReport(const Device& device) {
  const std::string version = device.firmwareVersion();
  const PropertyList result =
      report(MessageID::QueryFirmwareVersion,
             {{newsKeys::ReturnStatus, version.empty() ? 1 : 0}, {newsKeys::FirmwareVersion, version}});
  return device.isPresent() ? result.with(newsKeys::IsDeviceWired, device.isWired() ? 1 : 0) : result;
}

PropertyList batteryReport(const Device& device) {
  const bool isDisplayed = device.isPresent() && device.chargingStatus() != ChargingStatus::NoBatteryDisplay;
  return levelReport(isDisplayed ? device.batteryPercent() : noBatteryLevel);
}

PropertyList chargingReport(const Device& device) {
  const ChargingStatus status = device.isPresent() ? device.chargingStatus() : ChargingStatus::NoBatteryDisplay;
  return report(MessageID::QueryChargingStatus, {{newsKeys::DeviceChargingStatus, static_cast<std::int32_t>(status)}});
}

DeviceNews::DeviceNews(const Device& device, NewsPort& port)
    : mDevice(device), mPort(port), mFirmwareVersion(device.firmwareVersion()) {
  remember();
}

void DeviceNews::announce() {
  remember();
  // Who hears of the mouse asks for it.
  mFirmwareVersion = mDevice.firmwareVersion();
  if (!mDevice.isPresent()) {
    // It serves both products.
    mPort.post(notificationNames::deviceRemoved(wiredProductID), {});
    return;
  }
  const std::int32_t product = productInUse(mDevice);
  mPort.post(notificationNames::deviceAttached(product), {});
  mPort.post(notificationNames::commandReply(product), chargingReport(mDevice));
}

void DeviceNews::batteryChanged() {
  const int earlierPercent = mBatteryPercent;
  const ChargingStatus earlierStatus = mChargingStatus;
  remember();
  if (!mDevice.isPresent()) return;
  const std::string name = notificationNames::commandReply(productInUse(mDevice));
  // A level makes clients show a battery, so it comes before the status that may take it away, and not where none is
  // displayed.
  constexpr auto hidden = ChargingStatus::NoBatteryDisplay;
  const bool isDisplayed = earlierStatus != hidden || mChargingStatus != hidden;
  if (mBatteryPercent != earlierPercent && isDisplayed) mPort.post(name, levelReport(mBatteryPercent));
  if (mChargingStatus != earlierStatus) mPort.post(name, chargingReport(mDevice));
}

void DeviceNews::firmwareChanged() {
  const std::string version = mDevice.firmwareVersion();
  if (!mDevice.isPresent() || version.empty() || version == mFirmwareVersion) return;
  mFirmwareVersion = version;
  mPort.post(notificationNames::commandReply(productInUse(mDevice)), firmwareReport(mDevice));
}

void DeviceNews::remember() {
  mBatteryPercent = mDevice.batteryPercent();
  mChargingStatus = mDevice.chargingStatus();
}

}  // namespace vorn::engine
