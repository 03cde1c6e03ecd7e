// Time for the engine: delays are asked for here, so that tests run on a clock of their own. Nothing is due, and the
// process sleeps, while no work is scheduled. One thread, the engine's.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "ports/RunLoop.h"

namespace vorn::engine {

class Scheduler {
 public:
  using Ticket = std::uint64_t;  // 0 is no work
  using Duration = std::chrono::microseconds;

  virtual ~Scheduler() = default;

  // Time since some fixed moment; never goes back, stands still while the machine sleeps.
  virtual Duration now() const = 0;
  // Calls the work once, on the engine's thread, when the delay has passed; never within this call.
  virtual Ticket after(Duration delay, std::function<void()> work) = 0;
  // Work that ran or was cancelled already is ignored.
  virtual void cancel(Ticket ticket) = 0;
};

// On the timers of a run loop, which outlives the scheduler.
class RunLoopScheduler : public Scheduler {
 public:
  explicit RunLoopScheduler(RunLoop& loop) : mLoop(loop) {}

  Duration now() const override;
  Ticket after(Duration delay, std::function<void()> work) override;
  void cancel(Ticket ticket) override;

 private:
  RunLoop& mLoop;
};

}  // namespace vorn::engine
