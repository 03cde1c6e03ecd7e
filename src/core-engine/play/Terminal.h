// The terminal that the desktop names for programs that want one.
#pragma once

#include <string>
#include <vector>

namespace vorn::engine {

// The command that runs the command behind it in a terminal: xdg-terminal-exec where that is installed, which knows
// what a person has chosen; on KDE's desktop the one of its settings ("TerminalApplication" in kdeglobals), or konsole;
// else x-terminal-emulator, which the system or its administrator has chosen, whether it is installed or not.
std::vector<std::string> terminalCommand();

}  // namespace vorn::engine
