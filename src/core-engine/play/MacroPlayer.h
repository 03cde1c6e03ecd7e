// Plays macros to the desktop with their true delays. Every control has at most one macro playing; those of several
// controls play side by side. One thread, the engine's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "core-engine/Scheduler.h"
#include "core-engine/play/OutputKeys.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class MacroPlayer {
 public:
  // A repetition starts where the run before it ended; after a run whose delays are shorter than this in total, or that
  // ended so much too late, it starts this long after the end. So a macro cannot keep the machine busy.
  static constexpr Scheduler::Duration shortestRun = std::chrono::milliseconds(10);
  // So many events that are due happen one after the other, of one run at most; then everything else has its turn.
  static constexpr std::size_t eventsPerTurn = 256;

  // Both outlive the player.
  MacroPlayer(Scheduler& scheduler, OutputKeys& output) : mScheduler(scheduler), mOutput(output) {}
  ~MacroPlayer() { stopAll(); }
  MacroPlayer(const MacroPlayer&) = delete;
  MacroPlayer& operator=(const MacroPlayer&) = delete;

  // Plays the events, an array of macro events (model/MacroEvents.h); each one's delay passes before it, and what is no
  // event is passed over. At the end of every run comes up what the run left down. Nothing happens where there are no
  // events, or while a macro of this control plays.
  void start(const std::string& control, const PropertyList& events, std::int32_t repeatMode);
  bool isPlaying(std::string_view control) const { return mPlaybacks.contains(control); }
  // The repeat mode of the macro that plays; 0 where none does.
  std::int32_t repeatModeOf(std::string_view control) const;
  // At once, also in the middle of a run; nothing stays down.
  void stop(std::string_view control);
  void stopAll();

 private:
  struct Playback {
    PropertyList events;
    std::int32_t repeatMode = 0;
    std::int64_t runsLeft = 0;
    std::size_t first = 0;      // event
    std::size_t next = 0;       // the event that is due then
    Scheduler::Duration due{};  // when the next event happens
    Scheduler::Duration runStart{};
    Scheduler::Ticket ticket = 0;
    KeyHold hold;

    explicit Playback(OutputKeys& output) : hold(output) {}
    const PropertyList& event() const { return events.at(static_cast<std::int64_t>(next)); }
  };

  void proceed(const std::string& control);
  static void startRun(Playback& playback, Scheduler::Duration time);
  static void startNextRun(Playback& playback, Scheduler::Duration now);
  static void perform(Playback& playback);

  Scheduler& mScheduler;
  OutputKeys& mOutput;
  std::map<std::string, std::unique_ptr<Playback>, std::less<>> mPlaybacks;
};

}  // namespace vorn::engine
