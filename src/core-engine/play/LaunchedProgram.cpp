#include "core-engine/play/LaunchedProgram.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "model/ApplicationEntry.h"

namespace vorn::engine {

namespace {

std::string environmentValue(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0' ? value : otherwise;
}

// The program's path; empty where PATH has no such program.
std::string foundProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return name.front() == '/' && isProgram(name) ? name : std::string();
  const std::string folders = environmentValue("PATH", "/usr/local/bin:/usr/bin:/bin");
  for (std::size_t start = 0; start <= folders.size();) {
    const std::size_t end = std::min(folders.find(':', start), folders.size());
    std::string path = folders.substr(start, end - start) + "/" + name;
    if (path.front() == '/' && path != "/" + name && isProgram(path)) return path;
    start = end + 1;
  }
  return {};
}

// A folder's name may end in a slash.
std::string applicationName(std::string path) {
  while (path.ends_with('/')) path.pop_back();
  return std::filesystem::path(path).stem().string();
}

}  // namespace

std::optional<LaunchedProgram> launchedProgram(const std::string& path, std::string& error) {
  auto command = launchCommandOf(path, error);
  if (!command) return std::nullopt;
  const std::string named = command->arguments.front();
  std::vector<std::string> arguments = std::move(command->arguments);
  if (command->needsTerminal) arguments.insert(arguments.begin(), {"x-terminal-emulator", "-e"});
  for (const std::string& program : {arguments.front(), named}) {
    if (!foundProgram(program).empty()) continue;
    error = "there is no program " + program;
    return std::nullopt;
  }
  std::string folder = command->folder.empty() ? environmentValue("HOME", "/") : command->folder;
  std::string program = foundProgram(arguments.front());
  return LaunchedProgram{applicationName(path), std::move(program), std::move(arguments), std::move(folder)};
}

}  // namespace vorn::engine
