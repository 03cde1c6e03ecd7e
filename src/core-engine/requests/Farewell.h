// The last that an engine does for its clients.
#pragma once

#include <chrono>

#include "core-engine/Scheduler.h"
#include "core-engine/requests/RequestIntake.h"
#include "core-engine/storage/SettingsStore.h"
#include "core-engine/storage/SettingsTurns.h"

namespace vorn::engine {

// So long the engine goes on to save what clients asked for before it was told to end, and so long it answers them when
// it saves no more. A save that has begun comes to its end, however long that takes, and takes nothing of these times.
inline constexpr Scheduler::Duration maximumLastSaves = std::chrono::milliseconds(200);
inline constexpr Scheduler::Duration maximumFarewell = std::chrono::milliseconds(150);

// Serves what waits in the intake and in the turns, on their thread. When it returns the store is closed, or nothing
// waits.
void serveLastRequests(RequestIntake& intake, SettingsTurns& turns, SettingsStore& store, const Scheduler& scheduler);

}  // namespace vorn::engine
