// A thread for saves on a disk that takes its time: each sync waits until the test lets it go on.
#pragma once

#include <atomic>
#include <semaphore>

#include "core-engine/TestParts.h"

namespace vorn::engine::test {

class HeldDisk {
 public:
  // From now on the engine's syncs wait.
  void hold(MemoryFileSystem& disk) {
    disk.onSync = [this] {
      mReached.release();
      mGoOn.acquire();
    };
  }
  void awaitSync() { mReached.acquire(); }
  void goOn() { mGoOn.release(); }

  int ended() const { return mEnded; }  // works of the thread
  DiskThread& thread() { return mThread; }

 private:
  std::counting_semaphore<> mReached{0};
  std::counting_semaphore<> mGoOn{0};
  std::atomic<int> mEnded = 0;
  DiskThread mThread{[this] { ++mEnded; }};
};

}  // namespace vorn::engine::test
