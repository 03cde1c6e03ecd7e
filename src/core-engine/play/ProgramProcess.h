// Starts programs as processes of their own: in their own session, without the engine's files and signal handling, and
// without becoming its children. What they end with is nobody's concern.
#pragma once

#include <string>

#include "core-engine/play/LaunchedProgram.h"

namespace vorn::engine {

// Why the program, one with a path, cannot be started; empty when it runs.
std::string startProcess(const LaunchedProgram& program);

}  // namespace vorn::engine
