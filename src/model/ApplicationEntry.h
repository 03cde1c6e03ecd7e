// How an application is started, read from its description: an application bundle, that is a folder NAME.app with an
// Info.plist, or a desktop entry, a file NAME.desktop. What the engine launches, and what may be assigned to a control.
// Pure but for the files themselves; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

struct LaunchCommand {
  // The first one is the program: a path, or a name to look for in PATH. Empty where it can only be activated.
  std::vector<std::string> arguments;
  std::string folder;  // where it starts; empty for the user's home
  bool needsTerminal = false;
  std::string tryProgram{};    // a program without which the application counts as not installed; empty for none
  std::string busName{};       // of an application that can be activated over the session bus; empty for others
  bool takesStartupID = true;  // false for one that says that it does not know startup notification
  friend bool operator==(const LaunchCommand&, const LaunchCommand&) = default;
};

// How the application at the path is started. Nothing, with the reason in error, for a path that is not absolute or
// leads to neither of the two. The program of a bundle is that of the "CFBundleExecutable" in its Contents/Info.plist
// (or Info.plist), in the folder MacOS beside it, or beside it; whether there is such a program is another question.
std::optional<LaunchCommand> launchCommandOf(const std::string& path, std::string& error);

// Whether the path leads to a file that this process may execute.
bool isProgram(const std::string& path);

// Reads a desktop entry. path is where it lies. Nothing, with the reason in error, for an entry that is no application,
// is hidden or has neither a usable Exec nor DBusActivatable and a file name that is a bus name (Desktop Entry
// Specification 1.5, "D-Bus Activation").
std::optional<LaunchCommand> readDesktopEntry(std::string_view text, const std::string& path, std::string& error);

// The name of the program of an application bundle, the "CFBundleExecutable" of its information dictionary. Nothing,
// with the reason in error, where there is none or it is more than a name.
std::optional<std::string> bundleExecutable(const PropertyList& information, std::string& error);

}  // namespace vorn
