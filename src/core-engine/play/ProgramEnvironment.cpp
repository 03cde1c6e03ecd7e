#include "core-engine/play/ProgramEnvironment.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "core-engine/play/ProgramSearch.h"

namespace vorn::engine {

namespace {

constexpr const char* startupVariable = "DESKTOP_STARTUP_ID";

constexpr std::array<std::string_view, 24> ownVariables = {
    // The engine's own start. A startup ID has the time of then, and would keep a window in the background.
    startupVariable, "XDG_ACTIVATION_TOKEN", "GIO_LAUNCHED_DESKTOP_FILE", "GIO_LAUNCHED_DESKTOP_FILE_PID",
    "DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE",
    // Its unit (systemd.exec(5)).
    "NOTIFY_SOCKET", "INVOCATION_ID", "JOURNAL_STREAM", "LISTEN_PID", "LISTEN_FDS", "LISTEN_FDNAMES", "MAINPID",
    "MANAGERPID", "SYSTEMD_EXEC_PID", "WATCHDOG_PID", "WATCHDOG_USEC", "MEMORY_PRESSURE_WATCH", "MEMORY_PRESSURE_WRITE",
    "RUNTIME_DIRECTORY",
    // The shell.
    "PWD", "OLDPWD", "SHLVL", "_"};

bool isOwn(std::string_view assignment) {
  return std::ranges::find(ownVariables, assignment.substr(0, assignment.find('='))) != ownVariables.end();
}

}  // namespace

std::vector<std::string> programEnvironment(const std::string& startupID) {
  std::vector<std::string> environment;
  for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
    if (!isOwn(*variable)) environment.emplace_back(*variable);
  }
  if (!startupID.empty()) environment.push_back(std::string(startupVariable) + "=" + startupID);
  return environment;
}

std::vector<std::string> missingDisplays() {
  std::vector<std::string> missing;
  const auto note = [&missing](const char* name) {
    if (environmentValue(name).empty()) missing.emplace_back(name);
  };
  if (environmentValue("DISPLAY").empty() && environmentValue("WAYLAND_DISPLAY").empty()) return missing;
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY"}) note(name);
  return missing;
}

}  // namespace vorn::engine
