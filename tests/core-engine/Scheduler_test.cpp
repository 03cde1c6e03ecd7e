#include "core-engine/Scheduler.h"

#include <gtest/gtest.h>

#include <string>

#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;

TEST(SchedulerTest, RunsWorkInTheOrderOfItsTimesAndCancelsTheRest) {
  const vorn::test::PrivateBus bus;
  RunLoop loop;
  RunLoopScheduler scheduler(loop);
  std::string order;
  const auto start = scheduler.now();
  scheduler.after(20ms, [&] {
    order += "c";
    loop.stop();
  });
  const auto cancelled = scheduler.after(1ms, [&] { order += "x"; });
  scheduler.after(10ms, [&] { order += "b"; });
  scheduler.after(0ms, [&] {
    order += "a";
    scheduler.after(0ms, [&] { order += "1"; });
  });
  EXPECT_NE(cancelled, 0U);
  scheduler.cancel(cancelled);
  EXPECT_EQ(order, "");
  EXPECT_TRUE(loop.run());
  EXPECT_EQ(order, "a1bc");
  EXPECT_GE(scheduler.now() - start, 20ms);
  scheduler.cancel(cancelled);
}

}  // namespace
}  // namespace vorn::engine::test
