// The user's service manager: systemd's, as org.freedesktop.systemd1 on the session bus. Where there is none, nothing
// here waits for it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

// Tells the manager how the unit of this process stands, in lines of sd_notify(3): "READY=1", "STATUS=..."; nothing is
// sent where no manager asks for it (NOTIFY_SOCKET). Any thread.
void notifyServiceManager(const std::string& lines);

// The name of a unit for a program of the desktop, app-LAUNCHER-APPLICATION@SUFFIX.service ("Desktop Environment
// Integration" of systemd's documentation). Bytes of the application's name that cannot stand there are written as
// \xHH; a long name is cut.
std::string applicationUnit(std::string_view launcher, std::string_view application, std::string_view suffix);

// A program that the manager runs as a unit of its own, which is gone when the last of its processes is.
struct TransientService {
  std::string unit;  // name.service
  std::string description;
  std::string program;                 // absolute path
  std::vector<std::string> arguments;  // the first one is the program's name
  std::string folder;                  // where it starts; the root folder where this is missing
  // NAME=VALUE, on top of the manager's own environment; what the manager takes for no variable is left out.
  std::vector<std::string> environment{};
  std::vector<std::string> withoutVariables{};  // names of what it does not get of the manager's environment
};

// How the start of a transient service has ended.
struct StartedService {
  std::string error{};     // in English; empty when the program runs
  bool isUntaken = false;  // there is no manager, or it has refused: nothing runs, and nothing will
};

// Starts transient services through this thread's connection. All calls, and all that is called back from its run loop,
// belong to the thread that created it.
class ServiceStarter {
 public:
  // Called once, later.
  using Started = std::function<void(const StartedService& start)>;

  ServiceStarter();
  ~ServiceStarter();  // forgets whatever is on its way
  ServiceStarter(const ServiceStarter&) = delete;
  ServiceStarter& operator=(const ServiceStarter&) = delete;

  // Sends the request and waits for nothing. False, with the reason in error, when it cannot be sent; started is not
  // called then.
  bool start(const TransientService& service, Started started, std::string& error);

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
