// Makes reports of the events of a node as libevdev hands them out, one after the other. Pure; one thread at a time.
#pragma once

#include <libevdev/libevdev.h>
#include <linux/input.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "core-engine/device/linux/KernelEvent.h"

namespace vorn::engine {

class ReportReader {
 public:
  // By the kernel's monotonic clock.
  using Time = std::chrono::microseconds;
  // What a node tells of at once, without its SYN_REPORT.
  using Handler = std::function<void(std::span<const KernelEvent> report, Time time)>;
  // What has become of the reading: nothing is there to be read any more, there may be more, or the node is gone.
  enum class Result : std::uint8_t { Drained, More, Gone };

  // next: libevdev_next_event() of the node, with flags and event. Ends with the first report behind so many events.
  template <typename Next>
  Result read(const Next& next, const Handler& handler, std::size_t maximumEvents) {
    unsigned flags = LIBEVDEV_READ_FLAG_NORMAL;
    for (std::size_t count = 0;;) {
      const bool isWhole = mReport.empty() && flags == LIBEVDEV_READ_FLAG_NORMAL;
      if (count >= maximumEvents && isWhole) return Result::More;
      input_event event{};
      const int status = next(flags, event);
      if (status == -EINTR) continue;
      if (status == -EAGAIN && flags == LIBEVDEV_READ_FLAG_SYNC) {
        finish(handler);
        flags = LIBEVDEV_READ_FLAG_NORMAL;
        continue;
      }
      if (status < 0) return status == -EAGAIN ? Result::Drained : Result::Gone;
      ++count;
      mTime = std::chrono::seconds(event.input_event_sec) + std::chrono::microseconds(event.input_event_usec);
      if (status == LIBEVDEV_READ_STATUS_SYNC && event.type == EV_SYN && event.code == SYN_DROPPED)
        flags = LIBEVDEV_READ_FLAG_SYNC;
      if (event.type == EV_SYN)
        finish(handler);
      else
        mReport.push_back({event.type, event.code, event.value});
    }
  }

 private:
  void finish(const Handler& handler) {
    if (mReport.empty()) return;
    // The handler may have the node read again.
    const std::vector<KernelEvent> report = std::move(mReport);
    mReport.clear();
    handler(report, mTime);
  }

  std::vector<KernelEvent> mReport;
  Time mTime{};
};

}  // namespace vorn::engine
