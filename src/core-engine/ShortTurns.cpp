#include "core-engine/ShortTurns.h"

#include <linux/sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>

namespace vorn::engine {

namespace {

// As the system calls take it (sched_setattr(2)); the kernel's own header does not go with the C library's.
struct Attributes {
  std::uint32_t size;
  std::uint32_t policy;
  std::uint64_t flags;
  std::int32_t nice;
  std::uint32_t priority;
  std::uint64_t runtime;  // nanoseconds
  std::uint64_t deadline;
  std::uint64_t period;
};

}  // namespace

void askForShortTurns() {
  constexpr std::uint64_t shortestTurn = 100'000;
  Attributes attributes{};
  if (::syscall(SYS_sched_getattr, 0, &attributes, sizeof attributes, 0) < 0) return;
  if (attributes.policy != SCHED_NORMAL) return;
  attributes.runtime = shortestTurn;
  attributes.flags |= SCHED_FLAG_RESET_ON_FORK;
  ::syscall(SYS_sched_setattr, 0, &attributes, 0);
}

}  // namespace vorn::engine
