// Starts applications in the ways of the desktop: those that can be are activated over the bus; others become units of
// the user's service manager, and where there is none, processes of their own.
#pragma once

#include <memory>
#include <string>

#include "core-engine/play/LaunchedProgram.h"
#include "core-engine/play/ProgramLauncher.h"
#include "core-engine/play/ProgramUnits.h"

namespace vorn::engine {

class DesktopProgramLauncher : public ProgramLauncher {
 public:
  // An engine that is a service starts nothing itself: it would be in the engine's sandbox. Any other gives programs
  // its own environment, as a terminal would.
  explicit DesktopProgramLauncher(bool isService);

  void launch(const std::string& path, const Failed& failed) override;

 private:
  void start(const LaunchedProgram& program, const Failed& failed);

  bool mIsService;
  ProgramUnits mUnits;
  std::shared_ptr<char> mAlive = std::make_shared<char>();
};

}  // namespace vorn::engine
