#include "core-engine/focus/DesktopEntries.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "model/RegularFile.h"

namespace vorn::engine {

namespace {

constexpr std::size_t maximumSize = std::size_t{1} << 20;
constexpr std::size_t longestIdentifier = 255;

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

// Those that are no absolute paths do not count ("XDG Base Directory Specification").
std::vector<std::string> dataFolders() {
  std::vector<std::string> folders;
  std::string own = variable("XDG_DATA_HOME");
  if (!own.starts_with('/')) own = variable("HOME") + "/.local/share";
  folders.push_back(own);
  std::string all = variable("XDG_DATA_DIRS");
  if (all.empty()) all = "/usr/local/share:/usr/share";
  for (std::string_view rest = all; !rest.empty();) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    if (rest.starts_with('/')) folders.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return folders;
}

std::optional<DesktopEntry> readEntry(const std::string& path) {
  Bytes text;
  if (readRegularFile(path, maximumSize, text)) return std::nullopt;
  return DesktopEntry::read({reinterpret_cast<const char*>(text.data()), text.size()});
}

std::string locale() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (std::string value = variable(name); !value.empty()) return value;
  }
  return {};
}

}  // namespace

std::optional<DesktopEntry> installedEntry(const std::string& identifier) {
  if (identifier.empty() || identifier.size() > longestIdentifier || identifier.starts_with('.') ||
      identifier.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
    return std::nullopt;
  }
  for (const std::string& folder : dataFolders()) {
    std::string name = identifier;
    for (std::size_t dash = 0;; ++dash) {
      std::string path = folder + "/applications/";
      if (auto entry = readEntry(path.append(name).append(".desktop"))) return entry;
      dash = name.find('-', dash);
      if (dash == std::string::npos) break;
      name[dash] = '/';
    }
  }
  return std::nullopt;
}

std::string installedName(const std::string& identifier) {
  const auto entry = installedEntry(identifier);
  return entry ? entry->localizedText("Name", locale()) : std::string();
}

}  // namespace vorn::engine
