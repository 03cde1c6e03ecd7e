// The real window with the real hub and tabs, over a scripted link.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QTableView>
#include <QTest>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "app/MouseMainWindow.h"
#include "app/ScriptedLink.h"
#include "app/Vorn_ConfiguratorAppDelegate.h"
#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"
#include "platform/Bundle.h"
#include "platform/Localization.h"
#include "support/RecordingNotificationCenter.h"
#include "ui_MouseMainWindow.h"

namespace skarn::test {

inline const vorn::PropertyList& factorySettings() {
  static const vorn::PropertyList settings = [] {
    const auto file =
        vorn::readPropertyListFile(Bundle::mainBundle().resourcePath(QStringLiteral("Skarn.plist")).toStdString());
    return file ? (*file)[vorn::keys::DefaultSettings] : vorn::PropertyList();
  }();
  return settings;
}

// A bundle with profiles of these names, macros of these names and the given active profile.
inline vorn::PropertyList bundleWith(const std::vector<std::string>& profiles,
                                     const std::vector<std::string>& macros = {}, int active = 0) {
  namespace keys = vorn::keys;
  const vorn::PropertyList factory = factorySettings()[keys::Profiles].at(0);
  std::vector<vorn::PropertyList> profileRecords;
  for (const auto& name : profiles) profileRecords.push_back(factory.with(keys::ProfileName, name));
  std::vector<vorn::PropertyList> macroRecords;
  for (const auto& name : macros) {
    macroRecords.push_back(vorn::PropertyList::dictionary(
        {{keys::MacroName, name}, {keys::Delay, 20}, {keys::Sequence, vorn::PropertyList::dictionary()}}));
  }
  return vorn::PropertyList::dictionary(
      {{keys::Profiles, vorn::PropertyList::array(profileRecords)},
       {keys::Macros, vorn::PropertyList::array(macroRecords)},
       {keys::DeviceSettings, factorySettings()[keys::DeviceSettings].with(keys::ActiveProfile, active)}});
}

inline vorn::PropertyList allSettingsAnswer(const vorn::PropertyList& bundle) {
  return vorn::PropertyList::dictionary({{vorn::replyKeys::AllDevSettings, bundle}});
}
inline vorn::PropertyList changeAnswer(const vorn::PropertyList& bundle) {
  return vorn::PropertyList::dictionary({{vorn::replyKeys::ReturnDictionary, bundle}});
}
inline vorn::PropertyList statusAnswer(const vorn::PropertyList& status) {
  return vorn::PropertyList::dictionary({{vorn::replyKeys::ReturnStatus, status}});
}

// What the first redraw of the Lighting tab sends back after a start with a factory profile: effect, then brightness.
inline std::vector<ScriptedLink::Request> lightingRequests(int profileID) {
  namespace keys = vorn::keys;
  namespace requestKeys = vorn::requestKeys;
  std::vector<ScriptedLink::Request> requests;
  for (const auto& settings : {vorn::PropertyList::dictionary({{keys::ScrollLED, 1}, {keys::LEDEffects, 0}}),
                               vorn::PropertyList::dictionary({{keys::BrightnessNormal, 4}})}) {
    requests.push_back(
        {vorn::MessageID::UpdateProfile,
         vorn::PropertyList::dictionary({{requestKeys::ProductID, 273},
                                         {requestKeys::ResponseMsgPortName, "SkarnConfiguratorReplyPort"},
                                         {requestKeys::ProfileID, profileID},
                                         {requestKeys::DeviceSettingsDictionary, settings}})});
  }
  return requests;
}

struct HubFixture {
  HubServices services() {
    return {.link = link,
            .notifications = notifications,
            .openAddress =
                [this](const QUrl& address) {
                  opened.push_back(address.toString().toStdString());
                  return opensAddresses;
                },
            .report = [this](const std::string& line) { reports.push_back(line); },
            .sleep = sleep,
            .memoryFile = memoryFile};
  }

  // Creates the window and the application delegate, as the program does.
  void create() { delegate = std::make_unique<Vorn_ConfiguratorAppDelegate>(window, services()); }
  MouseMainController& hub() { return delegate->mMouseMainController(); }

  // Starts up to the end with an engine that has this bundle.
  void startConnected(const vorn::PropertyList& bundle) {
    link.answer(vorn::MessageID::RegisterDevice, statusAnswer(true));
    link.answer(vorn::MessageID::GetAllSettings, allSettingsAnswer(bundle));
    // The Lighting tab sends its settings back; what else a test changes, it answers itself.
    link.answer(vorn::MessageID::UpdateProfile, changeAnswer(bundle));
    start({});
    link.answer(vorn::MessageID::UpdateProfile, {});
    link.requests.clear();
    link.unansweredWaits.clear();
    notifications.log.clear();
  }
  void start(const LaunchInformation& launch) {
    create();
    bool isFinished = false;
    QObject::connect(delegate.get(), &Vorn_ConfiguratorAppDelegate::startUpFinished, [&] { isFinished = true; });
    delegate->applicationDidFinishLaunching(launch);
    QVERIFY(QTest::qWaitFor([&] { return isFinished; }));
  }

  QString text(const char* label) {
    const auto* found = window.findChild<QLabel*>(QLatin1String(label));
    return found ? found->text() : QStringLiteral("(no label %1)").arg(QLatin1String(label));
  }
  // The names of the pages that are as they are while a mouse is connected.
  QStringList enabledPages() {
    QStringList enabled;
    for (int i = 0; i < window.ui().mMouseTabView->count(); ++i) {
      const QWidget* page = window.ui().mMouseTabView->widget(i);
      if (page->toolTip().isEmpty()) enabled << page->objectName();
    }
    return enabled;
  }
  QWidget* page(const char* name) { return window.findChild<QWidget*>(QLatin1String(name)); }
  QDialog* sheet(const char* name) { return window.findChild<QDialog*>(QLatin1String(name)); }
  bool isShown(const char* sheetName) {
    const QDialog* found = sheet(sheetName);
    return found != nullptr && found->isVisible();
  }

  const bool hasTexts = installTranslations(QStringLiteral("en"));  // before the window takes its texts
  ScriptedLink link;
  RecordingNotificationCenter notifications;
  std::vector<std::string> opened;
  bool opensAddresses = true;
  std::vector<std::string> reports;
  QString memoryFile;  // of the window; empty: it keeps nothing
  // The timer threads sleep until they are told to end, unless a test says otherwise.
  StoppableSleep sleep = [](std::stop_token stop, std::chrono::milliseconds) {
    std::mutex mutex;
    std::condition_variable_any wake;
    std::unique_lock lock(mutex);
    wake.wait(lock, stop, [] { return false; });
    return false;
  };
  MouseMainWindow window;
  std::unique_ptr<Vorn_ConfiguratorAppDelegate> delegate;
};

}  // namespace skarn::test
