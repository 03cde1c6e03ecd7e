#include "core-engine/play/Terminal.h"

#include <cstddef>
#include <string_view>

#include "core-engine/play/ProgramSearch.h"
#include "model/PropertyListCodec.h"
#include "model/RegularFile.h"

namespace vorn::engine {

namespace {

constexpr std::size_t maximumSettings = std::size_t{1} << 20;

bool isDesktop(std::string_view name) {
  const std::string desktops = ":" + environmentValue("XDG_CURRENT_DESKTOP") + ":";
  return desktops.find(":" + std::string(name) + ":") != std::string::npos;
}

// The value of a key in the group "General" of KDE's settings of a person; empty where there is none.
std::string generalSetting(std::string_view key) {
  const std::string folder = environmentValue("XDG_CONFIG_HOME", (environmentValue("HOME") + "/.config").c_str());
  Bytes bytes;
  if (folder.front() != '/' || readRegularFile(folder + "/kdeglobals", maximumSettings, bytes)) return {};
  const std::string contents(bytes.begin(), bytes.end());
  std::string_view text = contents;
  bool isInGroup = false;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(line.size() == text.size() ? line.size() : line.size() + 1);
    if (line.starts_with('[')) {
      isInGroup = line == "[General]";
    } else if (isInGroup && line.starts_with(key) && line.substr(key.size()).starts_with('=')) {
      return std::string(line.substr(key.size() + 1));
    }
  }
  return {};
}

std::vector<std::string> words(std::string_view text) {
  std::vector<std::string> result;
  while (true) {
    const std::size_t start = text.find_first_not_of(" \t\r");
    if (start == std::string_view::npos) return result;
    text.remove_prefix(start);
    const std::string_view word = text.substr(0, text.find_first_of(" \t\r"));
    result.emplace_back(word);
    text.remove_prefix(word.size());
  }
}

}  // namespace

std::vector<std::string> terminalCommand() {
  constexpr const char* chosenTerminal = "xdg-terminal-exec";
  if (!foundProgram(chosenTerminal).empty()) return {chosenTerminal};
  std::vector<std::string> command;
  if (isDesktop("KDE")) {
    command = words(generalSetting("TerminalApplication"));
    if (command.empty()) command = {"konsole"};
  }
  if (command.empty() || foundProgram(command.front()).empty()) command = {"x-terminal-emulator"};
  command.emplace_back("-e");
  return command;
}

}  // namespace vorn::engine
