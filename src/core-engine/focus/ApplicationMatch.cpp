#include "core-engine/focus/ApplicationMatch.h"

#include <algorithm>
#include <array>

#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

constexpr std::string_view entrySuffix = ".desktop";

// What runs other programs, without the version at the end of its name.
constexpr std::array<std::string_view, 49> launchers = {
    "AppRun",      "bash",     "box",         "busybox",    "bwrap",          "cmd.exe",  "dash",
    "dbus-launch", "electron", "env",         "firejail",   "fish",           "flatpak",  "gamemoderun",
    "gamescope",   "gjs",      "gjs-console", "gtk-launch", "java",           "javaw",    "love",
    "lua",         "luajit",   "mangohud",    "mono",       "nice",           "node",     "nohup",
    "optirun",     "perl",     "pkexec",      "prime-run",  "proton",         "pypy",     "python",
    "qemu-user",   "qml",      "ruby",        "scummvm",    "setsid",         "sh",       "snap",
    "steam",       "sudo",     "systemd-run", "wine",       "wine-preloader", "xdg-open", "zsh"};

std::string lowered(std::string_view text) {
  std::string result(text);
  for (char& each : result) {
    if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
  }
  return result;
}

bool isLauncher(std::string_view name) {
  // "python3.11", "wine64", "wine64-preloader"
  std::string plain(name);
  std::erase_if(plain, [](char each) { return each >= '0' && each <= '9'; });
  plain.erase(plain.find_last_not_of('.') + 1);
  return std::find(launchers.begin(), launchers.end(), plain) != launchers.end();
}

// Shops start their games by number, and their windows have it in their class.
std::string gameClassOf(const DesktopEntry& entry, std::string_view identifier) {
  constexpr std::string_view address = "steam://rungameid/";
  const auto command = entry.command(std::string(identifier));
  if (!command) return {};
  for (const std::string& argument : *command) {
    if (argument.starts_with(address)) return "steam_app_" + argument.substr(address.size());
  }
  return {};
}

}  // namespace

std::string programNameOf(std::string_view executable) {
  // A program of another system has its own separator.
  const std::string_view name = executable.substr(executable.find_last_of("/\\") + 1);
  return isLauncher(name) ? std::string() : std::string(name);
}

std::string_view withoutEntrySuffix(std::string_view identifier) {
  if (identifier.ends_with(entrySuffix)) identifier.remove_suffix(entrySuffix.size());
  return identifier;
}

ApplicationMatch::ApplicationMatch(const PropertyList& appInfo, const Entries& entries) {
  if (appInfo[keys::Application].string().empty()) return;
  mProgram = programNameOf(appInfo[keys::Executable].string());
  const std::string identifier(withoutEntrySuffix(appInfo[keys::Identifier].string()));
  if (identifier.empty()) return;
  mNames.push_back(lowered(identifier));
  const auto entry = entries(identifier);
  if (!entry) return;
  for (const std::string& name : {entry->text("StartupWMClass"), gameClassOf(*entry, identifier)}) {
    if (!name.empty()) mNames.push_back(lowered(name));
  }
}

bool ApplicationMatch::fits(const Application& application) const {
  for (const std::string_view name :
       {std::string_view(application.identifier), std::string_view(application.instance)}) {
    if (name.empty()) continue;
    if (std::find(mNames.begin(), mNames.end(), lowered(withoutEntrySuffix(name))) != mNames.end()) return true;
  }
  return !mProgram.empty() && mProgram == programNameOf(application.executable);
}

}  // namespace vorn::engine
