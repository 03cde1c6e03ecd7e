// How an application is started, read from its description.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::engine {

struct LaunchCommand {
  std::vector<std::string> arguments;  // the first one is the program: a path, or a name to look for in PATH
  std::string folder;                  // where it starts; empty for the user's home
  bool needsTerminal = false;
  friend bool operator==(const LaunchCommand&, const LaunchCommand&) = default;
};

// Reads a desktop entry. path is where it lies. Nothing, with the reason in error, for an entry that is no application,
// is hidden or has no usable Exec.
std::optional<LaunchCommand> readDesktopEntry(std::string_view text, const std::string& path, std::string& error);

// The name of the program of an application bundle, the "CFBundleExecutable" of its information dictionary. Nothing,
// with the reason in error, where there is none or it is more than a name.
std::optional<std::string> bundleExecutable(const PropertyList& information, std::string& error);

}  // namespace vorn::engine
