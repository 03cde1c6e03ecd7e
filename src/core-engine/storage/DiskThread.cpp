#include "core-engine/storage/DiskThread.h"

#include <utility>

namespace vorn::engine {

DiskThread::~DiskThread() {
  wait();
}

void DiskThread::start(Work work) {
  {
    const std::lock_guard lock(mMutex);
    mWork = std::move(work);
  }
  mChanged.notify_all();
  if (!mThread.joinable()) mThread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

bool DiskThread::isIdle() const {
  const std::lock_guard lock(mMutex);
  return !mWork;
}

void DiskThread::wait() const {
  std::unique_lock lock(mMutex);
  mChanged.wait(lock, [this] { return !mWork; });
}

void DiskThread::run(const std::stop_token& stop) {
  std::unique_lock lock(mMutex);
  while (mChanged.wait(lock, stop, [this] { return static_cast<bool>(mWork); })) {
    lock.unlock();
    mWork();
    lock.lock();
    mWork = nullptr;
    mChanged.notify_all();
    lock.unlock();
    mEnded();
    lock.lock();
  }
}

}  // namespace vorn::engine
