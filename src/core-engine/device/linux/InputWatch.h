// Tells when event nodes have come or gone, or who may read them may be others.
//
// Not by udev's own messages: the engine runs in a user namespace, in which their sender is no longer root, and libudev
// drops what root has not sent. So it looks at the folders: the kernel makes and removes nodes in /dev/input, udev
// gives people access to them there, and writes into /run/udev/data when it is done with one. That folder is watched
// only for a while after a change, since batteries are written there too: at rest nothing wakes the engine.
//
// One thread, the engine's.
#pragma once

#include <functional>

#include "core-engine/Scheduler.h"
#include "model/FileDescriptor.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

class InputWatch {
 public:
  // Changes that come together are told once. changed: looks at what there is, and returns whether nothing is left that
  // udev is still to be done with.
  using Changed = std::function<bool()>;

  // Loop and scheduler outlive it.
  InputWatch(RunLoop& loop, Scheduler& scheduler, Changed changed);
  ~InputWatch();
  InputWatch(const InputWatch&) = delete;
  InputWatch& operator=(const InputWatch&) = delete;

  // Looks soon, as after a change.
  void lookSoon();

 private:
  void read();
  void watchFolders();
  void look();
  void lookIn(Scheduler::Duration delay);

  RunLoop& mLoop;
  Scheduler& mScheduler;
  Changed mChanged;
  FileDescriptor mDescriptor;
  RunLoop::Watch mWatch = 0;
  int mInputWatch = -1;
  int mOutputWatch = -1;
  int mDatabaseWatch = -1;
  int mDevicesWatch = -1;
  Scheduler::Duration mUnsettledUntil{};
  Scheduler::Ticket mTicket = 0;
  Scheduler::Duration mDueTime{};
};

}  // namespace vorn::engine
