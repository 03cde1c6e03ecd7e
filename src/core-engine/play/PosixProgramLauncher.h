// Starts applications as processes of their own: in their own session, without the engine's files and signal handling,
// and without becoming its children. What they end with is nobody's concern.
// A program that wants a terminal runs in x-terminal-emulator.
#pragma once

#include <string>

#include "core-engine/play/ProgramLauncher.h"

namespace vorn::engine {

class PosixProgramLauncher : public ProgramLauncher {
 public:
  bool launch(const std::string& path, std::string& error) override;
};

}  // namespace vorn::engine
