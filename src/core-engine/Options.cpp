#include "core-engine/Options.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>

#include "protocol/VirtualMouse.h"

namespace vorn::engine {

namespace {

struct Flag {
  std::string_view name;
  bool Options::*value;
};

constexpr Flag flags[] = {
    {"--help", &Options::isHelpWanted},
    {"--version", &Options::isVersionWanted},
    {"--verbose", &Options::isVerbose},
    {"--service", &Options::isService},
};

// Each of these takes a value; false when it cannot be used.
struct Setting {
  std::string_view name;
  bool (*set)(Options& options, std::string_view value);
};

bool setPath(std::string& path, std::string_view value) {
  std::error_code error;
  path = std::filesystem::absolute(std::filesystem::path(value), error).lexically_normal().string();
  return !value.empty() && !error;
}

bool setConnection(Options& options, std::string_view value) {
  if (value == virtualMouse::absent) {
    options.connection = Device::Connection::Absent;
  } else if (value == virtualMouse::wired) {
    options.connection = Device::Connection::Wired;
  } else if (value == virtualMouse::wireless) {
    options.connection = Device::Connection::Wireless;
  } else {
    return false;
  }
  return true;
}

constexpr Setting settings[] = {
    {"--state-dir", [](Options& options, std::string_view value) { return setPath(options.stateFolder, value); }},
    {"--defaults", [](Options& options, std::string_view value) { return setPath(options.defaultsFile, value); }},
    {"--device", setConnection},
};

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

std::variant<Options, std::string> parseOptions(std::span<const char* const> arguments) {
  Options options;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string_view argument = arguments[index];
    const auto flag =
        std::find_if(std::begin(flags), std::end(flags), [&](const Flag& each) { return each.name == argument; });
    if (flag != std::end(flags)) {
      options.*flag->value = true;
      continue;
    }
    const std::string_view name = argument.substr(0, argument.find('='));
    const auto setting =
        std::find_if(std::begin(settings), std::end(settings), [&](const Setting& each) { return each.name == name; });
    if (setting == std::end(settings)) return "unknown option " + std::string(argument);
    const bool isJoined = name.size() < argument.size();
    if (!isJoined && ++index == arguments.size()) return std::string(name) + " needs a value";
    const std::string_view value = isJoined ? argument.substr(name.size() + 1) : std::string_view(arguments[index]);
    if (!setting->set(options, value)) return std::string(name) + " cannot be \"" + std::string(value) + "\"";
  }
  return options;
}

std::string helpText() {
  return "Usage: vorn-core-engine [OPTION]...\n"
         "Owns the mouse and its settings, and serves the programs of this session that ask for them.\n"
         "\n"
         "  --device KIND      the mouse at the start: wired (default), wireless or absent\n"
         "  --state-dir FOLDER where the settings are kept (default: $XDG_STATE_HOME/vorn-core-engine,\n"
         "                     or ~/.local/state/vorn-core-engine)\n"
         "  --defaults FILE    the factory settings, for clients that bring none\n"
         "                     (default: ../share/skarn-configurator/Skarn.plist beside the program's folder)\n"
         "  --service          this is a unit of systemd: programs that controls launch become units of their own\n"
         "  --verbose          log every request and answer\n"
         "  --help             print this text and end\n"
         "  --version          print the version and end\n"
         "\n"
         "Ends with 0 on SIGTERM or SIGINT, with 1 when the session bus or the settings folder cannot be had or the\n"
         "bus goes away, and with 2 on a wrong command line. The log is on standard error.\n";
}

std::string usualStateFolder() {
  const std::string stateHome = environment("XDG_STATE_HOME");
  if (stateHome.starts_with('/')) return stateHome + "/vorn-core-engine";
  const std::string home = environment("HOME");
  return home.starts_with('/') ? home + "/.local/state/vorn-core-engine" : std::string();
}

std::string sharedFile(std::string_view path) {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return {};
  return (program.parent_path().parent_path() / "share/skarn-configurator" / path).string();
}

std::string usualDefaultsFile() {
  return sharedFile("Skarn.plist");
}

}  // namespace vorn::engine
