#include "core-engine/play/LaunchedProgram.h"

#include <filesystem>
#include <utility>

#include "core-engine/play/ProgramSearch.h"
#include "core-engine/play/StartupID.h"
#include "core-engine/play/Terminal.h"
#include "model/ApplicationEntry.h"

namespace vorn::engine {

namespace {

// A folder's name may end in a slash.
std::string applicationName(std::string path) {
  while (path.ends_with('/')) path.pop_back();
  return std::filesystem::path(path).stem().string();
}

std::string noProgram(const std::string& name) {
  return "there is no program " + name;
}

// What the system runs. Why it cannot; empty where it can.
std::string findProgram(const LaunchCommand& command, LaunchedProgram& program) {
  if (command.arguments.empty()) return "the desktop entry has no usable Exec";
  program.arguments = command.arguments;
  if (command.needsTerminal) {
    const std::vector<std::string> terminal = terminalCommand();
    program.arguments.insert(program.arguments.begin(), terminal.begin(), terminal.end());
  }
  for (const std::string& each : {program.arguments.front(), command.arguments.front()}) {
    if (foundProgram(each).empty()) return noProgram(each);
  }
  program.path = foundProgram(program.arguments.front());
  return {};
}

}  // namespace

std::optional<LaunchedProgram> launchedProgram(const std::string& path, std::string& error) {
  const auto command = launchCommandOf(path, error);
  if (!command) return std::nullopt;
  if (!command->tryProgram.empty() && foundProgram(command->tryProgram).empty()) {
    error = noProgram(command->tryProgram);
    return std::nullopt;
  }
  LaunchedProgram program{applicationName(path), {}, {}, command->folder, command->busName};
  if (program.folder.empty()) program.folder = environmentValue("HOME", "/");
  program.missing = findProgram(*command, program);
  if (!program.missing.empty() && program.busName.empty()) {
    error = program.missing;
    return std::nullopt;
  }
  if (command->takesStartupID) program.startupID = startupID(program.application);
  return program;
}

}  // namespace vorn::engine
