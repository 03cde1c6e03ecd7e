#include "core-engine/device/linux/MadeOutput.h"

#include <utility>

#include "mice/MouseFinder.h"

namespace vorn::engine {

namespace {

// From udev's news of a node to its first reader: the desktop looks at a new device before it listens to it.
constexpr Scheduler::Duration openingTime = std::chrono::milliseconds(200);
// Without udev the desktop finds new devices by itself, if at all.
constexpr Scheduler::Duration patience = std::chrono::seconds(10);

}  // namespace

MadeOutput::MadeOutput(std::unique_ptr<OutputDevice> device, Scheduler& scheduler, std::function<void()> becameReady)
    : mDevice(std::move(device)), mScheduler(scheduler), mBecameReady(std::move(becameReady)) {
  becomeReadyIn(patience);
}

MadeOutput::~MadeOutput() {
  mScheduler.cancel(mTicket);
}

void MadeOutput::look() {
  if (mIsKnown || mIsReady || !isKnownToUdev(mDevice->node())) return;
  mIsKnown = true;
  becomeReadyIn(openingTime);
}

void MadeOutput::becomeReadyIn(Scheduler::Duration delay) {
  mScheduler.cancel(mTicket);
  mTicket = mScheduler.after(delay, [this] {
    mTicket = 0;
    mIsReady = true;
    // It may have this output removed.
    const std::function<void()> tell = mBecameReady;
    tell();
  });
}

}  // namespace vorn::engine
