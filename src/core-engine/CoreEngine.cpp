#include "core-engine/CoreEngine.h"

#include <csignal>
#include <memory>
#include <string>
#include <system_error>

#include "engine/EngineProtocol.h"
#include "model/SettingsKeys.h"
#include "ports/MessagePort.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

CoreEngine::CoreEngine(const Options& options, Log& log)
    : mLog(log),
      mFile(mFiles, log, options.stateFolder),
      mStore(mFile, log),
      mDefaults(mFiles, options.defaultsFile),
      mDevice(options.connection),
      mClients(mReplyPorts),
      mDispatcher({mStore, mDevice, mClients, mDefaults, log}, mReplyPorts) {}

int CoreEngine::run() {
  RunLoop loop;
  loop.onSignal(SIGTERM, [&] { loop.stop(); });
  loop.onSignal(SIGINT, [&] { loop.stop(); });
  // The port comes first: its name decides which of two engines goes on. Requests wait until the loop runs.
  LocalMessagePort::Failure failure{};
  std::string error;
  const auto port = LocalMessagePort::create(
      enginePortName, [this](const LocalMessagePort::Message& message) { return mDispatcher.receive(message); },
      &failure, &error);
  if (!port) {
    const bool isTaken = failure == LocalMessagePort::Failure::NameTaken;
    mLog.line(isTaken ? "another engine already runs in this session" : "cannot reach the session bus: " + error);
    return 1;
  }
  if (!claimFolder()) return 1;
  mStore.load([this] { return mDefaults.ownProfile(); });
  logReady();
  if (loop.run()) return 0;
  mLog.line("the session bus is gone");
  return 1;
}

bool CoreEngine::claimFolder() {
  const std::error_code error = mFile.claim();
  if (error == std::errc::resource_unavailable_try_again) {
    mLog.line("another engine uses the settings in " + mFile.folder());
    return false;
  }
  // Settings that cannot be changed can still be served.
  if (error) mLog.line("cannot write to " + mFile.folder() + ": " + error.message());
  return true;
}

void CoreEngine::logReady() {
  const auto count = [&](std::string_view key) { return std::to_string(mStore.bundle()[key].size()); };
  mLog.line("ready, profiles: " + count(keys::Profiles) + ", macros: " + count(keys::Macros) + ", settings in " +
            mFile.folder());
}

}  // namespace vorn::engine
