#include "core-engine/requests/Farewell.h"

#include <optional>

namespace vorn::engine {

void serveLastRequests(RequestIntake& intake, SettingsTurns& turns, SettingsStore& store, const Scheduler& scheduler) {
  intake.endPauses();
  store.settle();
  const Scheduler::Duration begun = scheduler.now();
  std::optional<Scheduler::Duration> closed;
  while (!(intake.isEmpty() && turns.isEmpty()) && !(closed && scheduler.now() - *closed > maximumFarewell)) {
    if (!closed && scheduler.now() - begun > maximumLastSaves) {
      store.close();
      closed = scheduler.now();
    }
    turns.goOn();
    intake.serveNext();
    store.settle();
  }
}

}  // namespace vorn::engine
