// Serves this thread's bus connection until something is true, as an event loop would.
#pragma once

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <functional>

#include "ports/BusConnection.h"

namespace vorn::test {

// False when the deadline passed or the connection was lost first.
inline bool serveBusUntil(const std::function<bool()>& isDone,
                          std::chrono::milliseconds deadline = std::chrono::seconds(20)) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!isDone()) {
    BusConnection& connection = BusConnection::forThisThread();
    if (!connection.process()) return false;
    if (isDone()) return true;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    // The connection may have something to do before anything arrives, such as a time-out of its own; and what is
    // waited for may come true in another thread or process.
    const auto due = std::chrono::ceil<std::chrono::milliseconds>(connection.timeout().value_or(left));
    constexpr std::chrono::milliseconds untilNextLook{20};
    pollfd watched{connection.descriptor(), connection.pollEvents(), 0};
    ::poll(&watched, 1, static_cast<int>(std::min({left, due, untilNextLook}).count()));
  }
  return true;
}

}  // namespace vorn::test
