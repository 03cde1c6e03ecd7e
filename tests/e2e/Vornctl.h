// The command line, as a person uses it beside the window. VORNCTL_PROGRAM names it.
#pragma once

#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace skarn::test {

// The first line that it prints; it has ended then.
inline std::string vornctl(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), VORNCTL_PROGRAM);
  vorn::test::ChildProcess program(arguments);
  const std::string line = program.waitForLine([](const std::string&) { return true; }).value_or(std::string());
  program.waitForEnd();
  return line;
}

// Whether it does what it is told; it has ended then.
inline bool runVornctl(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), VORNCTL_PROGRAM);
  return vorn::test::ChildProcess(arguments).waitForEnd() == 0;
}

}  // namespace skarn::test
