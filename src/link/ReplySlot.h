// The one place where an answer of the engine waits to be read. Store, peek, empty and wait are atomic each;
// any thread may call them.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "model/PropertyList.h"

namespace vorn {

class ReplySlot {
 public:
  // Replaces what the slot holds.
  void store(PropertyList reply);
  // What the slot holds (none when empty); it stays.
  PropertyList peek() const;
  void empty();
  // At most polls looks with a sleep of interval after each that found nothing; a store ends the sleep early. True
  // when the slot is filled.
  bool wait(int polls, std::chrono::milliseconds interval);

 private:
  mutable std::mutex mMutex;
  std::condition_variable mFilled;
  PropertyList mReply;
};

}  // namespace vorn
