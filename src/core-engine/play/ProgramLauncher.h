// Starts the programs that controls launch. One thread, the engine's.
#pragma once

#include <functional>
#include <string>

namespace vorn::engine {

class ProgramLauncher {
 public:
  using Failed = std::function<void(const std::string& reason)>;

  virtual ~ProgramLauncher() = default;

  // Starts the application at the path, an application bundle (a folder NAME.app) or a desktop entry (a file
  // NAME.desktop), and returns without waiting for it. When it cannot be started, failed is called with the reason,
  // within this call or later, but not after the end of the launcher.
  virtual void launch(const std::string& path, const Failed& failed) = 0;
};

}  // namespace vorn::engine
