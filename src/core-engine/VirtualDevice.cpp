#include "core-engine/VirtualDevice.h"

#include <algorithm>

#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

bool isControl(std::string_view identifier) {
  const auto holds = [&](const auto& identifiers) {
    return std::find(identifiers.begin(), identifiers.end(), identifier) != identifiers.end();
  };
  return holds(keys::keyIdentifiers) || holds(keys::buttonIdentifiers);
}

}  // namespace

VirtualDevice::VirtualDevice(Connection connection) : mConnection(connection) {}

std::string VirtualDevice::firmwareVersion() const {
  return isPresent() ? mFirmwareVersion : std::string();
}

int VirtualDevice::batteryPercent() const {
  return isPresent() ? mBatteryPercent : 0;
}

ChargingStatus VirtualDevice::chargingStatus() const {
  if (mConnection == Connection::Wireless) return ChargingStatus::OnBattery;
  const bool isCharging = isWired() && mBatteryPercent < 100;
  return isCharging ? ChargingStatus::Charging : ChargingStatus::NoBatteryDisplay;
}

void VirtualDevice::emit(const OutputEvent& event) {
  if (isPresent() && mOutputHandler) mOutputHandler(event);
}

void VirtualDevice::setConnection(Connection connection) {
  if (connection == mConnection) return;
  mConnection = connection;
  notify(ConnectionChanged{});
}

void VirtualDevice::setBattery(int percent) {
  const int clamped = std::clamp(percent, 0, 100);
  if (clamped == mBatteryPercent) return;
  mBatteryPercent = clamped;
  notify(BatteryChanged{});
}

bool VirtualDevice::setControl(std::string_view identifier, bool isPressed) {
  if (!isPresent() || !isControl(identifier)) return false;
  notify(ControlChanged{std::string(identifier), isPressed});
  return true;
}

}  // namespace vorn::engine
