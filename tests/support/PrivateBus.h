// A session bus of our own for the life of this object, so that tests never meet the user's engine or each other; or
// what stands for the system's.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vorn::test {

class ChildProcess;

class PrivateBus {
 public:
  // A port whose bus name the daemon could start a service for; hasStartedService() tells whether it did.
  static constexpr std::string_view startablePort = "StartableTestPort";

  // Starts dbus-daemon with a configuration that knows no other service but those that are installed here, and points
  // DBUS_SESSION_BUS_ADDRESS of this process (and so of its children) at it, or another variable. Aborts the test
  // program with a message when that fails. Make it before other threads start.
  static constexpr const char* sessionAddress = "DBUS_SESSION_BUS_ADDRESS";
  static constexpr const char* systemAddress = "DBUS_SYSTEM_BUS_ADDRESS";
  explicit PrivateBus(const char* addressVariable = sessionAddress);
  ~PrivateBus();  // ends the daemon
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& address() const { return mAddress; }
  bool hasStartedService() const;
  // From now on the daemon runs this command, a program's whole path and its arguments, quoted as for a shell, when
  // somebody asks for the bus name. A command that ends with 0 counts as one whose name is still to come.
  void installService(const std::string& busName, const std::string& command) const;
  // The same with a whole activation file.
  void installServiceFile(const std::string& busName, const std::string& contents) const;
  // Stops the daemon where it is, as seen by programs on a machine that is busy elsewhere, and lets it go on.
  void pause();
  void resume();
  // Kills the daemon, as seen by programs whose bus goes away.
  void end();

 private:
  const char* mVariable;
  std::string mAddress;
  std::string mFolder;
  std::optional<std::string> mPreviousAddress;
  std::unique_ptr<ChildProcess> mDaemon;
};

}  // namespace vorn::test
