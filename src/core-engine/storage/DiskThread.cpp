#include "core-engine/storage/DiskThread.h"

#include <csignal>
#include <utility>

namespace vorn::engine {

DiskThread::DiskThread(Work ended) : mEnded(std::move(ended)), mThread(begin()) {}

DiskThread::~DiskThread() {
  wait();
}

// A signal that is sent to the process must find a thread that listens to it, and a new one inherits what is blocked.
std::jthread DiskThread::begin() {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  try {
    std::jthread thread([this](const std::stop_token& stop) { run(stop); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
  } catch (...) {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    throw;
  }
}

void DiskThread::start(Work work) {
  {
    const std::lock_guard lock(mMutex);
    mWork = std::move(work);
  }
  mChanged.notify_all();
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
