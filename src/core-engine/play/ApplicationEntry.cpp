#include "core-engine/play/ApplicationEntry.h"

#include <utility>

#include "model/DesktopEntry.h"

namespace vorn::engine {

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
  if (!arguments) return fail("the desktop entry has no usable Exec");
  return LaunchCommand{std::move(*arguments), entry->text("Path"), entry->isTrue("Terminal")};
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

}  // namespace vorn::engine
