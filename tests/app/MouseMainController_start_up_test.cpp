// The configurator's start-up until the window shows settings, and its end.
#include <QAbstractButton>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <condition_variable>
#include <mutex>

#include "app/HubFixture.h"
#include "app/Sheets.h"
#include "app/StateStrip.h"
#include "support/PaintCounter.h"
#include "support/QtTests.h"
#include "widgets/BusyIndicator.h"

using namespace skarn;
using namespace skarn::test;
using namespace std::chrono_literals;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;

namespace {

PropertyList registration() {
  return PropertyList::dictionary({{requestKeys::ProductName, "Skarn"},
                                   {requestKeys::ProductID, 273},
                                   {requestKeys::ResponseMsgPortName, "SkarnConfiguratorReplyPort"},
                                   {requestKeys::IsDeviceWired, 1},
                                   {requestKeys::DefaultVrPlistPath,
                                    Bundle::mainBundle().resourcePath(QStringLiteral("Skarn.plist")).toStdString()}});
}

PropertyList envelope() {
  return PropertyList::dictionary(
      {{requestKeys::ProductID, 273}, {requestKeys::ResponseMsgPortName, "SkarnConfiguratorReplyPort"}});
}

QMessageBox* alertOf(QWidget& window) {
  return window.findChild<QMessageBox*>(QStringLiteral("alert"));
}

using Requests = std::vector<ScriptedLink::Request>;

// The requests with those of the first lighting redraw after them.
Requests withLighting(Requests requests, int profileID = 0) {
  for (auto& request : lightingRequests(profileID)) requests.push_back(std::move(request));
  return requests;
}

// Sleeps that the test lets pass one by one.
struct SteppedSleep {
  StoppableSleep sleep() {
    return [this](std::stop_token stop, std::chrono::milliseconds interval) {
      std::unique_lock lock(mutex);
      intervals.push_back(interval);
      changed.notify_all();
      changed.wait(lock, stop, [this] { return permits > 0; });
      if (stop.stop_requested()) return false;
      --permits;
      return true;
    };
  }
  void letOnePass() {
    const std::lock_guard lock(mutex);
    ++permits;
    changed.notify_all();
  }
  // Waits until that many sleeps have begun.
  void waitForSleeps(std::size_t count) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return intervals.size() >= count; });
  }

  std::mutex mutex;
  std::condition_variable_any changed;
  std::vector<std::chrono::milliseconds> intervals;
  int permits = 0;
};

}  // namespace

class MouseMainControllerStartUpTest : public QObject {
  Q_OBJECT

 private slots:
  void waking_up_starts_the_reply_port_and_leaves_everything_unknown();
  void registration_and_settings_are_asked_for_with_exactly_these_requests();
  void the_first_lighting_redraw_writes_to_the_active_profile_and_later_ones_send_nothing();
  void a_registered_device_shows_the_engines_settings_in_every_tab();
  void any_non_zero_return_status_means_registered_data();
  void any_non_zero_return_status_means_registered();
  void a_refused_registration_shows_the_first_default_profile_disabled_and_the_connection_sheet();
  void an_unanswered_registration_shows_the_defaults_disabled_and_reports_a_communication_error();
  void the_strip_speaks_of_default_settings_only_where_they_are_shown();
  void an_answer_that_is_an_empty_dictionary_counts_as_refused();
  void in_every_outcome_the_news_and_the_query_answers_are_observed_data();
  void in_every_outcome_the_news_and_the_query_answers_are_observed();
  void a_background_launch_looks_for_the_engine_once_a_second_until_it_is_there();
  void a_background_launch_that_is_closed_early_ends_at_once();
  void a_launch_without_the_key_shows_no_restoring_sheet();
  void the_window_and_the_restoring_sheet_are_painted_before_the_first_wait();
  void the_window_says_what_it_waits_for_while_no_engine_is_there();
  void the_restoring_sheet_cannot_be_closed_by_the_user();
  void the_report_tells_what_happened_in_one_line_each();
  void the_firmware_version_is_asked_for_every_three_seconds_until_it_is_known();
  void a_firmware_version_that_is_unknown_for_lack_of_a_device_is_not_asked_for();
  void quitting_releases_the_device_with_its_product_only_and_waits_for_nothing();
  void closing_the_last_window_ends_the_program();
  void closing_the_restoring_sheet_ends_the_program();
  void the_tabs_outlive_the_hub();
  void leaving_the_application_ends_a_recording_under_way();
  void a_bundle_of_any_shape_shows_empty_values_data();
  void a_bundle_of_any_shape_shows_empty_values();
};

void MouseMainControllerStartUpTest::waking_up_starts_the_reply_port_and_leaves_everything_unknown() {
  HubFixture fixture;
  fixture.create();
  MouseMainController& hub = fixture.hub();
  QVERIFY(fixture.link.hasPort);
  QVERIFY(hub.mDefaultProfileDict() == PropertyList::dictionary());
  QVERIFY(hub.mDeviceSettingsDict() == PropertyList::dictionary());
  QVERIFY(hub.mProfilesArray() == PropertyList::array());
  QVERIFY(hub.mMacrosArray() == PropertyList::array());
  QCOMPARE(hub.mBatteryStatus(), 255U);
  QCOMPARE(hub.mFirmwareVersionString(), std::string());
  QVERIFY(fixture.window.ui().mBattery->imageName().isEmpty());
  QVERIFY(fixture.window.ui().mDeviceConnectivity->imageName().isEmpty());
  QVERIFY(!fixture.window.ui().mBusyIndicator->isRunning());
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerStartUpTest::registration_and_settings_are_asked_for_with_exactly_these_requests() {
  HubFixture fixture;
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(true));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundleWith({"Work"})));
  fixture.start({});
  QVERIFY(fixture.link.requests ==
          withLighting({{MessageID::RegisterDevice, registration()}, {MessageID::GetAllSettings, envelope()}}));
  QVERIFY(fixture.link.reply().isNone());
}

void MouseMainControllerStartUpTest::
    the_first_lighting_redraw_writes_to_the_active_profile_and_later_ones_send_nothing() {
  HubFixture fixture;
  const PropertyList bundle = bundleWith({"Work", "Play"}, {}, 1);
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(true));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundle));
  fixture.link.answer(MessageID::UpdateProfile, changeAnswer(bundleWith({"Work", "Changed"}, {}, 1)));
  fixture.start({});
  QVERIFY(fixture.link.requests ==
          withLighting({{MessageID::RegisterDevice, registration()}, {MessageID::GetAllSettings, envelope()}}, 1));
  QVERIFY(fixture.link.unansweredWaits.empty());
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QStringLiteral("Changed"));
  fixture.link.requests.clear();
  fixture.notifications.post("Device Attached 273", "", {});
  for (const auto& request : fixture.link.requests) QVERIFY(request.messageID != MessageID::UpdateProfile);
}

void MouseMainControllerStartUpTest::a_registered_device_shows_the_engines_settings_in_every_tab() {
  HubFixture fixture;
  const PropertyList bundle = bundleWith({"Work", "Play", "Draw"}, {"Greet"}, 1);
  fixture.startConnected(bundle);
  QVERIFY(fixture.hub().mProfilesArray() == bundle[keys::Profiles]);
  QVERIFY(fixture.hub().mMacrosArray() == bundle[keys::Macros]);
  QVERIFY(fixture.hub().mDeviceSettingsDict() == bundle[keys::DeviceSettings]);
  QVERIFY(fixture.hub().mDefaultProfileDict() == bundle[keys::Profiles].at(1));
  QVERIFY(fixture.hub().mDefaultSettingsDict() == factorySettings());

  auto& ui = fixture.window.ui();
  QCOMPARE(ui.mHeaderProfileName->text(), QStringLiteral("Play"));
  QVERIFY(ui.MouseButtonController->mButtonsSettingsDict() == bundle[keys::Profiles].at(1));
  QVERIFY(ui.MouseButtonController->mAllProfiles() == bundle[keys::Profiles]);
  QVERIFY(ui.MouseButtonController->mAllMacros() == bundle[keys::Macros]);
  QVERIFY(ui.MouseButtonController->mDeviceSettingsDict() == bundle[keys::DeviceSettings]);
  QVERIFY(ui.MouseButtonController->mDefaultDict() == factorySettings());
  QVERIFY(ui.MousePerformanceController->mPerformanceSettingsDict() == bundle[keys::Profiles].at(1));
  QVERIFY(ui.MousePerformanceController->mDeviceSettingsDict() == bundle[keys::DeviceSettings]);
  QVERIFY(ui.MouseProfilesController->mProfileSettingsDict() == bundle[keys::Profiles].at(1));
  QVERIFY(ui.MouseProfilesController->mDeviceSettingsDict() == bundle[keys::DeviceSettings]);
  QVERIFY(ui.MouseProfilesController->mProfilesArray() == bundle[keys::Profiles]);
  QVERIFY(ui.MouseProfilesController->mDefaultDict() == factorySettings()[keys::Profiles].at(0));
  QVERIFY(ui.MouseMacrosController->mMacrosSettingsArray() == bundle[keys::Macros]);
  QVERIFY(ui.MouseLightingController->mLightingDict() == bundle[keys::Profiles].at(1));
  QVERIFY(ui.MouseLightingController->mDeviceSettingsDict() == bundle[keys::DeviceSettings]);
  QVERIFY(ui.MouseLightingController->mAllProfiles() == bundle[keys::Profiles]);
  QVERIFY(ui.MouseMaintenanceController->mMaintenanceSettingsDict() == bundle[keys::DeviceSettings]);
  QVERIFY(ui.MouseMaintenanceController->mMaintenanceDict() == bundle[keys::Profiles].at(1));
  QVERIFY(ui.MouseMaintenanceController->mDefaultDict() == factorySettings()[keys::Profiles].at(0));

  MouseMainController* hub = &fixture.hub();
  QCOMPARE(ui.MouseButtonController->mButtonDelegate(), static_cast<MouseButtonDelegate*>(hub));
  QCOMPARE(ui.MousePerformanceController->mMousePerformanceDelegate(), static_cast<MousePerformanceDelegate*>(hub));
  QCOMPARE(ui.MouseProfilesController->mProfileDelegate(), static_cast<ProfileControllerDelegate*>(hub));
  QCOMPARE(ui.MouseMacrosController->mMacroDelegate(), static_cast<MacroControllerDelegate*>(hub));
  QCOMPARE(ui.MouseLightingController->mLightingDelegate(), static_cast<MouseLightingDelegate*>(hub));
  QCOMPARE(ui.MouseMaintenanceController->mMouseMaintenanceDelegate(), static_cast<MouseMaintenanceDelegate*>(hub));
  QCOMPARE(ui.MouseButtonController->mButtonWindow(), &fixture.window);
  QCOMPARE(ui.MousePerformanceController->mPerformanceWindow(), &fixture.window);
  QCOMPARE(ui.MouseProfilesController->mProfilesWindow(), &fixture.window);
  QCOMPARE(ui.MouseMacrosController->mMacrosWindow(), &fixture.window);
  QCOMPARE(ui.MouseMaintenanceController->mMaintenanceWindow(), &fixture.window);

  QCOMPARE(fixture.enabledPages().size(), 6);
  QVERIFY(!fixture.isShown("mRestoringStateWindow"));
  QVERIFY(!fixture.isShown("mDeviceConnectionWindow"));
  QVERIFY(alertOf(fixture.window) == nullptr);
  QVERIFY(!fixture.window.stateStrip().isVisible());
}

void MouseMainControllerStartUpTest::any_non_zero_return_status_means_registered_data() {
  QTest::addColumn<int>("type");
  QTest::addColumn<double>("value");
  QTest::addColumn<bool>("isRegistered");
  QTest::newRow("true") << 0 << 1.0 << true;
  QTest::newRow("false") << 0 << 0.0 << false;
  QTest::newRow("one") << 1 << 1.0 << true;
  QTest::newRow("seven") << 1 << 7.0 << true;
  QTest::newRow("minus one") << 1 << -1.0 << true;
  QTest::newRow("zero") << 1 << 0.0 << false;
  QTest::newRow("a fraction") << 2 << 0.5 << true;
}

void MouseMainControllerStartUpTest::any_non_zero_return_status_means_registered() {
  QFETCH(int, type);
  QFETCH(double, value);
  QFETCH(bool, isRegistered);
  HubFixture fixture;
  const PropertyList status = type == 0   ? PropertyList(value != 0)
                              : type == 1 ? PropertyList(static_cast<int>(value))
                                          : PropertyList(value);
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(status));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundleWith({"Work"})));
  fixture.start({});
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text() == QStringLiteral("Work"), isRegistered);
  QCOMPARE(fixture.isShown("mDeviceConnectionWindow"), !isRegistered);
}

void MouseMainControllerStartUpTest::
    a_refused_registration_shows_the_first_default_profile_disabled_and_the_connection_sheet() {
  HubFixture fixture;
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(false));
  fixture.start({});
  // What is shown are no settings of a mouse: nothing of them is sent.
  QVERIFY(fixture.link.requests == (Requests{{MessageID::RegisterDevice, registration()}}));
  QVERIFY(fixture.hub().mDefaultProfileDict() == factorySettings()[keys::Profiles].at(0));
  QVERIFY(fixture.hub().mProfilesArray() == factorySettings()[keys::Profiles]);
  QVERIFY(fixture.hub().mMacrosArray() == factorySettings()[keys::Macros]);
  QVERIFY(fixture.hub().mDeviceSettingsDict() == PropertyList::dictionary());
  QCOMPARE(fixture.hub().mFirmwareVersionString(), std::string("-"));
  QCOMPARE(fixture.text("mFirmwareVersion"), QStringLiteral("-"));
  QCOMPARE(fixture.text("mDriverVersion"), QStringLiteral("-"));
  QCOMPARE(fixture.enabledPages(), QStringList());
  QVERIFY(fixture.isShown("mDeviceConnectionWindow"));
  QVERIFY(!fixture.isShown("mRestoringStateWindow"));
  QVERIFY(fixture.window.stateStrip().isVisible());
  QCOMPARE(fixture.window.stateStrip().text(), localized("lkeyStateNoDevice"));

  fixture.sheet("mDeviceConnectionWindow")->findChild<QAbstractButton*>(QStringLiteral("mDeviceConnectionOK"))->click();
  QVERIFY(!fixture.isShown("mDeviceConnectionWindow"));
  QVERIFY(fixture.window.stateStrip().isVisible());
}

void MouseMainControllerStartUpTest::the_strip_speaks_of_default_settings_only_where_they_are_shown() {
  HubFixture fixture;
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(false));
  fixture.start({});
  fixture.notifications.post("Device Removed 273", "", {});
  QCOMPARE(fixture.window.stateStrip().text(), localized("lkeyStateNoDevice"));
  fixture.notifications.post("Keymap Updated 273", "",
                             PropertyList::dictionary({{vorn::newsKeys::UpdatedKeymapProfile, bundleWith({"Mine"})}}));
  fixture.notifications.post("Device Removed 273", "", {});
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QStringLiteral("Mine"));
  QCOMPARE(fixture.window.stateStrip().text(), localized("lkeyStateDeviceGone"));
  QCOMPARE(fixture.enabledPages(), QStringList());
}

void MouseMainControllerStartUpTest::
    an_unanswered_registration_shows_the_defaults_disabled_and_reports_a_communication_error() {
  HubFixture fixture;
  fixture.link.isAvailable = false;
  fixture.start({});
  QVERIFY(fixture.link.requests == (Requests{{MessageID::RegisterDevice, registration()}}));
  const std::vector<ScriptedLink::Wait> waits{{601, 10ms}};
  QVERIFY(fixture.link.unansweredWaits == waits);
  QVERIFY(fixture.hub().mDefaultProfileDict() == factorySettings()[keys::Profiles].at(0));
  QCOMPARE(fixture.hub().mFirmwareVersionString(), std::string());
  QCOMPARE(fixture.enabledPages(), QStringList());
  QVERIFY(!fixture.isShown("mDeviceConnectionWindow"));
  const QMessageBox* alert = alertOf(fixture.window);
  QVERIFY(alert != nullptr && alert->isVisible());
  QCOMPARE(alert->text(), localized("lkeyCommErrorTitle"));
  QCOMPARE(alert->informativeText(), localized("lkeyCommErrorDesc"));
  QCOMPARE(alert->icon(), QMessageBox::Warning);
  QCOMPARE(alert->buttons().size(), 1);
  QCOMPARE(alert->buttons().constFirst()->text(), localized("lkeyOK"));
  QCOMPARE(fixture.window.stateStrip().text(), localized("lkeyStateNoEngine"));
}

void MouseMainControllerStartUpTest::an_answer_that_is_an_empty_dictionary_counts_as_refused() {
  HubFixture fixture;
  fixture.link.answer(MessageID::RegisterDevice, PropertyList::dictionary());
  fixture.start({});
  QVERIFY(fixture.isShown("mDeviceConnectionWindow"));
  QVERIFY(alertOf(fixture.window) == nullptr);
}

void MouseMainControllerStartUpTest::in_every_outcome_the_news_and_the_query_answers_are_observed_data() {
  QTest::addColumn<int>("outcome");
  QTest::newRow("registered") << 0;
  QTest::newRow("refused") << 1;
  QTest::newRow("unanswered") << 2;
}

void MouseMainControllerStartUpTest::in_every_outcome_the_news_and_the_query_answers_are_observed() {
  QFETCH(int, outcome);
  HubFixture fixture;
  if (outcome < 2) fixture.link.answer(MessageID::RegisterDevice, statusAnswer(outcome == 0));
  if (outcome == 0) fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundleWith({"Work"})));
  fixture.start({});
  const std::vector<std::string> expected{
      "SingleKeyEvent273",   "MacroSequence273",   "SingleKeyEvent1050",  "commandReplyNotification273",
      "Device Attached 273", "Device Removed 273", "Profile Updated 273", "DPI Updated 273",
      "Keymap Updated 273",  "Device Attached 0"};
  QVERIFY(fixture.notifications.observed() == expected);
  QCOMPARE(fixture.hub().mDevicePID(), 273U);
  QVERIFY(fixture.hub().mIsWiredDevice());
}

void MouseMainControllerStartUpTest::a_background_launch_looks_for_the_engine_once_a_second_until_it_is_there() {
  SteppedSleep stepped;
  HubFixture fixture;
  fixture.sleep = stepped.sleep();
  fixture.link.isAvailable = false;
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(true));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundleWith({"Work"})));
  fixture.create();
  QSignalSpy finished(fixture.delegate.get(), &Vorn_ConfiguratorAppDelegate::startUpFinished);
  fixture.delegate->applicationDidFinishLaunching({.isDefaultLaunch = false});

  stepped.waitForSleeps(1);
  QCOMPARE(fixture.link.lookUps, 0);
  for (int look = 1; look <= 3; ++look) {
    stepped.letOnePass();
    stepped.waitForSleeps(static_cast<std::size_t>(look) + 1);
    QCOMPARE(fixture.link.lookUps, look);
    QVERIFY(fixture.isShown("mRestoringStateWindow"));
    QVERIFY(fixture.link.requests.empty());
  }
  for (const auto interval : stepped.intervals) QCOMPARE(interval.count(), 1000);

  fixture.link.isAvailable = true;
  stepped.letOnePass();
  QVERIFY(QTest::qWaitFor([&] { return finished.count() == 1; }));
  QVERIFY(!fixture.isShown("mRestoringStateWindow"));
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QStringLiteral("Work"));
}

void MouseMainControllerStartUpTest::a_background_launch_that_is_closed_early_ends_at_once() {
  SteppedSleep stepped;
  HubFixture fixture;
  fixture.sleep = stepped.sleep();
  fixture.link.isAvailable = false;
  fixture.create();
  fixture.delegate->applicationDidFinishLaunching({.isDefaultLaunch = false});
  stepped.waitForSleeps(1);
  fixture.delegate.reset();
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerStartUpTest::a_launch_without_the_key_shows_no_restoring_sheet() {
  HubFixture fixture;
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(true));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundleWith({"Work"})));
  bool wasShown = true;
  fixture.link.onSend = [&](const ScriptedLink::Request& request) {
    if (request.messageID == MessageID::RegisterDevice) wasShown = fixture.isShown("mRestoringStateWindow");
  };
  fixture.start({.isDefaultLaunch = std::nullopt});
  QVERIFY(!wasShown);
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QStringLiteral("Work"));
}

void MouseMainControllerStartUpTest::the_window_and_the_restoring_sheet_are_painted_before_the_first_wait() {
  HubFixture fixture;
  fixture.create();
  PaintCounter window(&fixture.window);
  PaintCounter sheet(fixture.sheet("mRestoringStateWindow"));
  int paintsOfWindow = 0;
  int paintsOfSheet = 0;
  bool isTurning = false;
  fixture.link.onSend = [&](const ScriptedLink::Request& request) {
    if (request.messageID != MessageID::RegisterDevice) return;
    paintsOfWindow = window.paints;
    paintsOfSheet = sheet.paints;
    isTurning = fixture.window.findChild<BusyIndicator*>(QStringLiteral("mRestoringStateProgress"))->isRunning();
  };
  QSignalSpy finished(fixture.delegate.get(), &Vorn_ConfiguratorAppDelegate::startUpFinished);
  fixture.delegate->applicationDidFinishLaunching({});
  QVERIFY(finished.wait());
  QVERIFY(paintsOfWindow > 0);
  QVERIFY(paintsOfSheet > 0);
  QVERIFY(isTurning);
}

void MouseMainControllerStartUpTest::the_window_says_what_it_waits_for_while_no_engine_is_there() {
  HubFixture fixture;
  fixture.link.isAvailable = false;
  QStringList said;
  fixture.link.onSend = [&](const ScriptedLink::Request&) { said << fixture.window.stateStrip().text(); };
  fixture.start({});
  QCOMPARE(said, QStringList(localized("lkeyStateStarting")));
}

void MouseMainControllerStartUpTest::the_restoring_sheet_cannot_be_closed_by_the_user() {
  SteppedSleep stepped;
  HubFixture fixture;
  fixture.sleep = stepped.sleep();
  fixture.link.isAvailable = false;
  fixture.create();
  fixture.delegate->applicationDidFinishLaunching({.isDefaultLaunch = false});
  QDialog* sheet = fixture.sheet("mRestoringStateWindow");
  QVERIFY(QTest::qWaitForWindowExposed(sheet));
  QTest::keyClick(sheet, Qt::Key_Escape);
  QVERIFY(sheet->isVisible());
}

void MouseMainControllerStartUpTest::the_report_tells_what_happened_in_one_line_each() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work", "Play"}, {"Greet"}));
  QCOMPARE(fixture.reports.size(), std::size_t{3});
  QCOMPARE(fixture.reports[0], std::string("engine found"));
  QCOMPARE(fixture.reports[1], std::string("registered"));
  QVERIFY(fixture.reports[2].starts_with("settings loaded: 2 profiles, 1 macros, in "));
}

void MouseMainControllerStartUpTest::the_firmware_version_is_asked_for_every_three_seconds_until_it_is_known() {
  SteppedSleep stepped;
  HubFixture fixture;
  fixture.sleep = stepped.sleep();
  fixture.startConnected(bundleWith({"Work"}));
  stepped.waitForSleeps(1);
  QVERIFY(fixture.link.requests.empty());
  stepped.letOnePass();
  stepped.waitForSleeps(2);
  stepped.letOnePass();
  stepped.waitForSleeps(3);
  const std::vector<ScriptedLink::Request> twice{{MessageID::QueryFirmwareVersion, envelope()},
                                                 {MessageID::QueryFirmwareVersion, envelope()}};
  QVERIFY(fixture.link.requests == twice);
  fixture.notifications.post("commandReplyNotification273", "",
                             PropertyList::dictionary({{vorn::newsKeys::MessageID, 14},
                                                       {vorn::newsKeys::ReturnStatus, 0},
                                                       {vorn::newsKeys::FirmwareVersion, "1.04"}}));
  // Nothing sleeps and asks any more.
  const std::size_t sleeps = stepped.intervals.size();
  stepped.letOnePass();
  fixture.hub().FWQueryThreadAboutToRun();
  QCOMPARE(stepped.intervals.size(), sleeps);
  QVERIFY(fixture.link.requests == twice);
  for (const auto interval : stepped.intervals) QCOMPARE(interval.count(), 3000);
  QCOMPARE(fixture.text("mFirmwareVersion"), QStringLiteral("1.04"));
  QCOMPARE(fixture.text("mDriverVersion"), Bundle::mainBundle().version());
}

void MouseMainControllerStartUpTest::a_firmware_version_that_is_unknown_for_lack_of_a_device_is_not_asked_for() {
  SteppedSleep stepped;
  HubFixture fixture;
  fixture.sleep = stepped.sleep();
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(false));
  fixture.start({});
  fixture.link.requests.clear();
  QVERIFY(stepped.intervals.empty());
  // Until a mouse comes.
  fixture.notifications.post("Device Attached 273", "", {});
  stepped.waitForSleeps(1);
  const auto isQuery = [](const ScriptedLink::Request& sent) {
    return sent.messageID == MessageID::QueryFirmwareVersion;
  };
  QCOMPARE(std::ranges::count_if(fixture.link.requests, isQuery), 1);
  stepped.letOnePass();
  stepped.waitForSleeps(2);
  QCOMPARE(std::ranges::count_if(fixture.link.requests, isQuery), 2);
}

void MouseMainControllerStartUpTest::quitting_releases_the_device_with_its_product_only_and_waits_for_nothing() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.delegate->applicationWillTerminate();
  const std::vector<ScriptedLink::Request> expected{
      {MessageID::ReleaseDevice, PropertyList::dictionary({{requestKeys::ProductID, 273}})}};
  QVERIFY(fixture.link.requests == expected);
  QVERIFY(fixture.link.unansweredWaits.empty());
}

void MouseMainControllerStartUpTest::closing_the_last_window_ends_the_program() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  QGuiApplication::setQuitOnLastWindowClosed(fixture.delegate->applicationShouldTerminateAfterLastWindowClosed());
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, fixture.delegate.get(),
                   &Vorn_ConfiguratorAppDelegate::applicationWillTerminate);
  QTimer::singleShot(0, &fixture.window, &QWidget::close);
  QCOMPARE(QCoreApplication::exec(), 0);
  QCOMPARE(fixture.link.requests.size(), std::size_t{1});
  QCOMPARE(fixture.link.requests[0].messageID, MessageID::ReleaseDevice);
}

void MouseMainControllerStartUpTest::closing_the_restoring_sheet_ends_the_program() {
  SteppedSleep stepped;
  HubFixture fixture;
  fixture.sleep = stepped.sleep();
  fixture.link.isAvailable = false;
  fixture.create();
  fixture.delegate->applicationDidFinishLaunching({.isDefaultLaunch = false});
  // The last window is not closed by it: that would end the program too.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  constexpr int stillRunning = 9;
  QTimer::singleShot(0, fixture.sheet("mRestoringStateWindow"), &QWidget::close);
  QTimer::singleShot(std::chrono::seconds(20), &fixture.window, [] { QCoreApplication::exit(stillRunning); });
  QCOMPARE(QCoreApplication::exec(), 0);
  QVERIFY(fixture.window.isVisible());
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerStartUpTest::the_tabs_outlive_the_hub() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}, {"Greet"}));
  fixture.delegate.reset();
  fixture.window.ui().MouseMacrosController->mMacroTableView()->selectRow(0);
  QVERIFY(fixture.window.ui().MouseMacrosController->mMacroDelegate() == nullptr);
  QVERIFY(fixture.window.ui().MouseProfilesController->mProfileDelegate() == nullptr);
  QVERIFY(fixture.window.ui().MouseButtonController->mButtonDelegate() == nullptr);
  QVERIFY(fixture.notifications.observed().empty());
}

void MouseMainControllerStartUpTest::leaving_the_application_ends_a_recording_under_way() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}, {"Greet"}));
  fixture.window.ui().MouseMacrosController->mMacroTableView()->selectRow(0);
  fixture.link.requests.clear();
  fixture.delegate->applicationWillResignActive();
  QVERIFY(fixture.link.requests.empty());
  fixture.window.ui().MouseMacrosController->setMIsRecording(true);
  fixture.delegate->applicationWillResignActive();
  std::vector<MessageID> order;
  for (const auto& sent : fixture.link.requests) order.push_back(sent.messageID);
  QVERIFY(order == (std::vector<MessageID>{MessageID::StopMacroRecording, MessageID::SaveRecordedEvents,
                                           MessageID::GetMacroDetails}));
  QVERIFY(!fixture.window.ui().MouseMacrosController->mIsRecording());
}

void MouseMainControllerStartUpTest::a_bundle_of_any_shape_shows_empty_values_data() {
  QTest::addColumn<int>("shape");
  QTest::newRow("no members") << 0;
  QTest::newRow("members of other types") << 1;
  QTest::newRow("profiles that are no dictionaries") << 2;
  QTest::newRow("active profile beyond the list") << 3;
  QTest::newRow("negative active profile") << 4;
  QTest::newRow("an empty list of profiles") << 5;
  QTest::newRow("a profile whose values have other types") << 6;
  QTest::newRow("an active profile of more than 32 bits") << 7;
}

void MouseMainControllerStartUpTest::a_bundle_of_any_shape_shows_empty_values() {
  QFETCH(int, shape);
  PropertyList bundle = bundleWith({"Work"});
  const PropertyList junk = PropertyList::array({PropertyList("x"), PropertyList(7), PropertyList::array()});
  const auto active = [&](std::int64_t profile) {
    return bundle.with(keys::DeviceSettings, bundle[keys::DeviceSettings].with(keys::ActiveProfile, profile));
  };
  if (shape == 0) bundle = PropertyList::dictionary();
  if (shape == 1) {
    bundle = PropertyList::dictionary({{keys::Profiles, "x"}, {keys::Macros, 7}, {keys::DeviceSettings, junk}});
  }
  if (shape == 2) bundle = bundle.with(keys::Profiles, junk).with(keys::Macros, junk);
  if (shape == 3) bundle = active(1);
  if (shape == 4) bundle = active(-1);
  if (shape == 7) bundle = active(std::int64_t{1} << 32);
  if (shape == 5) bundle = bundle.with(keys::Profiles, PropertyList::array());
  if (shape == 6) {
    PropertyList profile = bundle[keys::Profiles].at(0);
    for (const auto key : profile.keys()) profile = profile.with(key, junk);
    bundle = bundle.with(keys::Profiles, PropertyList::array({profile}));
  }
  HubFixture fixture;
  fixture.startConnected(bundle);
  for (int tab = 0; tab < 6; ++tab) {
    fixture.hub().selectTabAtIndex(tab);
    fixture.window.grab();
  }
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QString());
}

SKARN_QTEST(MouseMainControllerStartUpTest)
#include "MouseMainController_start_up_test.moc"
