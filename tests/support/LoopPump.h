// Runs this thread's run loop until something is true.
#pragma once

#include <chrono>
#include <functional>

#include "ports/RunLoop.h"

namespace vorn::test {

// False when the deadline passed first. Needs a session bus, like every run of the loop.
inline bool runUntil(RunLoop& loop, const std::function<bool()>& isDone,
                     std::chrono::milliseconds deadline = std::chrono::seconds(20)) {
  constexpr std::chrono::milliseconds untilNextLook{5};
  const auto end = std::chrono::steady_clock::now() + deadline;
  RunLoop::Timer timer = 0;
  const std::function<void()> look = [&] {
    timer = 0;
    if (isDone() || std::chrono::steady_clock::now() >= end) return loop.stop();
    timer = loop.addTimer(untilNextLook, look);
  };
  look();
  loop.run();
  loop.removeTimer(timer);
  return isDone();
}

}  // namespace vorn::test
