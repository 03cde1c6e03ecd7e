#include "core-engine/device/linux/LongWait.h"

#include <gtest/gtest.h>

#include "core-engine/TestParts.h"

namespace vorn::engine::test {
namespace {

class LongWaitTest : public testing::Test {
 protected:
  ManualScheduler scheduler;
  int count = 0;
  LongWait wait{scheduler, [this] { ++count; }};
};

TEST_F(LongWaitTest, TellsOnceOfAWaitThatLasts) {
  wait.set(true);
  scheduler.advance(LongWait::patience - Scheduler::Duration(1));
  EXPECT_FALSE(wait.isLong());
  EXPECT_EQ(count, 0);
  scheduler.advance(Scheduler::Duration(1));
  EXPECT_TRUE(wait.isLong());
  wait.set(true);
  scheduler.advance(10 * LongWait::patience);
  EXPECT_EQ(count, 1);
}

TEST_F(LongWaitTest, TellsNothingOfAShortOne) {
  wait.set(true);
  scheduler.advance(LongWait::patience / 2);
  wait.set(false);
  scheduler.advance(LongWait::patience);
  EXPECT_EQ(count, 0);
  wait.set(true);
  scheduler.advance(LongWait::patience / 2);
  EXPECT_FALSE(wait.isLong());
}

TEST_F(LongWaitTest, IsNotLengthenedByAskingAgain) {
  wait.set(true);
  scheduler.advance(LongWait::patience / 2);
  wait.set(true);
  scheduler.advance(LongWait::patience / 2);
  EXPECT_TRUE(wait.isLong());
}

TEST_F(LongWaitTest, BeginsAnewAfterItsEnd) {
  wait.set(true);
  scheduler.advance(LongWait::patience);
  wait.set(false);
  EXPECT_FALSE(wait.isLong());
  wait.set(true);
  EXPECT_FALSE(wait.isLong());
  scheduler.advance(LongWait::patience);
  EXPECT_TRUE(wait.isLong());
  EXPECT_EQ(count, 2);
}

TEST_F(LongWaitTest, ThatIsGoneTellsNothing) {
  {
    LongWait other(scheduler, [this] { ++count; });
    other.set(true);
  }
  scheduler.advance(LongWait::patience);
  EXPECT_EQ(count, 0);
}

}  // namespace
}  // namespace vorn::engine::test
