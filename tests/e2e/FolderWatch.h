// Tells what happens to the files of a folder, on a thread of its own.
#pragma once

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <utility>

namespace vorn::test {

class FolderWatch {
 public:
  // Calls reached once, when so many things have happened in the folder: a file was made, written, renamed or removed.
  // The folder exists.
  FolderWatch(const std::string& folder, int count, std::function<void()> reached)
      : mWatch(::inotify_init1(IN_CLOEXEC)), mEnd(::eventfd(0, EFD_CLOEXEC)) {
    constexpr std::uint32_t what = IN_CREATE | IN_MODIFY | IN_MOVE | IN_CLOSE_WRITE | IN_DELETE;
    if (mWatch < 0 || mEnd < 0 || ::inotify_add_watch(mWatch, folder.c_str(), what) < 0) std::abort();
    mThread = std::thread([this, count, reached = std::move(reached)] { run(count, reached); });
  }
  ~FolderWatch() {
    ::eventfd_write(mEnd, 1);
    mThread.join();
    ::close(mEnd);
    ::close(mWatch);
  }
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

 private:
  void run(int count, const std::function<void()>& reached) const {
    std::array<pollfd, 2> ready{{{mWatch, POLLIN, 0}, {mEnd, POLLIN, 0}}};
    while (count > 0) {
      if (::poll(ready.data(), ready.size(), -1) < 0) continue;
      if (ready[1].revents != 0) return;
      count -= eventsRead();
    }
    reached();
  }

  int eventsRead() const {
    alignas(inotify_event) std::array<char, 4096> buffer;
    const ssize_t size = ::read(mWatch, buffer.data(), buffer.size());
    int count = 0;
    for (ssize_t at = 0; at < size; ++count) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    return count;
  }

  int mWatch;
  int mEnd;
  std::thread mThread;
};

}  // namespace vorn::test
