#include "core-engine/focus/LocalSocket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace vorn::engine {

namespace {

// 0 or the error.
int connectTo(int descriptor, const std::string& path, bool isAbstract) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::size_t first = isAbstract ? 1 : 0;
  if (path.empty() || path.size() + first >= sizeof(address.sun_path)) return ENAMETOOLONG;
  std::copy(path.begin(), path.end(), address.sun_path + first);
  const std::size_t length = offsetof(sockaddr_un, sun_path) + first + path.size() + (isAbstract ? 0 : 1);
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  return ::connect(descriptor, generic, static_cast<socklen_t>(length)) == 0 ? 0 : errno;
}

int connectToEither(int descriptor, const std::string& path) {
  const int error = connectTo(descriptor, path, false);
  return error == ENOENT ? connectTo(descriptor, path, true) : error;
}

int newSocket() {
  return ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
}

}  // namespace

FileDescriptor connectedSocket(const std::string& path) {
  int descriptor = newSocket();
  if (descriptor >= 0 && connectToEither(descriptor, path) != 0) {
    ::close(descriptor);
    descriptor = -1;
  }
  return FileDescriptor(descriptor);
}

bool isListenedTo(const std::string& path) {
  const FileDescriptor descriptor(newSocket());
  if (descriptor.get() < 0) return false;
  const int error = connectToEither(descriptor.get(), path);
  return error == 0 || error == EAGAIN;
}

}  // namespace vorn::engine
