#include "core-engine/device/VirtualDevice.h"

#include <algorithm>

#include "core-engine/play/OutputKeys.h"
#include "model/Controls.h"

namespace vorn::engine {

VirtualDevice::VirtualDevice(Connection connection) : mConnection(connection) {}

bool VirtualDevice::isControl(std::string_view identifier) {
  return controlOf(identifier) != nullptr || std::ranges::find(fixedKeys, identifier) != fixedKeys.end();
}

std::string VirtualDevice::firmwareVersion() const {
  return isPresent() && !mIsFirmwareFailing ? mFirmwareVersion : std::string();
}

int VirtualDevice::batteryPercent() const {
  return isPresent() ? mBatteryPercent : 0;
}

ChargingStatus VirtualDevice::chargingStatus() const {
  if (!isPresent()) return ChargingStatus::NoBatteryDisplay;
  if (mChargingStatus) return *mChargingStatus;
  if (!isWired()) return ChargingStatus::OnBattery;
  return mBatteryPercent < 100 ? ChargingStatus::Charging : ChargingStatus::NoBatteryDisplay;
}

void VirtualDevice::emit(const OutputEvent& event) {
  if (isPresent() && mOutputHandler) mOutputHandler(event);
}

DeviceAbilities VirtualDevice::abilities() const {
  DeviceAbilities result;
  result.sensitivity = DeviceAbilities::Way::Hardware;
  result.hasPollingRate = result.hasLight = result.hasPower = result.hasBattery = true;
  return result;
}

void VirtualDevice::setConnection(Connection connection) {
  if (connection == mConnection) return;
  mConnection = connection;
  mChargingStatus.reset();
  mPressedControls.clear();
  notify(ConnectionChanged{});
}

void VirtualDevice::setBattery(int percent) {
  const int before = batteryPercent();
  mBatteryPercent = std::clamp(percent, 0, 100);
  if (batteryPercent() != before) notify(BatteryChanged{});
}

void VirtualDevice::setChargingStatus(std::optional<ChargingStatus> status) {
  const ChargingStatus before = chargingStatus();
  mChargingStatus = status;
  if (chargingStatus() != before) notify(BatteryChanged{});
}

bool VirtualDevice::setControl(std::string_view identifier, bool isPressed) {
  if (!isPresent() || !isControl(identifier)) return false;
  const auto found = mPressedControls.find(identifier);
  if ((found != mPressedControls.end()) == isPressed) return true;
  if (isPressed) {
    mPressedControls.emplace(identifier);
  } else {
    mPressedControls.erase(found);
  }
  notify(ControlChanged{std::string(identifier), isPressed});
  return true;
}

bool VirtualDevice::typeKey(std::uint32_t usagePage, std::uint32_t usage, bool isPressed) {
  const auto key = outputKey(usagePage, usage);
  if (!key) return false;
  notify(KeyChanged{key->usagePage, key->usage, isPressed});
  return true;
}

}  // namespace vorn::engine
