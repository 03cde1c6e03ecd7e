// Starts the programs that controls launch. One thread, the engine's.
#pragma once

#include <string>

namespace vorn::engine {

class ProgramLauncher {
 public:
  virtual ~ProgramLauncher() = default;

  // Starts the application at the path, an application bundle (a folder NAME.app) or a desktop entry (a file
  // NAME.desktop), and returns without waiting for it. False, with the reason in error, when it cannot be started.
  virtual bool launch(const std::string& path, std::string& error) = 0;
};

}  // namespace vorn::engine
