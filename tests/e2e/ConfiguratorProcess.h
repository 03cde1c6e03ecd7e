// The real configurator and the real engine on the test's own bus.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace vorn::test {

class ConfiguratorProcess {
 public:
  // platform: what it shows its window on, as Qt names it.
  explicit ConfiguratorProcess(const std::vector<std::string>& arguments = {"--verbose"},
                               const std::string& platform = "offscreen")
      : mProcess(commandLine(arguments, platform)) {}

  // Its next line that holds the text; empty when it ends or does not say it in time.
  std::string waitFor(const std::string& text, std::chrono::seconds deadline = std::chrono::seconds(60)) {
    return mProcess.waitForLine([&](const std::string& line) { return line.find(text) != std::string::npos; }, deadline)
        .value_or("");
  }
  // Asks it to end and gives the status.
  std::optional<int> quit() {
    mProcess.signal(15);
    return mProcess.waitForEnd();
  }
  ChildProcess& process() { return mProcess; }

 private:
  // Its words go to standard error, which the child process class does not read.
  static std::vector<std::string> commandLine(const std::vector<std::string>& arguments, const std::string& platform) {
    std::vector<std::string> line{"sh", "-c", "exec \"$@\" 2>&1", "sh", CONFIGURATOR_PROGRAM, "-platform", platform};
    line.insert(line.end(), arguments.begin(), arguments.end());
    return line;
  }

  ChildProcess mProcess;
};

// The real engine with its settings in a folder of the test's own.
class EngineProcess {
 public:
  explicit EngineProcess(const std::string& stateFolder, std::vector<std::string> further = {})
      : mProcess([&] {
          std::vector<std::string> line{"sh",           "-c",          "exec \"$@\" 2>&1", "sh",
                                        ENGINE_PROGRAM, "--state-dir", stateFolder};
          line.insert(line.end(), further.begin(), further.end());
          return line;
        }()) {
    mProcess.waitForLine([](const std::string& line) { return line.find("ready") != std::string::npos; });
  }
  ChildProcess& process() { return mProcess; }

 private:
  ChildProcess mProcess;
};

}  // namespace vorn::test
