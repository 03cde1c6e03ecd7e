// A thread with a run loop of its own, for tests that need a second connection to the bus.
#pragma once

#include <functional>
#include <future>
#include <thread>

#include "ports/RunLoop.h"

namespace vorn::test {

class LoopThread {
 public:
  // Returns when the loop exists.
  LoopThread() {
    std::promise<RunLoop*> made;
    std::future<RunLoop*> loop = made.get_future();
    mThread = std::thread([this, &made] {
      RunLoop own;
      made.set_value(&own);
      own.run();
      mMayEnd.get_future().wait();  // the loop also ends with its bus, and others may still use it
    });
    mLoop = loop.get();
  }
  ~LoopThread() {
    mLoop->stop();
    mMayEnd.set_value();
    mThread.join();
  }
  LoopThread(const LoopThread&) = delete;
  LoopThread& operator=(const LoopThread&) = delete;

  RunLoop& loop() { return *mLoop; }

  // Runs the work on the thread and waits for its end.
  void run(const std::function<void()>& work) {
    std::promise<void> done;
    mLoop->perform([&] {
      work();
      done.set_value();
    });
    done.get_future().wait();
  }

 private:
  RunLoop* mLoop = nullptr;
  std::promise<void> mMayEnd;
  std::thread mThread;
};

}  // namespace vorn::test
