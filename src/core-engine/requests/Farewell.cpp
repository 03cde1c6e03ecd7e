#include "core-engine/requests/Farewell.h"

#include <ctime>
#include <optional>

namespace vorn::engine {

Scheduler::Duration processorTime() {
  std::timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::duration_cast<Scheduler::Duration>(std::chrono::seconds(time.tv_sec) +
                                                         std::chrono::nanoseconds(time.tv_nsec));
}

void serveLastRequests(RequestIntake& intake, SettingsTurns& turns, SettingsStore& store, const Scheduler& scheduler,
                       const std::function<Scheduler::Duration()>& worked) {
  struct Moment {
    Scheduler::Duration time;
    Scheduler::Duration worked;
  };
  intake.endPauses();
  store.settle();
  const Scheduler::Duration begun = scheduler.now();
  std::optional<Moment> closed;
  const auto isOver = [&] {
    return closed &&
           (worked() - closed->worked > maximumFarewell || scheduler.now() - closed->time > maximumBusyFarewell);
  };
  while (!(intake.isEmpty() && turns.isEmpty()) && !isOver()) {
    if (!closed && scheduler.now() - begun > maximumLastSaves) {
      store.close();
      closed = {scheduler.now(), worked()};
    }
    turns.goOn();
    intake.serveNext();
    store.settle();
  }
}

}  // namespace vorn::engine
