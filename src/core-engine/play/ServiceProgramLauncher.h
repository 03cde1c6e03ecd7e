// Starts applications through the user's service manager, as units of their own beside the engine's: an engine that
// runs in a sandbox would give it to its own children. What they end with is nobody's concern.
#pragma once

#include <string>

#include "core-engine/play/ProgramLauncher.h"
#include "ports/ServiceManager.h"

namespace vorn::engine {

class ServiceProgramLauncher : public ProgramLauncher {
 public:
  void launch(const std::string& path, const Failed& failed) override;

 private:
  ServiceStarter mStarter;
};

}  // namespace vorn::engine
