// Serves this thread's bus connection until something is true, as an event loop would.
#pragma once

#include <poll.h>

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
    const bool isQueued = connection.timeout() == std::chrono::microseconds(0);
    pollfd watched{connection.descriptor(), connection.pollEvents(), 0};
    ::poll(&watched, 1, isQueued ? 0 : static_cast<int>(left.count()));
  }
  return true;
}

}  // namespace vorn::test
