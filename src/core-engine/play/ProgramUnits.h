// Starts programs through the user's service manager, as units of their own beside the engine's: in a sandbox the
// engine would give it to its own children, and without one they would count as parts of the engine. What they end with
// is nobody's concern.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core-engine/play/LaunchedProgram.h"
#include "ports/ServiceManager.h"

namespace vorn::engine {

class ProgramUnits {
 public:
  // What environment programs get.
  enum class Environment : std::uint8_t {
    OfManager,  // that of the session as the manager knows it
    OfEngine,   // the engine's own on top of it
  };
  struct Failure {
    std::string reason;
    bool isUntaken = false;  // the manager is not there or has refused: nothing runs, and nothing will
  };
  using Failed = std::function<void(const Failure& failure)>;

  explicit ProgramUnits(Environment environment) : mEnvironment(environment) {}

  // Returns without waiting. Where the program, one with a path, cannot be started, failed is called, within this call
  // or later, but not after the end of the units.
  void start(const LaunchedProgram& program, const Failed& failed);

 private:
  Environment mEnvironment;
  ServiceStarter mStarter;
};

}  // namespace vorn::engine
