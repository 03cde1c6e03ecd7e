// A mouse without hardware, held in memory: what it is and does is set from outside. It is on its cable at first.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core-engine/Device.h"

namespace vorn::engine {

class VirtualDevice : public Device {
 public:
  using OutputHandler = std::function<void(const OutputEvent&)>;

  explicit VirtualDevice(Connection connection = Connection::Wired);

  Connection connection() const override { return mConnection; }
  std::string firmwareVersion() const override;
  int batteryPercent() const override;
  ChargingStatus chargingStatus() const override;
  void emit(const OutputEvent& event) override;

  // Each of these tells the event handler, unless nothing changes.
  //
  // On its cable the mouse charges until it is full; without it, it runs on its battery.
  void setConnection(Connection connection);
  void setBattery(int percent);  // clamped to 0 to 100
  // Presses or releases a control by its identifier. False, and nothing happens, when the mouse is absent or has no
  // such control.
  bool setControl(std::string_view identifier, bool isPressed);

  void setFirmwareVersion(std::string version) { mFirmwareVersion = std::move(version); }
  // Receives what the desktop would.
  void setOutputHandler(OutputHandler handler) { mOutputHandler = std::move(handler); }

 private:
  Connection mConnection;
  std::string mFirmwareVersion = "1.00";
  int mBatteryPercent = 100;
  OutputHandler mOutputHandler;
};

}  // namespace vorn::engine
