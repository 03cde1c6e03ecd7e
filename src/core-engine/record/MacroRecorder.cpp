#include "core-engine/record/MacroRecorder.h"

#include <algorithm>
#include <utility>

#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

// Differences of whole milliseconds, so that what each delay is cut by does not add up.
std::int64_t milliseconds(Scheduler::Duration time) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

}  // namespace

void MacroRecorder::start(Task task) {
  const bool isTakenOver = mTask.macro >= 0 && mTask.client != task.client;
  drop();
  mTask = std::move(task);
  mIsRecording = true;
  // Without rows as yet: whoever had a recording learns that it is another one's now.
  if (isTakenOver) postBatch();
  tellClient();
}

bool MacroRecorder::stop(std::string_view client) {
  if (!mIsRecording || client != mTask.client) return false;
  mIsRecording = false;
  // Clients pass over the batch that follows their stop, so there always is one.
  postBatch();
  return true;
}

void MacroRecorder::note(const KeyChanged& key) {
  if (!mIsRecording || mEvents.size() >= mTask.room) return;
  const Scheduler::Duration now = mScheduler.now();
  const std::int64_t delay = mEvents.empty() ? mTask.firstDelay : delayBefore(key, now);
  PropertyList event = PropertyList::dictionary({{keys::Command, key.isPressed ? 1 : 0},
                                                 {keys::Delay, std::clamp<std::int64_t>(delay, 0, maximumDelay)},
                                                 {keys::Page, key.usagePage},
                                                 {keys::Argument, key.usage}});
  if (!isMacroEvent(event)) return;
  mEvents.push_back(std::move(event));
  mLastEvent = now;
  mLastOwnTime = key.time;
  if (mBatch == 0) mBatch = mScheduler.after(batchDelay, [this] { postBatch(); });
}

std::int64_t MacroRecorder::delayBefore(const KeyChanged& key, Scheduler::Duration now) const {
  // What the way over the bus takes is no part of a delay.
  if (key.time && mLastOwnTime && *key.time >= *mLastOwnTime) return (*key.time - *mLastOwnTime).count();
  return milliseconds(now) - milliseconds(mLastEvent);
}

void MacroRecorder::discard() {
  drop();
  tellClient();
}

void MacroRecorder::drop() {
  mScheduler.cancel(std::exchange(mBatch, 0));
  mIsRecording = false;
  mTask = {};
  std::vector<PropertyList>().swap(mEvents);
  mPosted = 0;
  mLastOwnTime.reset();
}

void MacroRecorder::macrosMoved(std::int64_t start, std::int64_t gone, std::int64_t come) {
  if (mTask.macro < start) return;
  if (mTask.macro < start + gone) return discard();
  mTask.macro += come - gone;
}

void MacroRecorder::postBatch() {
  mScheduler.cancel(std::exchange(mBatch, 0));
  std::vector<PropertyList> lines;
  for (; mPosted < mEvents.size(); ++mPosted) {
    const PropertyList ofEvent = eventParser::parseSequence(mEvents[mPosted]);
    const bool isFirstRow = mPosted == 0 && !mTask.isContinuing;
    const auto shown = ofEvent.elements().subspan(isFirstRow ? 1 : 0);
    lines.insert(lines.end(), shown.begin(), shown.end());
  }
  mNews.post(notificationNames::macroSequence(wiredProductID),
             PropertyList::dictionary({{newsKeys::MessagesArray, PropertyList::array(std::move(lines))},
                                       {newsKeys::ResponseMsgPortName, mTask.client},
                                       {newsKeys::MacroID, mTask.macro}}));
}

}  // namespace vorn::engine
