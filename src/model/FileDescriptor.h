// An open file descriptor that somebody owns, and system calls that signals interrupt.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace vorn {

class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : mDescriptor(descriptor) {}
  ~FileDescriptor() { close(); }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  int get() const { return mDescriptor; }  // negative for none
  // False, with the reason in errno, where the system has lost what was written.
  bool close() {
    const int descriptor = std::exchange(mDescriptor, -1);
    // On Linux the descriptor is released even when the call was interrupted.
    return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
  }

 private:
  int mDescriptor;
};

// What the call returns once no signal interrupts it any more; negative with the reason in errno.
template <typename Call>
auto withoutInterruption(Call call) {
  auto returned = call();
  while (returned < 0 && errno == EINTR) returned = call();
  return returned;
}

}  // namespace vorn
