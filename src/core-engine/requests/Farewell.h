// The last that an engine does for its clients.
#pragma once

#include <chrono>
#include <functional>

#include "core-engine/Scheduler.h"
#include "core-engine/requests/RequestIntake.h"
#include "core-engine/storage/SettingsStore.h"
#include "core-engine/storage/SettingsTurns.h"

namespace vorn::engine {

// So long the engine goes on to save what clients asked for before it was told to end. A save that has begun comes to
// its end, however long that takes, and takes nothing of this time.
inline constexpr Scheduler::Duration maximumLastSaves = std::chrono::milliseconds(200);
// So long it works on answers when it saves no more. What others have of the processor meanwhile takes nothing of this
// time, or a busy machine would leave requests unanswered that are little work; but so long it takes at most with that.
inline constexpr Scheduler::Duration maximumFarewell = std::chrono::milliseconds(150);
inline constexpr Scheduler::Duration maximumBusyFarewell = std::chrono::seconds(2);

// How long the calling thread has had a processor.
Scheduler::Duration processorTime();

// Serves what waits in the intake and in the turns, on their thread; worked tells how long that has worked. When it
// returns the store is closed, or nothing waits.
void serveLastRequests(RequestIntake& intake, SettingsTurns& turns, SettingsStore& store, const Scheduler& scheduler,
                       const std::function<Scheduler::Duration()>& worked = processorTime);

}  // namespace vorn::engine
