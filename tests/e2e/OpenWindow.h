// The real window in this process, and the real engine in another one. ENGINE_PROGRAM and BUILT_DEFAULTS name the
// engine and its default settings.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "app/BusNotifier.h"
#include "app/MouseMainWindow.h"
#include "app/NamedImageView.h"
#include "app/Vorn_ConfiguratorAppDelegate.h"
#include "e2e/ConfiguratorProcess.h"
#include "link/PortEngineLink.h"
#include "model/SettingsKeys.h"
#include "ports/BusMethodCall.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "profiles/MouseProfilesController.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"
#include "ui_MouseMainWindow.h"

namespace skarn::test {

inline constexpr int deadline = 20'000;  // milliseconds, for news to arrive

// A window with all that the program gives it, from its start to the end of its start-up.
class OpenWindow {
 public:
  OpenWindow()
      : mDelegate(mWindow, {.link = traced(mLink),
                            .notifications = vorn::DistributedNotificationCenter::defaultCenter(),
                            .openAddress = [](const QUrl&) { return true; },
                            .report = [](const std::string&) {}}) {
    bool isFinished = false;
    QObject::connect(&mDelegate, &Vorn_ConfiguratorAppDelegate::startUpFinished, [&] { isFinished = true; });
    mDelegate.applicationDidFinishLaunching({});
    if (!QTest::qWaitFor([&] { return isFinished; }, deadline)) QTest::qFail("the start-up ends", __FILE__, __LINE__);
    mStartUpdates = requests(vorn::MessageID::UpdateProfile);
    const std::scoped_lock lock(mMutex);
    mRequests.clear();
  }
  ~OpenWindow() { mDelegate.applicationWillTerminate(); }
  OpenWindow(const OpenWindow&) = delete;
  OpenWindow& operator=(const OpenWindow&) = delete;

  QWidget& window() { return mWindow; }
  template <typename Widget = QWidget>
  Widget* find(const char* name) {
    auto* found = mWindow.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) qFatal("there is no %s", name);
    return found;
  }
  void showTab(const char* page) { mWindow.ui().mMouseTabView->setCurrentWidget(find(page)); }
  // Until then the engine has news of its own.
  void awaitAnnouncement() {
    if (!QTest::qWaitFor([this] { return connectivity() == QStringLiteral("usb"); }, deadline))
      QTest::qFail("the mouse is announced", __FILE__, __LINE__);
  }
  MouseMainController& hub() { return mDelegate.mMouseMainController(); }
  QString connectivity() { return mWindow.ui().mDeviceConnectivity->imageName(); }
  QString battery() { return mWindow.ui().mBattery->imageName(); }
  QString profileName() { return mWindow.ui().mHeaderProfileName->text(); }
  QString text(const char* label) { return mWindow.findChild<QLabel*>(QLatin1String(label))->text(); }
  bool isEnabled() { return mWindow.ui().MouseProfilesController->mProfilesTableView()->isEnabled(); }
  bool asksForTheMouse() { return mWindow.findChild<QDialog*>(QStringLiteral("mDeviceConnectionWindow"))->isVisible(); }
  vorn::PropertyList setting(vorn::keys::Key key) { return hub().mDefaultProfileDict()[key]; }
  // How many requests with this ID it has sent since its start-up.
  int requests(vorn::MessageID messageID) const {
    const std::scoped_lock lock(mMutex);
    return static_cast<int>(std::count(mRequests.begin(), mRequests.end(), static_cast<std::int32_t>(messageID)));
  }
  int profileUpdates() const { return requests(vorn::MessageID::UpdateProfile); }
  // How many changes of a profile its start-up has sent.
  int startUpdates() const { return mStartUpdates; }

 private:
  vorn::EngineLink& traced(vorn::PortEngineLink& link) {
    link.setTrace([this](std::string_view direction, std::int32_t messageID, const vorn::PropertyList&) {
      if (direction != "request") return;
      const std::scoped_lock lock(mMutex);
      mRequests.push_back(messageID);
    });
    return link;
  }

  mutable std::mutex mMutex;
  std::vector<std::int32_t> mRequests;
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
  std::string stateFolder() const { return mFolder->path("state"); }
  // From now on the engine can save nothing.
  void takeDisk() {
    const std::string state = mFolder->path("state");
    std::filesystem::remove_all(state);
    std::ofstream(state) << "no folder";
  }
  void kill() {
    mEngine->process().signal(SIGKILL);
    mEngine->process().waitForEnd();
  }
  // From now on the bus starts the engine on demand, with the settings that the one before left.
  void install() const {
    mBus.installService(vorn::engineServiceName,
                        ENGINE_PROGRAM " --defaults " BUILT_DEFAULTS " --state-dir " + stateFolder());
  }
  // The same, but what is started ends at once.
  void installBroken() const { mBus.installService(vorn::engineServiceName, "/bin/false"); }
  // Kills the engine that the bus has started.
  static void killStarted() {
    const vorn::BusAnswer answer = vorn::callBusMethod(
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"}, "GetConnectionUnixProcessID",
        {{"s", vorn::engineServiceName}}, std::chrono::milliseconds(deadline));
    if (answer.status == vorn::BusAnswer::Status::Success) ::kill(answer.values.front().toInt(), SIGKILL);
    const auto isGone = [] { return !vorn::RemoteMessagePort::lookUp(vorn::enginePortName); };
    if (!QTest::qWaitFor(isGone, deadline)) QTest::qFail("the engine that was started goes", __FILE__, __LINE__);
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
