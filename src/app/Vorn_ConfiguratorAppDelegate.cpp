#include "app/Vorn_ConfiguratorAppDelegate.h"

#include <QMetaObject>
#include <QPointer>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "app/AfterPaint.h"
#include "app/MouseMainWindow.h"
#include "app/Sheets.h"

namespace skarn {

using namespace std::chrono_literals;

Vorn_ConfiguratorAppDelegate::Vorn_ConfiguratorAppDelegate(MouseMainWindow& mainWindow, HubServices services)
    : window(mainWindow), mLink(services.link), mSleep(services.sleep), mHub(mainWindow, std::move(services)) {
  mHub.awakeFromNib();
}

Vorn_ConfiguratorAppDelegate::~Vorn_ConfiguratorAppDelegate() = default;

void Vorn_ConfiguratorAppDelegate::applicationDidFinishLaunching(const LaunchInformation& launch) {
  mHub.setMMouseMainView(&window);
  const bool waitsInBackground = launch.isDefaultLaunch == false;
  // The restoring sheet says it too, but not when it is known that the wait will be long, or without the sheet.
  if (waitsInBackground || !launch.isDefaultLaunch.has_value() || !mHub.isEngineThere()) mHub.showThatItWaits();
  if (!mHub.isEngineThere()) mHub.startEngine();
  window.show();
  QList<QWidget*> painted{&window};
  if (launch.isDefaultLaunch.has_value()) {
    mHub.showRestoringStateWindow();
    painted << mHub.mRestoringStateWindow();
  }
  if (waitsInBackground) {
    mStartUpThread = std::jthread([this](const std::stop_token& stop) { doLoopInBackground(stop); });
    return;
  }
  AfterPaint::run(painted, this, [this] { initializeDeviceAfterEngineStart(); });
}

void Vorn_ConfiguratorAppDelegate::initializeDeviceAfterEngineStart() {
  if (!mHub.isStartingEngine()) return initializeDevice();
  if (!mHub.mRestoringStateWindow()->isVisible()) {
    // As the sheet does, it keeps the user from what shows no settings yet.
    const QPointer<QWidget> keyboard = window.focusWidget();
    window.setSettingsEnabled(false);
    const auto enable = [this, keyboard] {
      window.setSettingsEnabled(true);
      if (keyboard) keyboard->setFocus();
    };
    connect(&mHub, &MouseMainController::engineStartEnded, &window, enable, Qt::SingleShotConnection);
  }
  connect(&mHub, &MouseMainController::engineStartEnded, this, &Vorn_ConfiguratorAppDelegate::initializeDevice,
          static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

void Vorn_ConfiguratorAppDelegate::initializeDevice() {
  mHub.initializeDevice();
  emit startUpFinished();
}

void Vorn_ConfiguratorAppDelegate::doLoopInBackground(const std::stop_token& stop) {
  do {
    if (!mSleep(stop, 1s)) return;
  } while (!mLink.isEngineAvailable());

  struct HandOver {
    std::mutex mutex;
    std::condition_variable_any changed;
    bool isDone = false;
  };
  const auto handOver = std::make_shared<HandOver>();
  QMetaObject::invokeMethod(this, [this, handOver] {
    initializeDevice();
    const std::lock_guard lock(handOver->mutex);
    handOver->isDone = true;
    handOver->changed.notify_all();
  });
  std::unique_lock lock(handOver->mutex);
  handOver->changed.wait(lock, stop, [&] { return handOver->isDone; });
}

void Vorn_ConfiguratorAppDelegate::applicationWillResignActive() {
  mHub.checkMacroRecordingStatus();
}

void Vorn_ConfiguratorAppDelegate::applicationWillTerminate() {
  mHub.releaseVornDeviceInstance();
  mHub.checkMacroRecordingStatus();
}

}  // namespace skarn
