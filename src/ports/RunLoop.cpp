#include "ports/RunLoop.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "ports/BusCall.h"
#include "ports/BusConnection.h"

namespace vorn {

namespace {

using Work = std::function<void()>;

struct EventUnref {
  void operator()(sd_event* event) const { sd_event_unref(event); }
  void operator()(sd_event_source* source) const { sd_event_source_disable_unref(source); }
};
using EventReference = std::unique_ptr<sd_event, EventUnref>;
using SourceReference = std::unique_ptr<sd_event_source, EventUnref>;

// Fails only where the process has no descriptors or memory left; no program can go on without its loop.
void require(int result, const char* what) {
  if (result >= 0) return;
  bus::log(std::string(what) + ": " + std::strerror(-result));
  std::abort();
}

}  // namespace

struct RunLoop::State {
  struct SignalEntry {
    Work work;
    SourceReference source;
  };
  struct WatchEntry {
    std::shared_ptr<Work> work;
    SourceReference source;
  };

  EventReference event;
  bus::BusReference bus;
  int wakeDescriptor = -1;
  SourceReference wakeSource;
  std::uint64_t gatheringSince = 0;
  int handledSince = 0;
  std::atomic<bool> isStopping = false;
  std::mutex mutex;
  std::vector<Work> performed;  // guarded by mutex
  Timer latestTimer = 0;
  // In the order in which they fire; one source of the event loop is set for the first.
  std::map<std::pair<std::uint64_t, Timer>, Work> timers;
  std::map<Timer, std::uint64_t> timeOfTimer;
  SourceReference timerSource;
  std::function<bool()> idleWork;
  SourceReference idleSource;
  std::vector<std::unique_ptr<SignalEntry>> signals;
  Watch latestWatch = 0;
  std::map<Watch, WatchEntry> watches;

  void attachBus();
  int drainBus() const;
  void letGather(int handled);
  void wake() const;
  static int handleWake(sd_event_source*, int descriptor, std::uint32_t, void* state);
  void armTimers();
  static int handleTimers(sd_event_source*, std::uint64_t, void* state);
  static int handleIdle(sd_event_source* source, void* state);
  static int handleSignal(sd_event_source*, const signalfd_siginfo*, void* entry);
  static int handleWatch(sd_event_source*, int descriptor, std::uint32_t, void* work);
};

void RunLoop::State::attachBus() {
  const BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen() || sd_bus_attach_event(connection.handle(), event.get(), SD_EVENT_PRIORITY_NORMAL) < 0)
    return;
  bus = bus::share(connection.handle());
}

// The event loop looks at everything between two messages; where many come that costs more than the messages do.
int RunLoop::State::drainBus() const {
  constexpr int maximumMessagesInOneGo = 1024;
  int handled = 0;
  while (handled < maximumMessagesInOneGo && !isStopping && sd_bus_process(bus.get(), nullptr) > 0) ++handled;
  return handled;
}

// Where messages keep coming, every single one would wake this thread. It lets them gather instead, for so short a time
// that they never fill the socket: what did not fit in there would wait in the bus, before everybody else's.
void RunLoop::State::letGather(int handled) {
  constexpr std::uint64_t gatheringTime = 300;  // microseconds
  constexpr int manyMessages = 8;
  const std::uint64_t now = bus::monotonicMicroseconds();
  if (now - gatheringSince >= gatheringTime) {
    gatheringSince = now;
    handledSince = 0;
  }
  handledSince += handled;
  int hasIdleWork = SD_EVENT_OFF;
  if (idleSource) sd_event_source_get_enabled(idleSource.get(), &hasIdleWork);
  if (handledSince < manyMessages || hasIdleWork != SD_EVENT_OFF || isStopping) return;
  std::this_thread::sleep_for(std::chrono::microseconds(gatheringSince + gatheringTime - now));
}

void RunLoop::State::wake() const {
  const std::uint64_t one = 1;
  // Fails only when the counter is full, and then the loop wakes anyway.
  [[maybe_unused]] const ssize_t written = write(wakeDescriptor, &one, sizeof one);
}

int RunLoop::State::handleWake(sd_event_source*, int descriptor, std::uint32_t, void* state) {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t consumed = read(descriptor, &count, sizeof count);
  auto& self = *static_cast<State*>(state);
  std::vector<Work> due;
  {
    const std::lock_guard lock(self.mutex);
    due.swap(self.performed);
  }
  for (const Work& work : due) work();
  return 0;
}

void RunLoop::State::armTimers() {
  sd_event_source_set_enabled(timerSource.get(), timers.empty() ? SD_EVENT_OFF : SD_EVENT_ON);
  if (!timers.empty()) sd_event_source_set_time(timerSource.get(), timers.begin()->first.first);
}

int RunLoop::State::handleTimers(sd_event_source*, std::uint64_t, void* state) {
  auto& self = *static_cast<State*>(state);
  const std::uint64_t now = bus::monotonicMicroseconds();
  // A timer that is added meanwhile has its turn later, or a work that adds itself again would never let go.
  const Timer latest = self.latestTimer;
  for (auto next = self.timers.begin(); next != self.timers.end() && next->first.first <= now;) {
    if (next->first.second > latest) {
      ++next;
      continue;
    }
    const auto due = self.timers.extract(next);
    self.timeOfTimer.erase(due.key().second);
    due.mapped()();
    next = self.timers.begin();
  }
  self.armTimers();
  return 0;
}

int RunLoop::State::handleIdle(sd_event_source* source, void* state) {
  if (!static_cast<State*>(state)->idleWork()) sd_event_source_set_enabled(source, SD_EVENT_OFF);
  return 0;
}

int RunLoop::State::handleSignal(sd_event_source*, const signalfd_siginfo*, void* entry) {
  static_cast<SignalEntry*>(entry)->work();
  return 0;
}

int RunLoop::State::handleWatch(sd_event_source*, int, std::uint32_t, void* work) {
  // The work may end its own watch.
  const std::shared_ptr<Work> kept = *static_cast<std::shared_ptr<Work>*>(work);
  (*kept)();
  return 0;
}

RunLoop::RunLoop() : mState(std::make_unique<State>()) {
  sd_event* event = nullptr;
  require(sd_event_new(&event), "Cannot make an event loop");
  mState->event.reset(event);
  mState->wakeDescriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  require(mState->wakeDescriptor < 0 ? -errno : 0, "Cannot make an event descriptor");
  sd_event_source* source = nullptr;
  require(sd_event_add_io(event, &source, mState->wakeDescriptor, EPOLLIN, State::handleWake, mState.get()),
          "Cannot watch an event descriptor");
  mState->wakeSource.reset(source);
  constexpr std::uint64_t accuracy = 1;  // microsecond; 0 would mean a quarter of a second
  require(sd_event_add_time(event, &source, CLOCK_MONOTONIC, 0, accuracy, State::handleTimers, mState.get()),
          "Cannot make a timer");
  mState->timerSource.reset(source);
  mState->armTimers();
  mState->attachBus();
  BusConnection::serveSystemBus(event);
}

RunLoop::~RunLoop() {
  BusConnection::serveSystemBus(nullptr);
  if (mState->bus) sd_bus_detach_event(mState->bus.get());
  mState->idleSource.reset();
  mState->timerSource.reset();
  mState->signals.clear();
  mState->watches.clear();
  mState->wakeSource.reset();
  close(mState->wakeDescriptor);
}

bool RunLoop::run() {
  if (!mState->bus) mState->attachBus();
  while (!mState->isStopping.exchange(false)) {
    if (!mState->bus || sd_bus_is_open(mState->bus.get()) <= 0) return false;
    const int result = sd_event_run(mState->event.get(), UINT64_MAX);
    if (result < 0 && result != -EINTR) require(result, "The event loop failed");
    mState->letGather(mState->drainBus());
  }
  return true;
}

void RunLoop::stop() {
  mState->isStopping = true;
  mState->wake();
}

void RunLoop::perform(std::function<void()> work) {
  {
    const std::lock_guard lock(mState->mutex);
    mState->performed.push_back(std::move(work));
  }
  mState->wake();
}

void RunLoop::setIdleWork(std::function<bool()> work) {
  sd_event_source* source = nullptr;
  require(sd_event_add_defer(mState->event.get(), &source, State::handleIdle, mState.get()), "Cannot defer work");
  mState->idleSource.reset(source);
  sd_event_source_set_priority(source, SD_EVENT_PRIORITY_IDLE);
  sd_event_source_set_enabled(source, SD_EVENT_OFF);
  mState->idleWork = std::move(work);
}

void RunLoop::wakeIdleWork() {
  sd_event_source_set_enabled(mState->idleSource.get(), SD_EVENT_ON);
}

RunLoop::Timer RunLoop::addTimer(std::chrono::microseconds delay, std::function<void()> work) {
  const Timer timer = ++mState->latestTimer;
  const std::uint64_t time =
      bus::monotonicMicroseconds() + static_cast<std::uint64_t>(std::max<std::int64_t>(delay.count(), 0));
  mState->timers.emplace(std::pair(time, timer), std::move(work));
  mState->timeOfTimer.emplace(timer, time);
  mState->armTimers();
  return timer;
}

void RunLoop::removeTimer(Timer timer) {
  const auto found = mState->timeOfTimer.find(timer);
  if (found == mState->timeOfTimer.end()) return;
  mState->timers.erase({found->second, timer});
  mState->timeOfTimer.erase(found);
  mState->armTimers();
}

RunLoop::Watch RunLoop::watch(int descriptor, std::function<void()> work) {
  const Watch watch = ++mState->latestWatch;
  State::WatchEntry& entry = mState->watches[watch];
  entry.work = std::make_shared<Work>(std::move(work));
  sd_event_source* source = nullptr;
  if (sd_event_add_io(mState->event.get(), &source, descriptor, EPOLLIN, State::handleWatch, &entry.work) < 0) {
    mState->watches.erase(watch);
    return 0;
  }
  entry.source.reset(source);
  sd_event_source_set_priority(source, SD_EVENT_PRIORITY_IMPORTANT);
  return watch;
}

void RunLoop::unwatch(Watch watch) {
  mState->watches.erase(watch);
}

void RunLoop::onSignal(int signal, std::function<void()> work) {
  auto entry = std::make_unique<State::SignalEntry>(State::SignalEntry{std::move(work), nullptr});
  sd_event_source* source = nullptr;
  require(sd_event_add_signal(mState->event.get(), &source, signal | SD_EVENT_SIGNAL_PROCMASK, State::handleSignal,
                              entry.get()),
          "Cannot watch a signal");
  entry->source.reset(source);
  mState->signals.push_back(std::move(entry));
}

}  // namespace vorn
