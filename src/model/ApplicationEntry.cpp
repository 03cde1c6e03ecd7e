#include "model/ApplicationEntry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "model/ApplicationBundle.h"
#include "model/DesktopEntry.h"
#include "model/PropertyListCodec.h"
#include "model/RegularFile.h"

namespace vorn {

namespace {

constexpr std::size_t maximumDescriptionSize = std::size_t{1} << 20;

std::optional<LaunchCommand> commandOfBundle(const std::string& path, std::string& error) {
  for (const std::string& folder : {path + "/Contents", path}) {
    Bytes bytes;
    if (readRegularFile(folder + "/Info.plist", maximumDescriptionSize, bytes)) continue;
    const auto information = decodePropertyList(bytes, &error);
    if (!information) return std::nullopt;
    const auto name = bundleExecutable(*information, error);
    if (!name) return std::nullopt;
    const std::string usual = folder + "/MacOS/" + *name;
    return LaunchCommand{{isProgram(usual) ? usual : folder + "/" + *name}, {}, false};
  }
  error = "no application bundle with an Info.plist";
  return std::nullopt;
}

std::optional<LaunchCommand> commandOfEntry(const std::string& path, std::string& error) {
  Bytes bytes;
  if (const std::error_code failure = readRegularFile(path, maximumDescriptionSize, bytes)) {
    error = reasonOf(failure);
    return std::nullopt;
  }
  return readDesktopEntry(std::string(bytes.begin(), bytes.end()), path, error);
}

// A well-known one (D-Bus specification, "Bus names").
bool isBusName(std::string_view name) {
  constexpr std::size_t maximumLength = 255;
  const auto isElement = [](std::string_view element) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    const auto mayStand = [&](char character) {
      return isDigit(character) || (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
             character == '_' || character == '-';
    };
    return !element.empty() && !isDigit(element.front()) && std::ranges::all_of(element, mayStand);
  };
  if (name.size() > maximumLength || name.find('.') == std::string_view::npos) return false;
  while (true) {
    const std::size_t end = name.find('.');
    if (!isElement(name.substr(0, end))) return false;
    if (end == std::string_view::npos) return true;
    name.remove_prefix(end + 1);
  }
}

// The name of the entry's file, where it is the bus name of an application that can be activated.
std::string busNameOf(const DesktopEntry& entry, std::string_view path) {
  if (!entry.isTrue("DBusActivatable")) return {};
  std::string_view name = path.substr(path.rfind('/') + 1);
  name = name.substr(0, name.rfind('.'));
  return isBusName(name) ? std::string(name) : std::string();
}

}  // namespace

bool isProgram(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::optional<LaunchCommand> launchCommandOf(const std::string& path, std::string& error) {
  std::string_view name = path;
  while (name.size() > 1 && name.back() == '/') name.remove_suffix(1);
  if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos) {
    error = "not an absolute path";
    return std::nullopt;
  }
  if (hasBundleName(name)) return commandOfBundle(std::string(name), error);
  if (name.ends_with(".desktop")) return commandOfEntry(std::string(name), error);
  error = "neither an application bundle nor a desktop entry";
  return std::nullopt;
}

std::optional<LaunchCommand> readDesktopEntry(std::string_view text, const std::string& path, std::string& error) {
  const auto fail = [&error](const char* reason) {
    error = reason;
    return std::nullopt;
  };
  const auto entry = DesktopEntry::read(text);
  if (!entry) return fail("no desktop entry");
  if (entry->text("Type") != "Application") return fail("no desktop entry of an application");
  if (entry->isTrue("Hidden")) return fail("the desktop entry is hidden");
  auto arguments = entry->command(path);
  std::string busName = busNameOf(*entry, path);
  if (!arguments && busName.empty()) return fail("the desktop entry has no usable Exec");
  return LaunchCommand{std::move(arguments).value_or(std::vector<std::string>()),
                       entry->text("Path"),
                       entry->isTrue("Terminal"),
                       entry->text("TryExec"),
                       std::move(busName),
                       entry->text("StartupNotify") != "false"};
}

std::optional<std::string> bundleExecutable(const PropertyList& information, std::string& error) {
  std::string name = information["CFBundleExecutable"].toString();
  if (name.empty() || name == "." || name == ".." ||
      name.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
    error = "the application bundle names no program";
    return std::nullopt;
  }
  return name;
}

}  // namespace vorn
