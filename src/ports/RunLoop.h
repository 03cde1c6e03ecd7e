// The event loop of a thread that has no other: it serves this thread's bus connections, timers and signals, and
// sleeps otherwise. All functions but stop() and perform() belong to the thread that created the loop.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace vorn {

class RunLoop {
 public:
  using Timer = std::uint64_t;  // 0 is no timer
  using Watch = std::uint64_t;  // 0 is no watch

  RunLoop();  // attaches the calling thread's connections; that to the system bus when it is opened
  ~RunLoop();
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;

  // Returns after stop(), or with false when the connection to the session bus is lost.
  bool run();
  // Any thread, also before run().
  void stop();
  // Runs the work on the loop's thread soon. Any thread.
  void perform(std::function<void()> work);

  // The work for when nothing else is to be done: it is called over and over, each time after whatever has come up
  // meanwhile, until it returns false; wakeIdleWork() begins anew. Set it once.
  void setIdleWork(std::function<bool()> work);
  void wakeIdleWork();

  Timer addTimer(std::chrono::microseconds delay, std::function<void()> work);  // fires once
  void removeTimer(Timer timer);                                                // an unknown timer does nothing
  // Calls the work on the loop's thread whenever the descriptor can be read from, or has an error or its end; before
  // timers and messages that wait as well. The descriptor stays the caller's and stays open until it is unwatched. Call
  // both on the loop's thread. 0, and nothing is watched, where the system cannot watch it.
  Watch watch(int descriptor, std::function<void()> work);
  void unwatch(Watch watch);  // also within the work; an unknown watch does nothing
  // Calls the work on the loop's thread when the process receives the signal. Call it before other threads start:
  // it blocks the signal's default delivery.
  void onSignal(int signal, std::function<void()> work);

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
