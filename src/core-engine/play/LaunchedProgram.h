// The program of an application, as the system starts it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorn::engine {

struct LaunchedProgram {
  std::string application;             // the name of its desktop entry or bundle, without the ending
  std::string path;                    // absolute; empty where it can only be activated
  std::vector<std::string> arguments;  // the first one is the program's name
  std::string folder;                  // where it starts; may be missing
  std::string busName{};               // of an application that is activated over the session bus; empty for others
  std::string missing{};               // why there is no path
  std::string startupID{};             // StartupID.h; empty for none
};

// What starts the application at the path, an application bundle (a folder NAME.app) or a desktop entry (a file
// NAME.desktop). A program that wants a terminal runs in the one of the desktop (Terminal.h). Nothing, with the reason
// in error, for any other path and where there is no such program.
std::optional<LaunchedProgram> launchedProgram(const std::string& path, std::string& error);

}  // namespace vorn::engine
