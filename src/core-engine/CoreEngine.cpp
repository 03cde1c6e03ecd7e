#include "core-engine/CoreEngine.h"

#include <malloc.h>

#include <array>
#include <chrono>
#include <csignal>
#include <ctime>
#include <memory>
#include <string>
#include <system_error>

#include "core-engine/ShortTurns.h"
#include "core-engine/device/linux/LinuxMice.h"
#include "core-engine/focus/DesktopEntries.h"
#include "core-engine/focus/KWinApplications.h"
#include "core-engine/focus/WaylandApplications.h"
#include "core-engine/focus/X11Focus.h"
#include "core-engine/play/DesktopProgramLauncher.h"
#include "core-engine/requests/Farewell.h"
#include "model/SettingsKeys.h"
#include "ports/BusConnection.h"
#include "ports/MessagePort.h"
#include "ports/ServiceActivation.h"
#include "ports/ServiceManager.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

// Exit status of its own: to start once more is of no use while the other one runs.
constexpr int anotherEngine = 3;

FocusSources::Makers focusMakers(RunLoop& loop, Scheduler& scheduler) {
  FocusSources::Makers makers;
  makers.x11 = [&loop, &scheduler](const FoundDisplays& displays, const ApplicationInFront::Handlers& handlers) {
    const X11Focus::Server server{displays.x11Socket, displays.x11Display, displays.x11Authority};
    return std::make_unique<X11Focus>(loop, scheduler, server, handlers);
  };
  makers.wlroots = [&loop, &scheduler](const FoundDisplays& displays, const ApplicationInFront::Handlers& handlers) {
    return std::make_unique<WaylandApplications>(loop, scheduler, displays.waylandSocket, handlers);
  };
  makers.kwin = [&scheduler](const FoundDisplays&, const ApplicationInFront::Handlers& handlers) {
    return std::make_unique<KWinApplications>(scheduler, sharedFile("focus/kwin.js"), handlers);
  };
  return makers;
}

// Today, where the user is, as "2026-11-22".
std::string localDate() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  std::array<char, 32> text{};
  if (localtime_r(&now, &local) == nullptr) return {};
  return {text.data(), std::strftime(text.data(), text.size(), "%F", &local)};
}

}  // namespace

CoreEngine::CoreEngine(const Options& options, Log& log)
    : mLog(log),
      mFile(mFiles, log, options.stateFolder),
      mHistory(mStore, mScheduler, [] { return static_cast<std::int64_t>(std::time(nullptr)); }),
      mHistoryJournal(mFiles, log, options.stateFolder, mHistory),
      mBackups(mFiles, log, options.stateFolder, localDate),
      mStore(mFile, log, &mDisk),
      mDefaults(mFiles, options.defaultsFile),
      mVirtualDevice(options.connection),
      mRealMice(std::make_unique<LinuxMice>(mLoop, mScheduler, log)),
      mMice({mFiles, log, mScheduler, mStore, mTurns, mVirtualDevice, *mRealMice, mDevice}, options.stateFolder),
      mFollowing({mFiles, log, mScheduler, mStore, mTurns, mProfiles}, options.stateFolder, installedEntry),
      mFocusSources(mScheduler, mDisplays, focusMakers(mLoop, mScheduler), [this] { focusChanged(); }),
      mFocusService(
          mScheduler, mFocusSources,
          {[this] { return mFollowing.isUsed(); }, [this] { return mFollowing.chosenName(); }, installedName}),
      mLauncher(std::make_unique<DesktopProgramLauncher>(options.isService)) {
  mReplyPorts.setLostHandler([this](const std::string& portName) { portLost(portName); });
  mRecorder.setClientHandler([this](const std::string& client) {
    mRecordingClient.become(client);
    mHeard.recordingChanged();
    updateDevice();
  });
  mCapture.setClientHandler([this](const std::string& client) {
    mCapturingClient.become(client);
    mHeard.captureChanged();
    updateDevice();
  });
  mDispatcher.setObserver(this);
  mStore.setChangeHandler([this](const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
    mHistory.note(before, after, origin);
    mNews.settingsChanged(before, after, origin.sourceApp);
    mScreenMessages.settingsChanged(before, after, origin);
    mFollowing.settingsChanged(before, after);
    mFocusService.updateUse();
    updateDevice();
  });
  mStore.addKeeper(mBackups);
  mStore.addKeeper(mHistoryJournal);
  mHistory.setAppliedHandler([this](const PropertyList& before, const std::vector<std::int64_t>& profilePlaces,
                                    const std::vector<ArrayMove>& macroMoves) {
    mProfiles.profilesMoved(before[keys::Profiles], profilePlaces);
    for (const ArrayMove& each : macroMoves) mRecorder.macrosMoved(each.start, each.gone, each.come);
  });
  mMice.setLeavingHandler([this] {
    releaseAll();
    mScreenMessages.mouseLeaves();
  });
}

CoreEngine::~CoreEngine() {
  mDevice.setEventHandler({});
}

int CoreEngine::run() {
  askForShortTurns();
  mLoop.onSignal(SIGTERM, [this] { mLoop.stop(); });
  mLoop.onSignal(SIGINT, [this] { mLoop.stop(); });
  mLoop.setIdleWork([this] { return mIntake.serveNext(); });
  mIntake.setReadyHandler([this] { mLoop.wakeIdleWork(); });
  // The port comes first: its name decides which of two engines goes on. Requests wait until the loop runs.
  LocalMessagePort::Failure failure{};
  std::string error;
  const auto port = LocalMessagePort::create(
      enginePortName, [this](const LocalMessagePort::Message& message) { return receive(message); }, &failure, &error);
  if (!port) {
    const bool isTaken = failure == LocalMessagePort::Failure::NameTaken;
    mLog.line(isTaken ? "another engine already runs in this session" : "cannot reach the session bus: " + error);
    return isTaken ? anotherEngine : 1;
  }
  if (!claimFolder()) return anotherEngine;
  mMice.load();
  mDevice.setEventHandler([this](const DeviceEvent& event) { handle(event); });
  mStore.load([this] { return mDefaults.ownProfile(); });
  updateDevice();
  mHistoryJournal.load(mFile.loadedFingerprint());
  mFollowing.load();
  if (!mVirtualMouse.start(error)) mLog.line("the virtual mouse cannot be reached over the bus: " + error);
  if (!mMiceService.start(error)) mLog.line("the mouse cannot be chosen over the bus: " + error);
  if (!mTypedKeys.start(error)) mLog.line("keys typed into a window cannot be taken over the bus: " + error);
  if (!mHistoryService.start(error)) mLog.line("the history cannot be reached over the bus: " + error);
  if (!mFocusService.start(error)) mLog.line("the application in front cannot be told over the bus: " + error);
  mFocusService.updateUse();
  // Windows that an earlier engine left behind show what it told last.
  mDeviceNews.announce();
  // Last: who has asked the bus to start an engine goes on now.
  const auto service = ServiceName::claim(engineServiceName, &error);
  if (!service) mLog.line("the engine cannot be started on demand: " + error);
  logReady();
  giveMemoryBackLater();
  const bool isAsked = mLoop.run();
  notifyServiceManager("STOPPING=1");
  if (isAsked) {
    end();
    return 0;
  }
  releaseAll();
  mLog.line("the session bus is gone");
  return 1;
}

void CoreEngine::end() {
  releaseAll();
  serveLastRequests(mIntake, mTurns, mStore, mScheduler);
  releaseAll();
  // Giving up one name after the other would take three answers of a bus that may be busy.
  BusConnection::forThisThread().close();
}

std::optional<Bytes> CoreEngine::receive(const LocalMessagePort::Message& message) {
  giveMemoryBackLater();
  auto taken = mIntake.receive(message);
  if (taken) mLoop.wakeIdleWork();
  return taken;
}

void CoreEngine::giveMemoryBackLater() {
  if (mIsGivingMemoryBack) return;
  mIsGivingMemoryBack = true;
  mScheduler.after(std::chrono::seconds(1), [this] {
    mIsGivingMemoryBack = false;
    malloc_trim(0);
  });
}

void CoreEngine::hasServed(const RequestKind& kind, const Request& request) {
  mProfiles.takeBackReleased();
  mAnnouncer.noteServed(kind.messageID, request);
  // It may have given an empty store its first settings, or ended a recording.
  mFollowing.load();
  mFocusService.updateUse();
  updateDevice();
}

void CoreEngine::portLost(const std::string& portName) {
  mClients.portLost(portName);
  mRecordingClient.portLost(portName);
  mCapturingClient.portLost(portName);
}

void CoreEngine::focusChanged() {
  mFollowing.setApplication(mFollowing.isUsed() ? mFocusSources.application() : std::nullopt);
  mFocusService.changed();
}

bool CoreEngine::noteTyped(const std::string& connection, const KeyChanged& key) {
  const bool isRecorded = mRecorder.isRecording() && mRecordingClient.isConnection(connection);
  const bool isCaught = mCapture.isCapturing() && mCapturingClient.isConnection(connection);
  // Not before what a control sends that was pressed before it.
  mTurns.inTurn([this, isRecorded, isCaught, key] { mHeard.fromWindow(key, isRecorded, isCaught); });
  return isRecorded || isCaught;
}

void CoreEngine::updateDevice() {
  mDevice.setListening(mRecorder.isRecording() || mCapture.isCapturing());
  // What two bundles share is not compared.
  if (mStore.bundle() == mAppliedSettings) return;
  mAppliedSettings = mStore.bundle();
  mDevice.apply(deviceValues(mAppliedSettings));
}

void CoreEngine::handle(const DeviceEvent& event) {
  const auto carryOut = [this, event] {
    mPlayer.handle(event);
    if (std::holds_alternative<ConnectionChanged>(event)) mDeviceNews.announce();
    if (std::holds_alternative<BatteryChanged>(event)) mDeviceNews.batteryChanged();
    if (std::holds_alternative<FirmwareChanged>(event)) mDeviceNews.firmwareChanged();
    const bool isOther = std::holds_alternative<ConnectionChanged>(event);
    if (isOther || std::holds_alternative<BatteryChanged>(event)) mScreenMessages.batteryChanged(mStore.bundle());
    if (!isOther && !std::holds_alternative<AbilitiesChanged>(event)) return;
    mMice.tellChanged();
    giveMemoryBackLater();
  };
  needsSettings(event) ? mTurns.whenSaved(carryOut) : mTurns.inTurn(carryOut);
}

void CoreEngine::serve(const LocalMessagePort::Message& message, std::function<void()> done) {
  if (mTurns.isFree()) return mDispatcher.receive(message, std::move(done));
  // The message lasts no longer than the call.
  mTurns.whenSaved([this, messageID = message.messageID, data = Bytes(message.data.begin(), message.data.end()),
                    sender = std::string(message.sender), done = std::move(done)] {
    mDispatcher.receive({messageID, data, sender}, done);
  });
}

bool CoreEngine::takeInTurn(const std::string& connection, const RequestIntake::Work& work) {
  giveMemoryBackLater();
  const bool isTaken = mIntake.receive(connection, [this, work](const std::function<void()>& done) {
    mTurns.whenSaved([this, work, done] {
      work([this, done] {
        mProfiles.takeBackReleased();
        done();
      });
    });
  });
  if (isTaken) mLoop.wakeIdleWork();
  return isTaken;
}

void CoreEngine::noteSaved() {
  mStore.settleEnded();
  mTurns.goOn();
}

void CoreEngine::releaseAll() {
  const auto settle = [this] {
    while (mStore.isSaving()) mStore.settle();
  };
  settle();
  mPlayer.releaseAll();
  settle();
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
  const std::string status =
      "profiles: " + count(keys::Profiles) + ", macros: " + count(keys::Macros) + ", settings in " + mFile.folder();
  mLog.line("ready, " + status);
  notifyServiceManager("READY=1\nSTATUS=" + printable(status));
}

}  // namespace vorn::engine
