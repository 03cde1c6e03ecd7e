// The desktop entries that are installed, by their IDs. Reads files; any thread that changes no environment.
#pragma once

#include <optional>
#include <string>

#include "model/DesktopEntry.h"

namespace vorn::engine {

// The entry with this ID, without ".desktop", in the folders "applications" of XDG_DATA_HOME and XDG_DATA_DIRS, the
// first that is found; nothing where there is none. A dash in an ID may stand for a folder.
std::optional<DesktopEntry> installedEntry(const std::string& identifier);

// Its Name in the language of this process; empty where there is none.
std::string installedName(const std::string& identifier);

}  // namespace vorn::engine
