// A thread that does one thing at a fixed interval until its owner goes.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace skarn {

// Sleeps for the interval on the calling thread, or until a stop is requested: false then. Replaced in tests.
using StoppableSleep = std::function<bool(std::stop_token, std::chrono::milliseconds)>;
StoppableSleep systemSleep();

class RepeatingThread {
 public:
  explicit RepeatingThread(StoppableSleep sleep = systemSleep()) : mSleep(std::move(sleep)) {}
  // Ends the thread. The work under way is waited for.
  ~RepeatingThread() { stop(); }

  // Runs work on a new thread every interval, the first time after one interval or at once. A thread that runs
  // already is left as it is.
  void start(std::chrono::milliseconds interval, std::function<void()> work, bool firesAtOnce = false);
  void stop();
  bool isRunning() const { return mThread.joinable(); }

 private:
  StoppableSleep mSleep;
  std::jthread mThread;
};

}  // namespace skarn
