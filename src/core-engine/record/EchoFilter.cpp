#include "core-engine/record/EchoFilter.h"

namespace vorn::engine {

bool EchoFilter::isEcho(Origin origin, const KeyChanged& key, Scheduler::Duration now) {
  Waiting& waiting = mWaiting[{key.usagePage, key.usage, key.isPressed}];
  while (!waiting.times.empty() && now - waiting.times.front() > echoTime) waiting.times.pop_front();
  if (waiting.times.empty()) waiting.origin = origin;
  if (waiting.origin != origin) {
    waiting.times.pop_front();
    return true;
  }
  if (waiting.times.size() == maximumWaiting) waiting.times.pop_front();
  waiting.times.push_back(now);
  return false;
}

}  // namespace vorn::engine
