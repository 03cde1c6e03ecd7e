// The command line of vorn-core-engine.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "core-engine/device/Device.h"

namespace vorn::engine {

struct Options {
  bool isHelpWanted = false;
  bool isVersionWanted = false;
  bool isVerbose = false;
  bool isService = false;    // runs as a unit of the user's service manager
  std::string stateFolder;   // empty: the usual one
  std::string defaultsFile;  // empty: the one beside the program
  Device::Connection connection = Device::Connection::Wired;
};

// What the arguments after the program's name ask for, or one line that says what is wrong with them. A value follows
// its option as the next argument or after "=".
std::variant<Options, std::string> parseOptions(std::span<const char* const> arguments);

// The text of --help, with its last line break.
std::string helpText();

// The folder of the settings where none is asked for: $XDG_STATE_HOME/vorn-core-engine, or
// ~/.local/state/vorn-core-engine where that variable is unset or no absolute path (XDG Base Directory Specification
// 0.8). Empty where there is no home folder either.
std::string usualStateFolder();

// The path of a file that was installed or built with this program, by its path in the folder that they share; empty
// when the program cannot find itself.
std::string sharedFile(std::string_view path);

// The default-settings file among them.
std::string usualDefaultsFile();

}  // namespace vorn::engine
