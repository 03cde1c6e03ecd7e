// The real window in this process, and the real engine in another one. ENGINE_PROGRAM and BUILT_DEFAULTS name the
// engine and its default settings.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QTableView>
#include <QTest>
#include <atomic>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "ConfiguratorProcess.h"
#include "app/BusNotifier.h"
#include "app/MouseMainWindow.h"
#include "app/NamedImageView.h"
#include "app/Vorn_ConfiguratorAppDelegate.h"
#include "core-engine/TemporaryFolder.h"
#include "engine/PortEngineLink.h"
#include "model/SettingsKeys.h"
#include "ports/DistributedNotificationCenter.h"
#include "profiles/MouseProfilesController.h"
#include "support/PrivateBus.h"
#include "ui_MouseMainWindow.h"

namespace skarn::test {

inline constexpr int deadline = 20'000;  // milliseconds, for news to arrive

// A window with all that the program gives it, from its start to the end of its start-up.
class OpenWindow {
 public:
  OpenWindow()
      : mDelegate(mWindow, {.link = traced(mLink),
                            .notifications = vorn::DistributedNotificationCenter::defaultCenter(),
                            .openAddress = [](const QUrl&) {},
                            .report = [](const std::string&) {}}) {
    bool isFinished = false;
    QObject::connect(&mDelegate, &Vorn_ConfiguratorAppDelegate::startUpFinished, [&] { isFinished = true; });
    mDelegate.applicationDidFinishLaunching({});
    if (!QTest::qWaitFor([&] { return isFinished; }, deadline)) QTest::qFail("the start-up ends", __FILE__, __LINE__);
    mStartUpdates = mProfileUpdates.exchange(0);
  }
  ~OpenWindow() { mDelegate.applicationWillTerminate(); }
  OpenWindow(const OpenWindow&) = delete;
  OpenWindow& operator=(const OpenWindow&) = delete;

  QWidget& window() { return mWindow; }
  MouseMainController& hub() { return mDelegate.mMouseMainController(); }
  QString connectivity() { return mWindow.ui().mDeviceConnectivity->imageName(); }
  QString battery() { return mWindow.ui().mBattery->imageName(); }
  QString profileName() { return mWindow.ui().mHeaderProfileName->text(); }
  QString text(const char* label) { return mWindow.findChild<QLabel*>(QLatin1String(label))->text(); }
  bool isEnabled() { return mWindow.ui().MouseProfilesController->mProfilesTableView()->isEnabled(); }
  bool asksForTheMouse() { return mWindow.findChild<QDialog*>(QStringLiteral("mDeviceConnectionWindow"))->isVisible(); }
  vorn::PropertyList setting(vorn::keys::Key key) { return hub().mDefaultProfileDict()[key]; }
  // How often it has asked for all settings, and, since its start-up and during it, for a change of a profile.
  int settingsRequests() const { return mSettingsRequests; }
  int profileUpdates() const { return mProfileUpdates; }
  int startUpdates() const { return mStartUpdates; }

 private:
  vorn::EngineLink& traced(vorn::PortEngineLink& link) {
    link.setTrace([this](std::string_view direction, std::int32_t messageID, const vorn::PropertyList&) {
      if (direction != "request") return;
      if (messageID == static_cast<std::int32_t>(vorn::MessageID::GetAllSettings)) ++mSettingsRequests;
      if (messageID == static_cast<std::int32_t>(vorn::MessageID::UpdateProfile)) ++mProfileUpdates;
    });
    return link;
  }

  std::atomic<int> mSettingsRequests = 0;
  std::atomic<int> mProfileUpdates = 0;
  int mStartUpdates = 0;
  vorn::PortEngineLink mLink;
  MouseMainWindow mWindow;
  Vorn_ConfiguratorAppDelegate mDelegate;
};

// A session bus of the test's own, watched as the program watches it, and an engine on it.
class EngineSession {
 public:
  // An engine with factory settings.
  void begin() {
    mFolder = std::make_unique<vorn::engine::test::TemporaryFolder>();
    start();
  }
  // An engine with the settings that the one before left.
  void start(std::vector<std::string> options = {}) {
    mEngine.reset();
    options.insert(options.end(), {"--defaults", BUILT_DEFAULTS});
    mEngine = std::make_unique<vorn::test::EngineProcess>(mFolder->path("state"), options);
  }
  void kill() {
    mEngine->process().signal(SIGKILL);
    mEngine->process().waitForEnd();
  }
  void end() {
    mEngine.reset();
    mFolder.reset();
  }

 private:
  vorn::test::PrivateBus mBus;
  BusNotifier mNotifier{vorn::BusConnection::forThisThread()};
  std::unique_ptr<vorn::engine::test::TemporaryFolder> mFolder;
  std::unique_ptr<vorn::test::EngineProcess> mEngine;
};

}  // namespace skarn::test
