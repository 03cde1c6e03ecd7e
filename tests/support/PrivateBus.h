// A session bus of our own for the life of this object, so that tests never meet the user's engine or each other.
#pragma once

#include <string>
#include <sys/types.h>

namespace vorn::test {

class PrivateBus {
 public:
  // Starts dbus-daemon with a configuration that starts no services, and points DBUS_SESSION_BUS_ADDRESS of this
  // process (and so of its children) at it. Aborts the test program with a message when that fails.
  PrivateBus();
  ~PrivateBus();  // ends the daemon
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& address() const { return mAddress; }

 private:
  std::string mAddress;
  std::string mFolder;
  pid_t mDaemon = -1;
};

}  // namespace vorn::test
