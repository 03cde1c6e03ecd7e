// Offers everything that a person can do to the hardware of the virtual mouse, and what it sends to the desktop, on the
// session bus by the names of protocol/VirtualMouse.h. docs/core-engine.md lists its methods. One thread, the engine's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/device/VirtualDevice.h"
#include "core-engine/storage/SettingsTurns.h"
#include "ports/BusObject.h"

namespace vorn::engine {

class VirtualMouseService {
 public:
  // So much of the output is kept until somebody takes it; beyond that the oldest goes.
  static constexpr std::size_t maximumOutput = 10'000;
  static constexpr std::size_t maximumVersionLength = 64;

  // Keeps the device's output from now on. All of them outlive the service. turns: where the events of the device wait;
  // a method that causes one returns after it. isInUse: whether the engine uses this mouse; what is pressed and typed
  // while it uses another one would reach nobody, and is refused.
  VirtualMouseService(VirtualDevice& device, const Scheduler& scheduler, SettingsTurns& turns,
                      std::function<bool()> isInUse);
  ~VirtualMouseService();
  VirtualMouseService(const VirtualMouseService&) = delete;
  VirtualMouseService& operator=(const VirtualMouseService&) = delete;

  // Puts the object on this thread's bus for the life of the service. False, with the reason in error, when that cannot
  // be done.
  bool start(std::string& error);

 private:
  using Arguments = std::vector<PropertyList>;

  struct TimedOutput {
    Scheduler::Duration time{};
    OutputEvent event;
  };

  BusObjectDescription description();
  BusMethod method(const char* name, std::vector<BusArgument> inputs, std::function<BusReply(const Arguments&)> work);
  BusMethod changeOfSettings(const char* name, std::vector<BusArgument> inputs,
                             std::function<BusReply(const Arguments&)> work);
  void keep(const OutputEvent& event);

  BusReply plug(const std::string& connection);
  BusReply setControl(const std::string& control, bool isPressed);
  BusReply type(const Arguments& arguments);
  BusReply setBattery(std::int64_t percent);
  BusReply setCharging(const std::string& status);
  BusReply setFirmware(const std::string& version, bool isFailing);
  BusReply state() const;
  BusReply takeOutput();

  VirtualDevice& mDevice;
  const Scheduler& mScheduler;
  SettingsTurns& mTurns;
  std::function<bool()> mIsInUse;
  std::deque<TimedOutput> mOutput;
  std::uint64_t mForgottenOutput = 0;
  std::unique_ptr<BusObject> mObject;
};

}  // namespace vorn::engine
