// Tells when something has been waited for so long that a person should hear of it. One thread, the engine's.
#pragma once

#include <functional>

#include "core-engine/Scheduler.h"

namespace vorn::engine {

class LongWait {
 public:
  static constexpr Scheduler::Duration patience = std::chrono::seconds(3);

  // becameLong: called once in each wait that lasts for longer than the patience. The scheduler outlives this.
  LongWait(Scheduler& scheduler, std::function<void()> becameLong);
  ~LongWait();
  LongWait(const LongWait&) = delete;
  LongWait& operator=(const LongWait&) = delete;

  // Whether there is something to wait for now. A wait that goes on is the same one.
  void set(bool isWaiting);
  bool isLong() const { return mIsLong; }

 private:
  Scheduler& mScheduler;
  std::function<void()> mBecameLong;
  Scheduler::Ticket mTicket = 0;
  bool mIsLong = false;
};

}  // namespace vorn::engine
