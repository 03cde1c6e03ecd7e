#include "core-engine/play/MacroPlayer.h"

#include <algorithm>
#include <limits>

#include "model/Assignments.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"

namespace vorn::engine {

namespace {

constexpr std::int32_t maximumRuns = 10;

Scheduler::Duration delayOf(const PropertyList& event) {
  return std::chrono::milliseconds(event[keys::Delay].toInt64());
}

}  // namespace

void MacroPlayer::start(const std::string& control, const PropertyList& events, std::int32_t repeatMode) {
  if (events.elements().empty() || isPlaying(control)) return;
  auto playback = std::make_unique<Playback>(mOutput);
  playback->events = events;
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
  playback.next = 0;
  playback.runStart = time;
  playback.due = time + delayOf(playback.event());
}

void MacroPlayer::proceed(const std::string& control) {
  Playback& playback = *mPlaybacks.find(control)->second;
  for (std::size_t count = 0; count < eventsPerTurn && playback.due <= mScheduler.now(); ++count) {
    perform(playback);
    if (++playback.next < playback.events.size()) {
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
