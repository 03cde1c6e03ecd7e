// What the hub does with the engine's notifications, and how it shows the device's presence and battery.
#include <QPushButton>
#include <QTest>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

#include "app/HubFixture.h"
#include "app/NamedImageView.h"
#include "app/StateStrip.h"
#include "support/QtTests.h"
#include "widgets/BusyIndicator.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

PropertyList oldBundle() {
  return bundleWith({"Work"});
}
PropertyList newBundle() {
  return bundleWith({"Play"});
}

PropertyList source(const char* application) {
  return PropertyList::dictionary({{"Source App", application}});
}

PropertyList queryAnswer(int messageID, std::initializer_list<PropertyList::Pair> entries = {}) {
  return PropertyList::dictionary({{"MessageID", messageID}}).merging(PropertyList::dictionary(entries));
}

// Sleeps that no thread wakes from, but for the charging animation's, which pass one by one when the test says so.
struct ChargingSteps {
  StoppableSleep sleep() {
    return [this](std::stop_token stop, std::chrono::milliseconds interval) {
      std::unique_lock lock(mutex);
      const bool isOurs = interval == std::chrono::seconds(1);
      if (isOurs) threads.insert(std::this_thread::get_id());
      changed.wait(lock, stop, [&] { return isOurs && permits > 0; });
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
  std::size_t threadCount() {
    const std::lock_guard lock(mutex);
    return threads.size();
  }

  std::mutex mutex;
  std::condition_variable_any changed;
  int permits = 0;
  std::set<std::thread::id> threads;
};

struct Connected : HubFixture {
  Connected() {
    startConnected(oldBundle());
    link.answer(MessageID::GetAllSettings, allSettingsAnswer(newBundle()));
  }
  QString profile() { return window.ui().mHeaderProfileName->text(); }
  QString battery() { return window.ui().mBattery->imageName(); }
  QString connectivity() { return window.ui().mDeviceConnectivity->imageName(); }
  void reply(const PropertyList& info) { notifications.post("commandReplyNotification273", "", info); }
  void level(int percent) { reply(queryAnswer(15, {{"BatteryPercentLevel", percent}})); }
  void charging(int status) { reply(queryAnswer(16, {{"DeviceChargingStatus", status}})); }
  std::size_t count(MessageID messageID) {
    std::size_t n = 0;
    for (const auto& sent : link.requests) n += sent.messageID == messageID ? 1 : 0;
    return n;
  }
};

}  // namespace

class MouseMainControllerNewsTest : public QObject {
  Q_OBJECT

 private slots:
  void each_observer_is_added_and_removed_by_its_own_name();
  void a_change_of_this_application_reloads_nothing_and_any_other_does_data();
  void a_change_of_this_application_reloads_nothing_and_any_other_does();
  void a_change_handler_is_not_entered_again_by_what_its_reload_causes_data();
  void a_change_handler_is_not_entered_again_by_what_its_reload_causes();
  void changes_that_come_close_together_are_one_more_reload();
  void a_keymap_change_shows_the_bundle_it_brings_without_a_request();
  void a_keymap_change_without_a_bundle_changes_nothing();
  void an_attachment_enables_the_tabs_and_shows_the_settings_data();
  void an_attachment_enables_the_tabs_and_shows_the_settings();
  void an_attachment_of_another_product_keeps_the_product();
  void a_removal_disables_the_tabs_and_shows_the_connection_sheet();
  void two_attachments_leave_two_observers_of_query_answers();
  void an_unknown_or_empty_query_answer_is_ignored();
  void the_battery_level_shows_one_two_or_three_bars_data();
  void the_battery_level_shows_one_two_or_three_bars();
  void an_equal_charging_status_changes_nothing();
  void after_a_removal_the_first_charging_status_is_handled_again();
  void charging_steps_the_icon_once_a_second_and_stops_on_battery();
  void a_removal_ends_the_charging_animation();
  void no_battery_clears_the_icon();
  void a_step_of_the_animation_follows_the_current_picture_data();
  void a_step_of_the_animation_follows_the_current_picture();
  void the_firmware_indicator_turns_from_the_query_to_its_answer_data();
  void the_firmware_indicator_turns_from_the_query_to_its_answer();
  void a_failing_firmware_answer_without_a_version_keeps_the_query_running();
  void a_failing_firmware_answer_with_a_version_ends_the_query_and_shows_nothing();
  void connection_and_battery_are_told_in_words();
  void an_engine_that_no_longer_answers_is_told_until_it_answers_again();
  void a_removal_leaves_the_keyboard_at_the_tabs();
  void the_battery_status_is_asked_for_every_ten_seconds_by_its_own_thread();
};

void MouseMainControllerNewsTest::each_observer_is_added_and_removed_by_its_own_name() {
  Connected fixture;
  MouseMainController& hub = fixture.hub();
  auto& log = fixture.notifications.log;
  hub.removeObserverDeviceAttachment();
  hub.addObserverDeviceAttachment();
  hub.removeObserverDeviceRemoval();
  hub.addObserverDeviceRemoval();
  hub.removeObserverProfileUpdate();
  hub.addObserverProfileUpdate();
  hub.removeObserverDPIUpdate();
  hub.addObserverDPIUpdate();
  hub.removeObserverKeymapPressed();
  hub.addObserverKeymapPressed();
  const std::vector<std::string> expected{"-Device Attached 273", "-Device Attached 0",   "+Device Attached 273",
                                          "+Device Attached 0",   "-Device Removed 273",  "+Device Removed 273",
                                          "-Profile Updated 273", "+Profile Updated 273", "-DPI Updated 273",
                                          "+DPI Updated 273",     "-Keymap Updated 273",  "+Keymap Updated 273"};
  QVERIFY(log == expected);
}

void MouseMainControllerNewsTest::a_change_of_this_application_reloads_nothing_and_any_other_does_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<QString>("application");
  QTest::addColumn<bool>("reloads");
  for (const char* name : {"Profile Updated 273", "DPI Updated 273"}) {
    QTest::addRow("%s, ours", name) << name << "org.vorn.SkarnConfigurator" << false;
    QTest::addRow("%s, another application's", name) << name << "org.example.other" << true;
    QTest::addRow("%s, ours in another case", name) << name << "org.vorn.skarnconfigurator" << true;
    QTest::addRow("%s, nobody's", name) << name << QString() << true;
  }
}

void MouseMainControllerNewsTest::a_change_of_this_application_reloads_nothing_and_any_other_does() {
  QFETCH(QString, name);
  QFETCH(QString, application);
  QFETCH(bool, reloads);
  Connected fixture;
  fixture.notifications.post(name.toStdString(), "",
                             application.isEmpty() ? PropertyList() : source(application.toUtf8().constData()));
  QCOMPARE(fixture.count(MessageID::GetAllSettings), reloads ? 1U : 0U);
  QCOMPARE(fixture.link.requests.size(), reloads ? 1U : 0U);
  QCOMPARE(fixture.profile(), reloads ? QStringLiteral("Play") : QStringLiteral("Work"));
  const std::vector<std::string> log{"-" + name.toStdString(), "+" + name.toStdString()};
  QVERIFY(fixture.notifications.log == log);
}

void MouseMainControllerNewsTest::a_change_handler_is_not_entered_again_by_what_its_reload_causes_data() {
  QTest::addColumn<QString>("name");
  QTest::newRow("profile") << "Profile Updated 273";
  QTest::newRow("sensitivity") << "DPI Updated 273";
  QTest::newRow("attachment") << "Device Attached 273";
}

void MouseMainControllerNewsTest::a_change_handler_is_not_entered_again_by_what_its_reload_causes() {
  QFETCH(QString, name);
  Connected fixture;
  fixture.link.onSend = [&](const ScriptedLink::Request& sent) {
    if (sent.messageID == MessageID::GetAllSettings) fixture.notifications.post(name.toStdString(), "", {});
  };
  fixture.notifications.post(name.toStdString(), "", {});
  QCOMPARE(fixture.count(MessageID::GetAllSettings), 1U);
}

void MouseMainControllerNewsTest::changes_that_come_close_together_are_one_more_reload() {
  Connected fixture;
  for (int news = 0; news < 1000; ++news) {
    fixture.notifications.post(news % 2 ? "DPI Updated 273" : "Profile Updated 273", "",
                               source("org.example.OtherApp"));
  }
  QCOMPARE(fixture.count(MessageID::GetAllSettings), 1U);
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundleWith({"Latest"})));
  QTRY_COMPARE(fixture.profile(), QStringLiteral("Latest"));
  QCOMPARE(fixture.count(MessageID::GetAllSettings), 2U);
}

void MouseMainControllerNewsTest::a_keymap_change_shows_the_bundle_it_brings_without_a_request() {
  Connected fixture;
  const PropertyList bundle = newBundle();
  fixture.notifications.post("Keymap Updated 273", "", PropertyList::dictionary({{"Updated Keymap Profile", bundle}}));
  QVERIFY(fixture.link.requests.empty());
  QVERIFY(fixture.notifications.log.empty());
  QCOMPARE(fixture.profile(), QStringLiteral("Play"));
  QVERIFY(fixture.window.ui().MouseButtonController->mAllProfiles() == bundle[keys::Profiles]);
}

void MouseMainControllerNewsTest::a_keymap_change_without_a_bundle_changes_nothing() {
  Connected fixture;
  fixture.notifications.post("Keymap Updated 273", "", {});
  fixture.notifications.post("Keymap Updated 273", "", PropertyList::dictionary({{"Updated Keymap Profile", "x"}}));
  QCOMPARE(fixture.profile(), QStringLiteral("Work"));
}

void MouseMainControllerNewsTest::an_attachment_enables_the_tabs_and_shows_the_settings_data() {
  QTest::addColumn<bool>("isRefused");  // or never answered
  QTest::addColumn<int>("product");
  QTest::addColumn<bool>("isWired");
  QTest::addColumn<QString>("picture");
  for (const bool isRefused : {true, false}) {
    const char* start = isRefused ? "without a mouse" : "with a silent engine";
    QTest::addRow("started %s, on its cable", start) << isRefused << 273 << true << "usb";
    QTest::addRow("started %s, on its receiver", start) << isRefused << 0 << false << "wireless";
  }
}

void MouseMainControllerNewsTest::an_attachment_enables_the_tabs_and_shows_the_settings() {
  QFETCH(bool, isRefused);
  QFETCH(int, product);
  QFETCH(bool, isWired);
  QFETCH(QString, picture);
  HubFixture base;
  if (isRefused) base.link.answer(MessageID::RegisterDevice, statusAnswer(false));
  base.start({});
  QCOMPARE(base.isShown("mDeviceConnectionWindow"), isRefused);
  QVERIFY(base.enabledPages().isEmpty());
  QVERIFY(!base.window.ui().MouseProfilesController->mProfilesTableView()->isEnabled());
  QCOMPARE(base.link.requests.size(), std::size_t{1});
  base.link.requests.clear();
  base.link.answer(MessageID::GetAllSettings, allSettingsAnswer(newBundle()));
  base.link.answer(MessageID::UpdateProfile, changeAnswer(newBundle()));

  base.notifications.post("Device Attached " + std::to_string(product), "", {});
  QVERIFY(!base.isShown("mDeviceConnectionWindow"));
  QVERIFY(!base.window.stateStrip().isVisible());
  QCOMPARE(base.enabledPages().size(), 6);
  QVERIFY(base.window.ui().MouseProfilesController->mProfilesTableView()->isEnabled());
  QCOMPARE(base.window.ui().mHeaderProfileName->text(), QStringLiteral("Play"));
  QCOMPARE(base.window.ui().mDeviceConnectivity->imageName(), picture);
  QCOMPARE(base.hub().mIsWiredDevice(), isWired);
  QCOMPARE(base.hub().mDevicePID(), static_cast<std::uint32_t>(product));
  const PropertyList envelope =
      PropertyList::dictionary({{"ProductID", product}, {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}});
  // The first redraw of the mouse's own settings sends effect and brightness back.
  std::vector<ScriptedLink::Request> expected{{MessageID::GetAllSettings, envelope}};
  for (const auto& lighting : lightingRequests(newBundle()[keys::DeviceSettings][keys::ActiveProfile].toInt())) {
    expected.push_back({lighting.messageID, lighting.body.with("ProductID", product)});
  }
  expected.push_back({MessageID::QueryFirmwareVersion, envelope});
  QVERIFY(base.link.requests == expected);
  const std::vector<std::string> observed = base.notifications.observed();
  QVERIFY(std::ranges::count(observed, "commandReplyNotification" + std::to_string(product)) ==
          (product == 273 ? 2 : 1));
}

void MouseMainControllerNewsTest::an_attachment_of_another_product_keeps_the_product() {
  Connected fixture;
  fixture.hub().deviceConnectedNotification({"Device Attached 31", "", {}});
  QCOMPARE(fixture.hub().mDevicePID(), 273U);
  QVERIFY(fixture.hub().mIsWiredDevice());
  QCOMPARE(fixture.profile(), QStringLiteral("Play"));
  QCOMPARE(std::ranges::count(fixture.notifications.observed(), "commandReplyNotification273"), 1);
}

void MouseMainControllerNewsTest::a_removal_disables_the_tabs_and_shows_the_connection_sheet() {
  Connected fixture;
  fixture.charging(0);
  fixture.level(80);
  fixture.hub().updateDeviceConnectivityIcon();
  fixture.link.requests.clear();
  fixture.notifications.log.clear();
  fixture.notifications.post("Device Removed 273", "", {});
  QVERIFY(fixture.isShown("mDeviceConnectionWindow"));
  // The settings shown are still the user's own.
  QCOMPARE(fixture.profile(), QStringLiteral("Work"));
  QVERIFY(fixture.window.stateStrip().isVisible());
  QCOMPARE(fixture.text("mStateStrip"), localized("lkeyStateDeviceGone"));
  QCOMPARE(fixture.text("mFirmwareVersion"), QStringLiteral("-"));
  QVERIFY(fixture.battery().isEmpty());
  QVERIFY(fixture.connectivity().isEmpty());
  QCOMPARE(fixture.hub().mBatteryStatus(), 255U);
  QCOMPARE(fixture.enabledPages(), QStringList());
  QVERIFY(!fixture.window.ui().MouseProfilesController->mProfilesTableView()->isEnabled());
  QVERIFY(fixture.link.requests.empty());
  const std::vector<std::string> log{"-Device Removed 273", "+Device Removed 273"};
  QVERIFY(fixture.notifications.log == log);
}

void MouseMainControllerNewsTest::two_attachments_leave_two_observers_of_query_answers() {
  Connected fixture;
  fixture.notifications.post("Device Attached 0", "", {});
  fixture.notifications.post("Device Attached 0", "", {});
  fixture.link.requests.clear();
  // Running on battery makes the hub ask for the level; the status itself is filtered the second time.
  fixture.notifications.post("commandReplyNotification0", "", queryAnswer(16, {{"DeviceChargingStatus", 0}}));
  QCOMPARE(fixture.count(MessageID::QueryBatteryLevel), 1U);
  QCOMPARE(std::ranges::count(fixture.notifications.observed(), "commandReplyNotification0"), 2);
}

void MouseMainControllerNewsTest::an_unknown_or_empty_query_answer_is_ignored() {
  Connected fixture;
  fixture.reply(queryAnswer(17, {{"BatteryPercentLevel", 50}, {"DeviceChargingStatus", 1}}));
  fixture.reply({});
  QVERIFY(fixture.battery().isEmpty());
  QCOMPARE(fixture.hub().mBatteryStatus(), 255U);
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerNewsTest::the_battery_level_shows_one_two_or_three_bars_data() {
  QTest::addColumn<int>("percent");
  QTest::addColumn<QString>("picture");
  QTest::newRow("0") << 0 << "battery1";
  QTest::newRow("33") << 33 << "battery1";
  QTest::newRow("34") << 34 << "battery2";
  QTest::newRow("67") << 67 << "battery2";
  QTest::newRow("68") << 68 << "battery3";
  QTest::newRow("100") << 100 << "battery3";
  QTest::newRow("101 leaves two bars") << 101 << "battery2";
  QTest::newRow("negative") << -1 << "battery1";
}

void MouseMainControllerNewsTest::the_battery_level_shows_one_two_or_three_bars() {
  QFETCH(int, percent);
  QFETCH(QString, picture);
  Connected fixture;
  fixture.level(50);
  QCOMPARE(fixture.battery(), QStringLiteral("battery2"));
  fixture.level(percent);
  QCOMPARE(fixture.battery(), picture);
}

void MouseMainControllerNewsTest::an_equal_charging_status_changes_nothing() {
  Connected fixture;
  fixture.charging(0);
  const std::vector<ScriptedLink::Request> asked{
      {MessageID::QueryBatteryLevel,
       PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}})}};
  QVERIFY(fixture.link.requests == asked);
  QVERIFY(fixture.link.unansweredWaits.empty());
  QCOMPARE(fixture.battery(), QStringLiteral("battery3"));
  fixture.charging(0);
  QCOMPARE(fixture.count(MessageID::QueryBatteryLevel), 1U);
}

void MouseMainControllerNewsTest::after_a_removal_the_first_charging_status_is_handled_again() {
  Connected fixture;
  fixture.charging(0);
  fixture.notifications.post("Device Removed 273", "", {});
  fixture.notifications.post("Device Attached 273", "", {});
  fixture.link.requests.clear();
  // Two observers now, and the equal second delivery is filtered.
  fixture.charging(0);
  QCOMPARE(fixture.count(MessageID::QueryBatteryLevel), 1U);
}

void MouseMainControllerNewsTest::charging_steps_the_icon_once_a_second_and_stops_on_battery() {
  ChargingSteps steps;
  HubFixture fixture;
  fixture.sleep = steps.sleep();
  fixture.startConnected(oldBundle());
  auto* battery = fixture.window.ui().mBattery;
  const auto shows = [&](const char* picture) {
    return QTest::qWaitFor([&] { return battery->imageName() == QLatin1String(picture); });
  };
  const auto status = [&](int value) {
    fixture.notifications.post("commandReplyNotification273", "", queryAnswer(16, {{"DeviceChargingStatus", value}}));
  };
  status(1);
  QVERIFY(shows("battery"));  // the first step comes at once
  for (const char* picture : {"battery1", "battery2", "battery3", "battery"}) {
    steps.letOnePass();
    QVERIFY(shows(picture));
  }
  status(1);
  QCOMPARE(steps.threadCount(), std::size_t{1});
  status(0);
  QCOMPARE(fixture.link.requests.back().messageID, MessageID::QueryBatteryLevel);
  fixture.notifications.post("commandReplyNotification273", "", queryAnswer(15, {{"BatteryPercentLevel", 50}}));
  QCOMPARE(battery->imageName(), QStringLiteral("battery2"));
  steps.letOnePass();
  QTest::qWait(0);
  QCOMPARE(battery->imageName(), QStringLiteral("battery2"));
}

void MouseMainControllerNewsTest::a_removal_ends_the_charging_animation() {
  ChargingSteps steps;
  HubFixture fixture;
  fixture.sleep = steps.sleep();
  fixture.startConnected(oldBundle());
  auto* battery = fixture.window.ui().mBattery;
  const auto charges = [&] {
    fixture.notifications.post("commandReplyNotification273", "", queryAnswer(16, {{"DeviceChargingStatus", 1}}));
  };
  charges();
  QTRY_COMPARE(battery->imageName(), QStringLiteral("battery"));
  QTRY_COMPARE(steps.threadCount(), std::size_t{1});
  fixture.notifications.post("Device Removed 273", "", {});
  QCOMPARE(battery->imageName(), QString());
  // The thread ended with its animation: the next charging has one of its own, which begins with a step at once.
  charges();
  QTRY_COMPARE(battery->imageName(), QStringLiteral("battery"));
  steps.letOnePass();
  QTRY_COMPARE(battery->imageName(), QStringLiteral("battery1"));
}

void MouseMainControllerNewsTest::a_step_of_the_animation_follows_the_current_picture_data() {
  QTest::addColumn<QString>("from");
  QTest::addColumn<QString>("to");
  QTest::newRow("nothing counts as full") << ""
                                          << "battery";
  QTest::newRow("full") << "battery3.png"
                        << "battery";
  QTest::newRow("empty") << "battery.png"
                         << "battery1";
  QTest::newRow("any other picture stays") << "usb.png"
                                           << "usb";
}

void MouseMainControllerNewsTest::a_step_of_the_animation_follows_the_current_picture() {
  QFETCH(QString, from);
  QFETCH(QString, to);
  Connected fixture;
  if (!from.isEmpty()) fixture.window.ui().mBattery->setImage(from);
  fixture.hub().runChargingBattery();
  QCOMPARE(fixture.battery(), to);
}

void MouseMainControllerNewsTest::no_battery_clears_the_icon() {
  Connected fixture;
  fixture.charging(0);
  fixture.charging(2);
  QVERIFY(fixture.battery().isEmpty());
  fixture.charging(7);
  QCOMPARE(fixture.battery(), QStringLiteral("battery3"));
}

void MouseMainControllerNewsTest::connection_and_battery_are_told_in_words() {
  Connected fixture;
  const auto words = [](const NamedImageView* view) {
    return view->toolTip() == view->accessibleDescription() ? view->toolTip() : QStringLiteral("(two texts)");
  };
  const NamedImageView* connection = fixture.window.ui().mDeviceConnectivity;
  const NamedImageView* battery = fixture.window.ui().mBattery;
  QCOMPARE(words(battery), QString());

  fixture.notifications.post("Device Attached 273", "", {});
  QCOMPARE(words(connection), QStringLiteral("Connected by cable"));
  fixture.notifications.post("Device Attached 0", "", {});
  QCOMPARE(words(connection), QStringLiteral("Connected by the wireless receiver"));

  fixture.charging(0);
  QCOMPARE(words(battery), QStringLiteral("Battery"));
  fixture.level(73);
  QCOMPARE(words(battery), QStringLiteral("Battery at 73 percent"));
  fixture.level(255);
  QCOMPARE(words(battery), QStringLiteral("Battery at 73 percent"));
  fixture.charging(1);
  QCOMPARE(words(battery), QStringLiteral("Battery charging, 73 percent"));
  fixture.charging(2);
  QCOMPARE(words(battery), QString());

  fixture.charging(1);
  fixture.notifications.post("Device Removed 273", "", {});
  QCOMPARE(words(battery), QString());
  QCOMPARE(words(connection), QString());
  // The level of the mouse that went says nothing about the next one.
  fixture.charging(1);
  QTRY_COMPARE(words(battery), QStringLiteral("Battery charging"));
}

void MouseMainControllerNewsTest::the_firmware_indicator_turns_from_the_query_to_its_answer_data() {
  QTest::addColumn<int>("status");
  QTest::newRow("known") << 0;
  QTest::newRow("failed") << 1;
}

void MouseMainControllerNewsTest::the_firmware_indicator_turns_from_the_query_to_its_answer() {
  QFETCH(int, status);
  Connected fixture;
  const auto* indicator = fixture.window.findChild<BusyIndicator*>(QStringLiteral("mFirmwareVersionIndicator"));
  QVERIFY(!indicator->isRunning());
  fixture.hub().setDriverVersions();
  QVERIFY(indicator->isRunning() && !indicator->isHidden());
  fixture.reply(queryAnswer(14, {{"ReturnStatus", status}, {"FirmwareVersion", "1.04"}}));
  QVERIFY(!indicator->isRunning() && indicator->isHidden());
  // Known now, so neither asked for nor waited for.
  fixture.hub().setDriverVersions();
  QVERIFY(!indicator->isRunning());
}

void MouseMainControllerNewsTest::an_engine_that_no_longer_answers_is_told_until_it_answers_again() {
  Connected fixture;
  const auto* strip = fixture.window.findChild<QLabel*>(QStringLiteral("mStateStrip"));
  const PropertyList change = PropertyList::dictionary({{"DPIX", 800}, {"DPIY", 800}});
  QVERIFY(!strip->isVisible());
  fixture.hub().updateValueForSetting(change);
  QVERIFY(strip->isVisible());
  QCOMPARE(strip->text(), localized("lkeyStateEngineSilent"));

  fixture.link.answer(MessageID::UpdateProfile, PropertyList::dictionary({{"ReturnDictionary", newBundle()}}));
  fixture.hub().updateValueForSetting(change);
  QVERIFY(!strip->isVisible());
}

void MouseMainControllerNewsTest::a_removal_leaves_the_keyboard_at_the_tabs() {
  Connected fixture;
  QTabWidget* tabs = fixture.window.ui().mMouseTabView;
  fixture.window.activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&fixture.window));
  QWidget* table = fixture.window.ui().MouseProfilesController->mProfilesTableView();
  tabs->setCurrentWidget(fixture.window.ui().MouseProfilesController);
  table->setFocus();
  QVERIFY(table->hasFocus());
  fixture.hub().updateControlsWithState(false);
  QVERIFY(tabs->tabBar()->hasFocus());

  // Where it is elsewhere, it stays.
  fixture.window.ui().mHelpButton->setFocus();
  fixture.hub().updateControlsWithState(true);
  fixture.hub().updateControlsWithState(false);
  QVERIFY(fixture.window.ui().mHelpButton->hasFocus());
}

void MouseMainControllerNewsTest::a_failing_firmware_answer_without_a_version_keeps_the_query_running() {
  Connected fixture;
  fixture.reply(queryAnswer(14, {{"ReturnStatus", 1}, {"FirmwareVersion", ""}}));
  QCOMPARE(fixture.hub().mFirmwareVersionString(), std::string());
  fixture.hub().setDriverVersions();
  QCOMPARE(fixture.count(MessageID::QueryFirmwareVersion), 1U);
}

void MouseMainControllerNewsTest::a_failing_firmware_answer_with_a_version_ends_the_query_and_shows_nothing() {
  Connected fixture;
  const QString before = fixture.text("mFirmwareVersion");
  fixture.reply(queryAnswer(14, {{"ReturnStatus", 1}, {"FirmwareVersion", "9.9"}}));
  fixture.hub().setDriverVersions();
  QCOMPARE(fixture.count(MessageID::QueryFirmwareVersion), 0U);
  QCOMPARE(fixture.text("mFirmwareVersion"), before);
}

void MouseMainControllerNewsTest::the_battery_status_is_asked_for_every_ten_seconds_by_its_own_thread() {
  std::mutex mutex;
  std::condition_variable_any changed;
  int tenSeconds = 0;
  HubFixture fixture;
  fixture.sleep = [&](std::stop_token stop, std::chrono::milliseconds interval) {
    std::unique_lock lock(mutex);
    if (interval == std::chrono::seconds(10) && tenSeconds++ == 0) return true;
    changed.notify_all();
    changed.wait(lock, stop, [] { return false; });
    return false;
  };
  fixture.startConnected(oldBundle());
  fixture.hub().batteryThreadAboutToRun();
  {
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return tenSeconds == 2; });
  }
  const std::vector<ScriptedLink::Request> expected{
      {MessageID::QueryChargingStatus,
       PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}})}};
  QVERIFY(fixture.link.requests == expected);
}

SKARN_QTEST(MouseMainControllerNewsTest)
#include "MouseMainController_news_test.moc"
