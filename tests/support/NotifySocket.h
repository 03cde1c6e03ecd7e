// The socket on which a service manager hears its services (sd_notify(3)), for the processes that this one starts and
// for itself: NOTIFY_SOCKET names it as long as the object lives.
#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/TemporaryFolder.h"

namespace vorn::test {

class NotifySocket {
 public:
  NotifySocket() : mSocket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    mPath.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
    if (::bind(mSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) < 0) std::abort();
    ::setenv("NOTIFY_SOCKET", mPath.c_str(), 1);
  }
  ~NotifySocket() {
    ::unsetenv("NOTIFY_SOCKET");
    ::close(mSocket);
  }
  NotifySocket(const NotifySocket&) = delete;
  NotifySocket& operator=(const NotifySocket&) = delete;

  // The next message; empty when none comes within the time.
  std::string next(int milliseconds = 20'000) const {
    pollfd watched{mSocket, POLLIN, 0};
    std::string message(4096, '\0');
    const bool isThere = ::poll(&watched, 1, milliseconds) > 0;
    const ssize_t length = isThere ? ::recv(mSocket, message.data(), message.size(), 0) : 0;
    message.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return message;
  }

 private:
  engine::test::TemporaryFolder mFolder;
  std::string mPath = mFolder.path("notify");
  int mSocket;
};

}  // namespace vorn::test
