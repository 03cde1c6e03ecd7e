#include "app/RepeatingThread.h"

namespace skarn {

StoppableSleep systemSleep() {
  return [](const std::stop_token& stop, std::chrono::milliseconds interval) {
    std::mutex mutex;
    std::condition_variable_any wake;
    std::unique_lock lock(mutex);
    wake.wait_for(lock, stop, interval, [] { return false; });
    return !stop.stop_requested();
  };
}

void RepeatingThread::start(std::chrono::milliseconds interval, std::function<void()> work, bool firesAtOnce) {
  if (isRunning()) return;
  mThread = std::jthread([sleep = mSleep, interval, work = std::move(work), firesAtOnce](const std::stop_token& stop) {
    if (firesAtOnce) work();
    while (sleep(stop, interval)) work();
  });
}

void RepeatingThread::stop() {
  mThread.request_stop();
  if (mThread.joinable()) mThread.join();
  mThread = {};
}

}  // namespace skarn
