#include "core-engine/Scheduler.h"

#include <utility>

namespace vorn::engine {

Scheduler::Duration RunLoopScheduler::now() const {
  return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now().time_since_epoch());
}

Scheduler::Ticket RunLoopScheduler::after(Duration delay, std::function<void()> work) {
  return mLoop.addTimer(delay, std::move(work));
}

void RunLoopScheduler::cancel(Ticket ticket) {
  mLoop.removeTimer(ticket);
}

}  // namespace vorn::engine
