// The program of an application, as the system starts it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorn::engine {

struct LaunchedProgram {
  std::string application;             // the name of its desktop entry or bundle, without the ending
  std::string path;                    // absolute
  std::vector<std::string> arguments;  // the first one is the program's name
  std::string folder;                  // where it starts; may be missing
};

// What starts the application at the path, an application bundle (a folder NAME.app) or a desktop entry (a file
// NAME.desktop). A program that wants a terminal runs in x-terminal-emulator. Nothing, with the reason in error, for
// any other path and where there is no such program.
std::optional<LaunchedProgram> launchedProgram(const std::string& path, std::string& error);

}  // namespace vorn::engine
