// What the services of the system do for one mouse, put together: ratbagd sets in its hardware what the settings ask
// for, UPower knows its battery, logind tells when the machine sleeps. Each of them may be missing, come and go.
// Nothing here reads the mouse or writes to it. One thread, the engine's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/device/DeviceValues.h"
#include "core-engine/device/linux/BatteryWatch.h"
#include "core-engine/device/linux/MouseBattery.h"
#include "core-engine/device/linux/RatbagMouse.h"
#include "core-engine/device/linux/SleepWatch.h"
#include "mice/MouseFinder.h"

namespace vorn::engine {

class MouseServices {
 public:
  // Called from the run loop, never within a call of apply() or noteControl().
  struct Handlers {
    std::function<void()> hardwareChanged;  // sensitivity(), firmwareVersion() or abilities() may be others
    std::function<void()> batteryChanged;   // the battery and abilities() are others
    std::function<void()> goesToSleep;      // the machine does, soon
    std::function<void()> batteryAppeared;  // of some device; the mouse has none so far
  };

  // The scheduler outlives this.
  MouseServices(Scheduler& scheduler, Handlers handlers) : mScheduler(scheduler), mHandlers(std::move(handlers)) {}
  ~MouseServices() { mScheduler.cancel(mSettling); }
  MouseServices(const MouseServices&) = delete;
  MouseServices& operator=(const MouseServices&) = delete;

  // What is plugged in now. Nobody is asked before something is.
  void update(const std::optional<MouseHardware>& hardware);

  // What is asked of the mouse from now on; it is also what a mouse gets that becomes known or wakes up. What has
  // changed is set, and what something else sets later stays, until the settings ask for another value. A sensitivity
  // that a control of the mouse may have brought is not written before it has lasted: the memory of a mouse is not made
  // for a change with each press. Until then it differs from sensitivity().
  void apply(const DeviceValues& values);
  // A control of the mouse was pressed or released.
  void noteControl(bool isPressed);

  // What the hardware counts, or will as soon as it has taken what is under way; nothing where it cannot be set.
  std::optional<Sensitivity> sensitivity() const;
  // As ratbagd knows it; empty where it does not.
  std::string firmwareVersion() const;
  int batteryPercent() const;  // 0 to 100; 0 where nobody tells
  ChargingStatus chargingStatus() const;
  // What these services can do of it; the sensitivity is in the hardware, or missing.
  DeviceAbilities abilities() const;

 private:
  // Of the settings, what the mouse has been told last.
  struct Applied {
    std::optional<Sensitivity> sensitivity;
    std::optional<std::int32_t> pollingRate;
    std::optional<RatbagLight> light;
  };

  void follow(const RatbagIdentity& identity);
  void followBattery(const std::vector<std::string>& supplies, bool isWired);
  void hear(RatbagMouse::News news);
  void wakeUp();
  void applyAnew();
  void pursue();
  bool isKnown() const { return mRatbag && mRatbag->state() != nullptr; }
  // A control is held, or was just now.
  bool isHandled() const;
  void setSensitivity();
  void settleLater();
  void stopSettling();

  Scheduler& mScheduler;
  Handlers mHandlers;
  std::optional<DeviceValues> mValues;
  Applied mApplied;
  std::size_t mHeldControls = 0;
  std::optional<Scheduler::Duration> mHandledLast;
  bool mIsUnsettled = false;  // the sensitivity waits
  Scheduler::Ticket mSettling = 0;
  RatbagIdentity mIdentity;
  std::unique_ptr<RatbagMouse> mRatbag;
  std::vector<std::string> mSupplies;
  bool mIsWired = false;
  std::unique_ptr<MouseBattery> mBattery;
  std::unique_ptr<BatteryWatch> mBatteryWatch;  // while the mouse has none
  std::unique_ptr<SleepWatch> mSleep;
};

}  // namespace vorn::engine
