#include "ctl/DeviceAccess.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace vorn::ctl {

namespace {

constexpr const char* rulesName = "70-skarn.rules";

}  // namespace

FileAccess accessTo(const char* path) {
  if (::access(path, F_OK) != 0) return FileAccess::Missing;
  return ::access(path, R_OK | W_OK) == 0 ? FileAccess::Allowed : FileAccess::Forbidden;
}

std::string installedRules() {
  for (const char* const folder : {"/etc", "/run", "/usr/local/lib", "/usr/lib", "/lib"}) {
    std::string path = std::string(folder) + "/udev/rules.d/" + rulesName;
    if (::access(path.c_str(), R_OK) == 0) return path;
  }
  return {};
}

std::string rulesAtHand() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::filesystem::path folder = program.parent_path().parent_path();
  // Of an installation, and of a build folder.
  for (const auto& each : {folder / "lib/udev/rules.d", folder.parent_path().parent_path() / "resources/udev"}) {
    std::string path = (each / rulesName).string();
    if (!error && ::access(path.c_str(), R_OK) == 0) return path;
  }
  return rulesName;
}

}  // namespace vorn::ctl
