// The environment of programs that an engine launches in its own session.
#pragma once

#include <string>
#include <vector>

namespace vorn::engine {

// NAME=VALUE: the environment of the engine without what was meant for the engine alone (its start, its unit, the shell
// that it was typed into), and with the startup ID, where that is not empty.
std::vector<std::string> programEnvironment(const std::string& startupID);

// The variables that name a display and that an engine on another one does not have: what a manager of other programs
// has under these names belongs to another display. None where the engine has no display of its own.
std::vector<std::string> missingDisplays();

}  // namespace vorn::engine
