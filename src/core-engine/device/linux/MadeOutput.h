// A device that the engine has made, from its making until the desktop reads it, with what assignments hold on it. One
// thread, the engine's.
#pragma once

#include <functional>
#include <memory>

#include "core-engine/Scheduler.h"
#include "core-engine/device/linux/OutputDevice.h"

namespace vorn::engine {

class MadeOutput {
 public:
  // becameReady: called once, later. The scheduler outlives it.
  MadeOutput(std::unique_ptr<OutputDevice> device, Scheduler& scheduler, std::function<void()> becameReady);
  ~MadeOutput();
  MadeOutput(const MadeOutput&) = delete;
  MadeOutput& operator=(const MadeOutput&) = delete;

  OutputDevice& device() { return *mDevice; }
  OutputHold& emitted() { return mEmitted; }
  // The desktop has had the time to open it: from now on nothing that is written is lost. Where nobody tells of it, it
  // is taken for ready after a while.
  bool isReady() const { return mIsReady; }
  // udev may be done with it now.
  void look();

 private:
  void becomeReadyIn(Scheduler::Duration delay);

  std::unique_ptr<OutputDevice> mDevice;
  OutputHold mEmitted{*mDevice};
  Scheduler& mScheduler;
  std::function<void()> mBecameReady;
  Scheduler::Ticket mTicket = 0;
  bool mIsKnown = false;
  bool mIsReady = false;
};

}  // namespace vorn::engine
