// What a mouse of the machine sends reaches the window in front as well, which may tell of it once more. This knows
// what was told already. Pure: the time is given. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <tuple>

#include "core-engine/Scheduler.h"
#include "core-engine/device/Device.h"

namespace vorn::engine {

class EchoFilter {
 public:
  enum class Origin : std::uint8_t { Device, Window };

  // What comes from both within this time, in either order, is the same.
  static constexpr Scheduler::Duration echoTime = std::chrono::seconds(1);
  // Of one key so many are remembered; of more, the oldest are forgotten.
  static constexpr std::size_t maximumWaiting = 256;

  // Whether this has been told by the other one and waited for its echo; each press and each release has one. To be
  // asked once for each key, in the order of the times.
  bool isEcho(Origin origin, const KeyChanged& key, Scheduler::Duration now);
  void clear() { mWaiting.clear(); }

 private:
  using Change = std::tuple<std::uint16_t, std::uint16_t, bool>;  // usage page, usage, whether it is pressed
  // Of one origin alone: what comes from the other takes one away.
  struct Waiting {
    Origin origin{};
    std::deque<Scheduler::Duration> times;
  };
  std::map<Change, Waiting> mWaiting;
};

}  // namespace vorn::engine
