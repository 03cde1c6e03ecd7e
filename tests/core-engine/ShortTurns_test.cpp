#include "core-engine/ShortTurns.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <thread>

namespace vorn::engine::test {
namespace {

// Of the calling thread, in nanoseconds; 0 where the system does not tell.
std::uint64_t turn() {
  struct {
    std::uint32_t size, policy;
    std::uint64_t flags;
    std::int32_t nice;
    std::uint32_t priority;
    std::uint64_t runtime, deadline, period;
  } attributes{};
  return ::syscall(SYS_sched_getattr, 0, &attributes, sizeof attributes, 0) < 0 ? 0 : attributes.runtime;
}

TEST(ShortTurnsTest, AreGivenToTheThreadThatAsksAndToNothingThatItStarts) {
  const std::uint64_t usual = turn();
  if (usual == 0) GTEST_SKIP() << "the system has no turns of a length of one's own";
  std::uint64_t own = 0;
  std::uint64_t started = 0;
  std::thread([&] {
    askForShortTurns();
    own = turn();
    std::thread([&] { started = turn(); }).join();
  }).join();
  EXPECT_LT(own, usual);
  EXPECT_EQ(started, usual);
  EXPECT_EQ(turn(), usual);
}

}  // namespace
}  // namespace vorn::engine::test
