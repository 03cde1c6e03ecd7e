#include "core-engine/device/linux/InputWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <string_view>
#include <utility>

namespace vorn::engine {

namespace {

constexpr char devicesFolder[] = "/dev";
constexpr char inputFolder[] = "/dev/input";
constexpr char outputNode[] = "/dev/uinput";
constexpr char databaseFolder[] = "/run/udev/data";

// What comes together is looked at together.
constexpr Scheduler::Duration foldingTime = std::chrono::milliseconds(20);
// Within this time after a change of a node udev has begun to write what it knows of it.
constexpr Scheduler::Duration settlingTime = std::chrono::seconds(2);

}  // namespace

InputWatch::InputWatch(RunLoop& loop, Scheduler& scheduler, Changed changed)
    : mLoop(loop),
      mScheduler(scheduler),
      mChanged(std::move(changed)),
      mDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (mDescriptor.get() < 0) return;
  mWatch = mLoop.watch(mDescriptor.get(), [this] { read(); });
  lookSoon();
}

InputWatch::~InputWatch() {
  mScheduler.cancel(mTicket);
  mLoop.unwatch(mWatch);
}

void InputWatch::watchFolders() {
  constexpr auto nodes = IN_CREATE | IN_DELETE | IN_ATTRIB | IN_MOVED_TO | IN_ONLYDIR;
  const auto watch = [this](const char* path, std::uint32_t events) {
    return ::inotify_add_watch(mDescriptor.get(), path, events);
  };
  mInputWatch = watch(inputFolder, nodes);
  mOutputWatch = watch(outputNode, IN_ATTRIB);
  // The kernel removes the folder with the last node, and a node can be watched only by who may read it.
  const bool isAllThere = mInputWatch >= 0 && mOutputWatch >= 0;
  if (!isAllThere) {
    mDevicesWatch = watch(devicesFolder, IN_CREATE | IN_ATTRIB | IN_ONLYDIR);
  } else if (mDevicesWatch >= 0) {
    ::inotify_rm_watch(mDescriptor.get(), std::exchange(mDevicesWatch, -1));
  }
  mDatabaseWatch = watch(databaseFolder, IN_MOVED_TO | IN_CREATE | IN_DELETE | IN_ONLYDIR);
}

void InputWatch::read() {
  alignas(inotify_event) char buffer[4096];
  bool isOfNodes = false;
  bool isOfDatabase = false;
  for (ssize_t size = 0; (size = ::read(mDescriptor.get(), buffer, sizeof buffer)) > 0;) {
    for (const char* next = buffer; next < buffer + size;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(next);
      const std::string_view name = event.len > 0 ? event.name : "";
      const bool isForeign = event.wd == mDevicesWatch && name != "input" && name != "uinput";
      const bool isEndOfWatch = (event.mask & IN_IGNORED) != 0;
      if (event.wd == mDatabaseWatch)
        isOfDatabase |= !isEndOfWatch;
      else
        isOfNodes |= !isEndOfWatch && !isForeign;
      next += sizeof(inotify_event) + event.len;
    }
  }
  if (isOfNodes) mUnsettledUntil = mScheduler.now() + settlingTime;
  if (isOfNodes || isOfDatabase) lookIn(foldingTime);
}

void InputWatch::lookSoon() {
  mUnsettledUntil = mScheduler.now() + settlingTime;
  lookIn(foldingTime);
}

void InputWatch::lookIn(Scheduler::Duration delay) {
  const Scheduler::Duration time = mScheduler.now() + delay;
  if (mTicket != 0 && mDueTime <= time) return;
  mScheduler.cancel(mTicket);
  mDueTime = time;
  mTicket = mScheduler.after(delay, [this] { look(); });
}

void InputWatch::look() {
  mTicket = 0;
  watchFolders();
  const bool isSettled = mChanged();
  const Scheduler::Duration now = mScheduler.now();
  if (now < mUnsettledUntil) return lookIn(mUnsettledUntil - now);
  if (isSettled && mDatabaseWatch >= 0) ::inotify_rm_watch(mDescriptor.get(), std::exchange(mDatabaseWatch, -1));
}

}  // namespace vorn::engine
