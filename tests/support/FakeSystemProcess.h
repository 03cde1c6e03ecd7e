// Drives a fake-system process, which plays ratbagd, UPower and logind; the headers of FakeSystem describe its
// commands. FAKE_SYSTEM_PROGRAM names the program.
#pragma once

#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace vorn::test {

class FakeSystemProcess {
 public:
  // Starts it on the system bus of this process and has it obey the commands.
  explicit FakeSystemProcess(const std::vector<std::string>& commands = {}) : mProcess({FAKE_SYSTEM_PROGRAM}) {
    mProcess.waitForLine([](const std::string& line) { return line == "ready"; });
    for (const std::string& command : commands) obey(command);
  }

  // Gives a command and waits until it is obeyed; false when it was not understood or the process is gone.
  bool obey(const std::string& command) {
    mProcess.writeLine(command);
    const auto answer = mProcess.waitForLine(
        [&](const std::string& line) { return line == "ok " + command || line == "error " + command; });
    return answer && answer->starts_with("ok ");
  }

  // The next "set ..." or "commit" of those that have come up to now; nothing where all are taken.
  std::optional<std::string> nextCall() {
    obey("ratbag garbage off");
    return mProcess.waitForLine([](const std::string& line) { return line.starts_with("set ") || line == "commit"; },
                                std::chrono::milliseconds(0));
  }

  void pause() { mProcess.signal(SIGSTOP); }
  void resume() { mProcess.signal(SIGCONT); }
  void end() {
    mProcess.signal(SIGKILL);
    mProcess.waitForEnd();
  }

 private:
  ChildProcess mProcess;
};

}  // namespace vorn::test
