#include "core-engine/play/MacroPlayer.h"

#include <algorithm>
#include <limits>

#include "model/Assignments.h"
#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"

namespace vorn::engine {

namespace {

constexpr std::int32_t maximumRuns = 10;

Scheduler::Duration delayOf(const PropertyList& event) {
  return std::chrono::milliseconds(event[keys::Delay].toInt64());
}

// The position of the first event from this one on, as many as there are elements for none. Looked for one by one as
// they are played: a long macro begins at once.
std::size_t eventFrom(const PropertyList& events, std::size_t position) {
  const auto all = events.elements();
  while (position < all.size() && !isMacroEvent(all[position])) ++position;
  return position;
}

}  // namespace

void MacroPlayer::start(const std::string& control, const PropertyList& events, std::int32_t repeatMode) {
  const std::size_t first = eventFrom(events, 0);
  if (first == events.elements().size() || isPlaying(control)) return;
  auto playback = std::make_unique<Playback>(mOutput);
  playback->events = events;
  playback->first = first;
  playback->repeatMode = repeatMode;
  const bool isEndless = repeatMode == repeatUntilPressedAgain || repeatMode == repeatUntilReleased;
  const bool isCounted = repeatMode >= 1 && repeatMode <= maximumRuns;
  playback->runsLeft = isEndless ? std::numeric_limits<std::int64_t>::max() : (isCounted ? repeatMode : 1);
  startRun(*playback, mScheduler.now());
  mPlaybacks.emplace(control, std::move(playback));
  proceed(control);
}

std::int32_t MacroPlayer::repeatModeOf(std::string_view control) const {
  const auto found = mPlaybacks.find(control);
  return found == mPlaybacks.end() ? 0 : found->second->repeatMode;
}

void MacroPlayer::stop(std::string_view control) {
  const auto found = mPlaybacks.find(control);
  if (found == mPlaybacks.end()) return;
  mScheduler.cancel(found->second->ticket);
  mPlaybacks.erase(found);
}

void MacroPlayer::stopAll() {
  while (!mPlaybacks.empty()) stop(mPlaybacks.begin()->first);
}

void MacroPlayer::startRun(Playback& playback, Scheduler::Duration time) {
  playback.next = playback.first;
  playback.runStart = time;
  playback.due = time + delayOf(playback.event());
}

void MacroPlayer::proceed(const std::string& control) {
  Playback& playback = *mPlaybacks.find(control)->second;
  for (std::size_t count = 0; count < eventsPerTurn && playback.due <= mScheduler.now(); ++count) {
    perform(playback);
    playback.next = eventFrom(playback.events, playback.next + 1);
    if (playback.next < playback.events.size()) {
      // From the time when this event was due, or what the machine is late by would add up.
      playback.due += delayOf(playback.event());
      continue;
    }
    playback.hold.releaseAll();
    if (--playback.runsLeft == 0) {
      mPlaybacks.erase(control);
      return;
    }
    startNextRun(playback, mScheduler.now());
    break;
  }
  const Scheduler::Duration wait = std::max(playback.due - mScheduler.now(), Scheduler::Duration(0));
  playback.ticket = mScheduler.after(wait, [this, control] { proceed(control); });
}

void MacroPlayer::startNextRun(Playback& playback, Scheduler::Duration now) {
  const bool isLong = playback.due - playback.runStart >= shortestRun;
  const bool isInTime = now - playback.due < shortestRun;
  // Also what is slow to send leaves room for everything else then.
  startRun(playback, isLong && isInTime ? now : now + shortestRun);
}

void MacroPlayer::perform(Playback& playback) {
  const PropertyList& event = playback.event();
  const auto key = outputKey(event[keys::Page].toInt64(), event[keys::Argument].toInt64());
  if (!key) return;
  if (event[keys::Command].toInt() == eventParser::pressCommand) {
    playback.hold.press(*key);
  } else {
    playback.hold.release(*key);
  }
}

}  // namespace vorn::engine
