#include "link/ReplySlot.h"

#include <utility>

#include "link/Polling.h"

namespace vorn {

void ReplySlot::store(PropertyList reply) {
  {
    const std::lock_guard lock(mMutex);
    std::swap(mReply, reply);
  }
  mFilled.notify_all();
}

PropertyList ReplySlot::peek() const {
  const std::lock_guard lock(mMutex);
  return mReply;
}

void ReplySlot::empty() {
  store(PropertyList());
}

bool ReplySlot::wait(int polls, std::chrono::milliseconds interval) {
  std::unique_lock lock(mMutex);
  const auto isFilled = [this] { return !mReply.isNone(); };
  return poll(polls, isFilled, [&] { mFilled.wait_for(lock, interval, isFilled); });
}

}  // namespace vorn
