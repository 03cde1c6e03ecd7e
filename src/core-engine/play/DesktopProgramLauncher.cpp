#include "core-engine/play/DesktopProgramLauncher.h"

#include "core-engine/play/ApplicationActivation.h"
#include "core-engine/play/ProgramProcess.h"

namespace vorn::engine {

using Environment = ProgramUnits::Environment;

DesktopProgramLauncher::DesktopProgramLauncher(bool isService)
    : mIsService(isService), mUnits(isService ? Environment::OfManager : Environment::OfEngine) {}

void DesktopProgramLauncher::launch(const std::string& path, const Failed& failed) {
  std::string error;
  const auto program = launchedProgram(path, error);
  if (!program) return failed(error);
  if (program->busName.empty()) return start(*program, failed);
  const auto ended = [this, alive = std::weak_ptr(mAlive), program = *program, failed](const Activation& activation) {
    if (alive.expired() || activation.status == Activation::Status::Activated) return;
    const std::string reason = "cannot activate " + program.busName + ": " + activation.error;
    if (activation.status == Activation::Status::Failed) return failed(reason);
    program.path.empty() ? failed(reason + "; " + program.missing) : start(program, failed);
  };
  activateApplication(program->busName, program->startupID, ended);
}

void DesktopProgramLauncher::start(const LaunchedProgram& program, const Failed& failed) {
  mUnits.start(program, [this, program, failed](const ProgramUnits::Failure& failure) {
    if (mIsService || !failure.isUntaken) return failed(failure.reason);
    const std::string error = startProcess(program);
    if (!error.empty()) failed(error);
  });
}

}  // namespace vorn::engine
