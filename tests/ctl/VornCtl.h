// The program vornctl as its users run it.
#pragma once

#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace vorn::ctl::test {

using Words = std::vector<std::string>;

inline Words vornctlCommandLine(const Words& words, const Words& environment = {}) {
  Words commandLine = {"env"};
  commandLine.insert(commandLine.end(), environment.begin(), environment.end());
  for (const std::string& word : Words{"/bin/sh", "-c", "exec \"$0\" \"$@\" 2>&1", VORNCTL_PROGRAM}) {
    commandLine.push_back(word);
  }
  commandLine.insert(commandLine.end(), words.begin(), words.end());
  return commandLine;
}

struct Ended {
  int status = -1;
  std::string output;  // standard output and standard error
  pid_t id = -1;
};

inline Ended runVornCtl(const Words& words, const Words& environment = {}) {
  vorn::test::ChildProcess process(vornctlCommandLine(words, environment));
  Ended run;
  while (const auto line = process.waitForLine([](const std::string&) { return true; })) run.output += *line + "\n";
  run.status = process.waitForEnd().value_or(-1);
  run.id = process.id();
  return run;
}

}  // namespace vorn::ctl::test
