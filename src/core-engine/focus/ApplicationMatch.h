// Which application a profile is tied to, and whether it is the one in front. Immutable; any thread.
//
// It is, where
//   - their identifiers are the same, without regard to case or to ".desktop",
//   - its window has the class that the desktop entry of the profile's application names (StartupWMClass), or that of
//     the game that the entry starts by its number,
//   - or their programs have the same file name. A program that runs others (an interpreter, a launcher) tells nothing.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/focus/Application.h"
#include "model/DesktopEntry.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class ApplicationMatch {
 public:
  // The desktop entry with this ID, without ".desktop"; nothing where there is none.
  using Entries = std::function<std::optional<DesktopEntry>(const std::string& identifier)>;

  // appInfo: the "AppInfo" of a profile, of any shape. Without an "application" it is tied to none. The entry is asked
  // for here, once.
  ApplicationMatch(const PropertyList& appInfo, const Entries& entries);

  // Whether it is tied to an application at all.
  bool isTied() const { return !mNames.empty() || !mProgram.empty(); }
  bool fits(const Application& application) const;

 private:
  std::vector<std::string> mNames;  // of windows, in small letters
  std::string mProgram;
};

// The name of the program of an executable, a path or a name; empty for one that runs other programs.
std::string programNameOf(std::string_view executable);

// An identifier without ".desktop".
std::string_view withoutEntrySuffix(std::string_view identifier);

}  // namespace vorn::engine
