#include "core-engine/play/ProgramUnits.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <random>

#include "core-engine/play/ProgramEnvironment.h"

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

void ProgramUnits::start(const LaunchedProgram& program, const Failed& failed) {
  const std::string cannotStart = "cannot start " + program.path + ": ";
  TransientService service{
      applicationUnit("vorn", program.application, randomSuffix()),
      program.application + ", launched with the mouse",
      program.path,
      program.arguments,
      usableFolder(program.folder),
  };
  if (mEnvironment == Environment::OfEngine) {
    service.environment = programEnvironment(program.startupID);
    service.withoutVariables = missingDisplays();
  } else if (!program.startupID.empty()) {
    service.environment = {"DESKTOP_STARTUP_ID=" + program.startupID};
  }
  const auto started = [failed, cannotStart](const StartedService& start) {
    if (!start.error.empty()) failed({cannotStart + start.error, start.isUntaken});
  };
  std::string error;
  if (!mStarter.start(service, started, error)) failed({cannotStart + error, true});
}

}  // namespace vorn::engine
