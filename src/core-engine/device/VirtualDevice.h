// A mouse without hardware, held in memory: what it is and does is set from outside. It is on its cable at first.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "core-engine/device/Device.h"

namespace vorn::engine {

class VirtualDevice : public Device {
 public:
  using OutputHandler = std::function<void(const OutputEvent&)>;
  using Controls = std::set<std::string, std::less<>>;

  explicit VirtualDevice(Connection connection = Connection::Wired);

  Connection connection() const override { return mConnection; }
  std::string firmwareVersion() const override;
  int batteryPercent() const override;
  ChargingStatus chargingStatus() const override;
  void emit(const OutputEvent& event) override;
  void apply(const DeviceValues& values) override { mValues = values; }
  // It has no keys but those that are typed on request, and those it always tells of.
  void setListening(bool isListening) override { mIsListening = isListening; }
  // It does everything.
  DeviceAbilities abilities() const override;

  // What the settings ask of it.
  const DeviceValues& values() const { return mValues; }
  bool isListening() const { return mIsListening; }

  // Each of these tells the event handler, unless nothing changes.
  //
  // On its cable the mouse charges until it is full; without it, it runs on its battery. A mouse that is plugged or
  // unplugged has no control pressed and its usual charging status.
  void setConnection(Connection connection);
  void setBattery(int percent);  // clamped to 0 to 100
  // Another charging status than the usual one until the connection changes; nothing for the usual one.
  void setChargingStatus(std::optional<ChargingStatus> status);
  // Presses or releases a control by its identifier. False, and nothing happens, when the mouse is absent or has no
  // such control.
  bool setControl(std::string_view identifier, bool isPressed);
  // Another mouse is used now: no control counts as pressed any more. Nobody is told.
  void letGo() { mPressedControls.clear(); }
  // A key (page 7, usages 4 to 231) or a button (page 9, usages 1 to 9) somewhere is pressed or released, whether or
  // not the mouse is there. False, and nothing happens, for any other.
  bool typeKey(std::uint32_t usagePage, std::uint32_t usage, bool isPressed);

  void setFirmwareVersion(std::string version) { mFirmwareVersion = std::move(version); }
  // A failing firmware does not tell its version.
  void setFirmwareFailing(bool isFailing) { mIsFirmwareFailing = isFailing; }
  bool isFirmwareFailing() const { return mIsFirmwareFailing; }

  const Controls& pressedControls() const { return mPressedControls; }
  static bool isControl(std::string_view identifier);

  // Receives what the desktop would.
  void setOutputHandler(OutputHandler handler) { mOutputHandler = std::move(handler); }

 private:
  Connection mConnection;
  std::string mFirmwareVersion = "1.00";
  bool mIsFirmwareFailing = false;
  int mBatteryPercent = 100;
  std::optional<ChargingStatus> mChargingStatus;
  Controls mPressedControls;
  OutputHandler mOutputHandler;
  DeviceValues mValues;
  bool mIsListening = false;
};

}  // namespace vorn::engine
