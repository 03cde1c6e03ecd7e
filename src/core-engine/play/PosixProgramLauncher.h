// Starts applications as processes of their own: in their own session, without the engine's files and signal handling,
// and without becoming its children. What they end with is nobody's concern.
#pragma once

#include <string>

#include "core-engine/play/ProgramLauncher.h"

namespace vorn::engine {

class PosixProgramLauncher : public ProgramLauncher {
 public:
  void launch(const std::string& path, const Failed& failed) override;
};

}  // namespace vorn::engine
