// The mouse in use: one of several devices, and another one whenever that is chosen. The rest of the engine sees this
// one alone. One thread, the engine's.
#pragma once

#include <string>

#include "core-engine/device/Device.h"

namespace vorn::engine {

class MouseInUse : public Device {
 public:
  // The first mouse in use. A mouse outlives its use.
  explicit MouseInUse(Device& first) { take(first); }
  ~MouseInUse() override { leave(); }
  MouseInUse(const MouseInUse&) = delete;
  MouseInUse& operator=(const MouseInUse&) = delete;

  // The other mouse from now on. It gets the values and listens as the one before did, which has nothing assigned any
  // more and does not listen. While the handler is told of the one before, it counts as absent; then it is told that
  // the connection, the battery and the abilities may be others.
  void use(Device& other);
  bool isUsing(const Device& other) const { return mDevice == &other; }

  Connection connection() const override { return mIsLeaving ? Connection::Absent : mDevice->connection(); }
  std::string firmwareVersion() const override { return mIsLeaving ? std::string() : mDevice->firmwareVersion(); }
  int batteryPercent() const override { return mIsLeaving ? 0 : mDevice->batteryPercent(); }
  ChargingStatus chargingStatus() const override {
    return mIsLeaving ? ChargingStatus::NoBatteryDisplay : mDevice->chargingStatus();
  }
  void emit(const OutputEvent& event) override { mDevice->emit(event); }
  // Values that are in force already are not applied again.
  void apply(const DeviceValues& values) override;
  void setListening(bool isListening) override;
  DeviceAbilities abilities() const override { return mIsLeaving ? DeviceAbilities() : mDevice->abilities(); }

 private:
  void take(Device& device);
  void leave();

  Device* mDevice = nullptr;
  DeviceValues mValues;
  bool mIsListening = false;
  bool mIsLeaving = false;
};

}  // namespace vorn::engine
