#include "core-engine/device/linux/LongWait.h"

#include <utility>

namespace vorn::engine {

LongWait::LongWait(Scheduler& scheduler, std::function<void()> becameLong)
    : mScheduler(scheduler), mBecameLong(std::move(becameLong)) {}

LongWait::~LongWait() {
  mScheduler.cancel(mTicket);
}

void LongWait::set(bool isWaiting) {
  if (!isWaiting) {
    mScheduler.cancel(std::exchange(mTicket, 0));
    mIsLong = false;
  } else if (mTicket == 0 && !mIsLong) {
    mTicket = mScheduler.after(patience, [this] {
      mTicket = 0;
      mIsLong = true;
      mBecameLong();
    });
  }
}

}  // namespace vorn::engine
