#include "core-engine/play/ServiceProgramLauncher.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <random>

#include "core-engine/play/LaunchedProgram.h"

namespace vorn::engine {

namespace {

// Tells the units of one application apart.
std::string randomSuffix() {
  std::random_device random;
  std::array<char, 17> digits{};
  std::snprintf(digits.data(), digits.size(), "%08x%08x", random(), random());
  return digits.data();
}

// The manager takes no path with ".." in it and none that is not absolute.
std::string usableFolder(const std::string& folder) {
  const std::filesystem::path path = std::filesystem::path(folder).lexically_normal();
  return path.is_absolute() ? path.string() : "/";
}

}  // namespace

void ServiceProgramLauncher::launch(const std::string& path, const Failed& failed) {
  std::string error;
  auto program = launchedProgram(path, error);
  if (!program) return failed(error);
  const std::string cannotStart = "cannot start " + program->path + ": ";
  const TransientService service{
      applicationUnit("vorn", program->application, randomSuffix()),
      program->application + ", launched with the mouse",
      program->path,
      std::move(program->arguments),
      usableFolder(program->folder),
  };
  const auto started = [failed, cannotStart](const std::string& reason) {
    if (!reason.empty()) failed(cannotStart + reason);
  };
  if (!mStarter.start(service, started, error)) failed(cannotStart + error);
}

}  // namespace vorn::engine
