// A thread for what waits for the disk, so that the engine's own goes on hearing its clients meanwhile. It sleeps while
// nothing is to be done. All functions belong to the thread that made it, the owner.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace vorn::engine {

class DiskThread {
 public:
  using Work = std::function<void()>;

  // Begins the thread, which takes no signals. ended is called on it after each work. Throws std::system_error where
  // the system has no thread left.
  explicit DiskThread(Work ended);
  // Waits for the work under way.
  ~DiskThread();
  DiskThread(const DiskThread&) = delete;
  DiskThread& operator=(const DiskThread&) = delete;

  // Does the work on the disk thread. Only after the work before has ended.
  void start(Work work);
  // Whether the work has ended, and all that it did is to be seen here.
  bool isIdle() const;
  // Blocks until it has.
  void wait() const;

 private:
  std::jthread begin();
  void run(const std::stop_token& stop);

  Work mEnded;
  mutable std::mutex mMutex;
  mutable std::condition_variable_any mChanged;
  Work mWork;  // guarded by mMutex; empty while nothing is to be done
  std::jthread mThread;
};

}  // namespace vorn::engine
