#include "core-engine/storage/DiskThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <semaphore>
#include <string>
#include <vector>

namespace vorn::engine::test {
namespace {

TEST(DiskThreadTest, WorksElsewhereAndTellsTheEnd) {
  std::binary_semaphore isOver{0};
  DiskThread disk([&] { isOver.release(); });
  EXPECT_TRUE(disk.isIdle());
  std::thread::id worker;
  disk.start([&] { worker = std::this_thread::get_id(); });
  isOver.acquire();
  EXPECT_TRUE(disk.isIdle());
  EXPECT_NE(worker, std::this_thread::get_id());
  EXPECT_NE(worker, std::thread::id());
}

TEST(DiskThreadTest, DoesNotKeepItsOwnerWaitingUntilAskedTo) {
  std::binary_semaphore goOn{0};
  std::vector<std::string> done;
  DiskThread disk([] {});
  disk.start([&] {
    goOn.acquire();
    done.emplace_back("first");
  });
  EXPECT_FALSE(disk.isIdle());
  goOn.release();
  disk.wait();
  EXPECT_EQ(done, std::vector<std::string>{"first"});
  disk.start([&] { done.emplace_back("second"); });
  disk.wait();
  EXPECT_EQ(done, (std::vector<std::string>{"first", "second"}));
}

TEST(DiskThreadTest, EndsItsWorkBeforeItGoes) {
  bool isDone = false;
  {
    DiskThread disk([] {});
    disk.start([&] { isDone = true; });
  }
  EXPECT_TRUE(isDone);
}

TEST(DiskThreadTest, TakesNoSignals) {
  DiskThread disk([] {});
  sigset_t blocked;
  sigemptyset(&blocked);
  disk.start([&] { pthread_sigmask(SIG_SETMASK, nullptr, &blocked); });
  disk.wait();
  for (const int signal : {SIGTERM, SIGINT}) EXPECT_EQ(sigismember(&blocked, signal), 1);
  sigset_t own;
  pthread_sigmask(SIG_SETMASK, nullptr, &own);
  EXPECT_EQ(sigismember(&own, SIGTERM), 0);
}

TEST(DiskThreadTest, NeedsNoFurtherThreadForItsFirstWork) {
  DiskThread disk([] {});
  const auto threads = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator());
  };
  const auto atFirst = threads();
  disk.start([] {});
  disk.wait();
  EXPECT_EQ(threads(), atFirst);
}

TEST(DiskThreadTest, GoesWithoutEverHavingWorked) {
  std::atomic<int> ended = 0;
  {
    const DiskThread disk([&] { ++ended; });
  }
  EXPECT_EQ(ended, 0);
}

}  // namespace
}  // namespace vorn::engine::test
