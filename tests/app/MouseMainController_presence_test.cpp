// The hub while the engine goes and comes, and while a request waits for its answer.
#include <QMenu>
#include <QMessageBox>
#include <QTabBar>
#include <QTest>

#include "app/HubFixture.h"
#include "app/NamedImageView.h"
#include "app/StateStrip.h"
#include "support/QtTests.h"
#include "widgets/BusyIndicator.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
namespace requestKeys = vorn::requestKeys;

namespace {

struct Connected : HubFixture {
  Connected() { startConnected(bundleWith({"Work"})); }
  std::vector<MessageID> sent() {
    std::vector<MessageID> ids;
    for (const auto& request : link.requests) ids.push_back(request.messageID);
    return ids;
  }
  QString strip() { return window.stateStrip().isVisible() ? window.stateStrip().text() : QString(); }
  BusyIndicator& indicator() { return *window.ui().mBusyIndicator; }
};

const PropertyList change = PropertyList::dictionary({{"DPIX", 800}, {"DPIY", 800}});

}  // namespace

class MouseMainControllerPresenceTest : public QObject {
  Q_OBJECT

 private slots:
  void an_engine_that_goes_disables_the_tabs_and_is_sent_nothing();
  void an_engine_that_goes_takes_the_sheet_about_the_mouse_along();
  void an_engine_that_comes_is_registered_with_and_its_settings_are_shown();
  void an_engine_that_comes_without_a_mouse_shows_the_sheet_about_it();
  void an_engine_that_comes_and_does_not_answer_leaves_the_tabs_disabled();
  void an_engine_that_comes_after_a_start_without_one_takes_the_alert_away();
  void an_engine_that_comes_before_the_start_ended_is_left_to_the_start();
  void a_wait_that_lasts_is_shown_until_its_answer();
  void a_wait_that_does_not_last_shows_nothing();
  void a_wait_closes_an_open_menu();
  void a_deletion_keeps_its_indicator_during_a_wait();
  void a_wait_ends_when_the_program_must_end();
};

void MouseMainControllerPresenceTest::an_engine_that_goes_disables_the_tabs_and_is_sent_nothing() {
  Connected fixture;
  fixture.window.ui().mDeviceConnectivity->setImage(QStringLiteral("usb.png"));
  fixture.link.engineChanged(false);
  QCOMPARE(fixture.enabledPages(), QStringList());
  QCOMPARE(fixture.strip(), localized("lkeyStateEngineGone"));
  QCOMPARE(fixture.window.ui().mDeviceConnectivity->imageName(), QString());
  QCOMPARE(fixture.text("mFirmwareVersion"), QStringLiteral("-"));
  QVERIFY(!fixture.isShown("mDeviceConnectionWindow"));
  fixture.hub().updateValueForSetting(change);
  fixture.hub().setDriverVersions();
  QVERIFY(fixture.link.requests.empty());
  QVERIFY(fixture.link.unansweredWaits.empty());
  QCOMPARE(fixture.strip(), localized("lkeyStateEngineGone"));
}

void MouseMainControllerPresenceTest::an_engine_that_goes_takes_the_sheet_about_the_mouse_along() {
  Connected fixture;
  fixture.notifications.post("Device Removed 273", "", {});
  QVERIFY(fixture.isShown("mDeviceConnectionWindow"));
  fixture.link.engineChanged(false);
  QVERIFY(!fixture.isShown("mDeviceConnectionWindow"));
}

void MouseMainControllerPresenceTest::an_engine_that_comes_is_registered_with_and_its_settings_are_shown() {
  Connected fixture;
  fixture.link.engineChanged(false);
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundleWith({"Play"})));
  fixture.link.engineChanged(true);
  QCOMPARE(fixture.sent(), (std::vector{MessageID::RegisterDevice, MessageID::GetAllSettings}));
  QVERIFY(fixture.link.requests.front().body ==
          PropertyList::dictionary({{requestKeys::ProductName, "Skarn"},
                                    {requestKeys::ProductID, 273},
                                    {requestKeys::ResponseMsgPortName, "SkarnConfiguratorReplyPort"},
                                    {requestKeys::IsDeviceWired, 1},
                                    {requestKeys::DefaultVrPlistPath,
                                     Bundle::mainBundle().resourcePath(QStringLiteral("Skarn.plist")).toStdString()}}));
  QCOMPARE(fixture.enabledPages().size(), 6);
  QCOMPARE(fixture.text("mHeaderProfileName"), QStringLiteral("Play"));
  QCOMPARE(fixture.strip(), QString());
  // The version of an engine that was put in place of the other may be another.
  QCOMPARE(fixture.hub().mFirmwareVersionString(), std::string());
}

void MouseMainControllerPresenceTest::an_engine_that_comes_without_a_mouse_shows_the_sheet_about_it() {
  Connected fixture;
  fixture.link.engineChanged(false);
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(false));
  fixture.link.engineChanged(true);
  QCOMPARE(fixture.sent(), std::vector{MessageID::RegisterDevice});
  QVERIFY(fixture.isShown("mDeviceConnectionWindow"));
  QCOMPARE(fixture.enabledPages(), QStringList());
  QCOMPARE(fixture.strip(), localized("lkeyStateDeviceGone"));
}

void MouseMainControllerPresenceTest::an_engine_that_comes_and_does_not_answer_leaves_the_tabs_disabled() {
  Connected fixture;
  fixture.link.engineChanged(false);
  fixture.link.answer(MessageID::RegisterDevice, {});
  fixture.link.engineChanged(true);
  QCOMPARE(fixture.sent(), std::vector{MessageID::RegisterDevice});
  QCOMPARE(fixture.enabledPages(), QStringList());
}

void MouseMainControllerPresenceTest::an_engine_that_comes_after_a_start_without_one_takes_the_alert_away() {
  HubFixture fixture;
  fixture.start({});
  QVERIFY(fixture.window.findChild<QMessageBox*>(QStringLiteral("alert")) != nullptr);
  QCOMPARE(fixture.window.stateStrip().text(), localized("lkeyStateNoEngine"));
  const vorn::PropertyList bundle = bundleWith({"Work"});
  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(true));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundle));
  fixture.link.answer(MessageID::UpdateProfile, changeAnswer(bundle));
  fixture.link.engineChanged(true);
  QTRY_VERIFY(fixture.window.findChild<QMessageBox*>(QStringLiteral("alert")) == nullptr);
  QCOMPARE(fixture.enabledPages().size(), 6);
  QVERIFY(!fixture.window.stateStrip().isVisible());
}

void MouseMainControllerPresenceTest::an_engine_that_comes_before_the_start_ended_is_left_to_the_start() {
  HubFixture fixture;
  fixture.create();
  fixture.link.engineChanged(true);
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerPresenceTest::a_wait_that_lasts_is_shown_until_its_answer() {
  Connected fixture;
  fixture.link.turnsOfAWait = 3;
  QStringList seen;
  const auto turn = std::exchange(fixture.link.whileWaiting, {});
  fixture.link.whileWaiting = [&] {
    const bool goesOn = turn();
    seen << fixture.strip();
    if (!fixture.indicator().isRunning()) seen << QStringLiteral("the indicator stands still");
    if (seen.size() == 3) fixture.link.store(changeAnswer(bundleWith({"Play"})));
    return goesOn;
  };
  fixture.hub().updateValueForSetting(change);
  const QString said = localized("lkeyStateStarting");
  QCOMPARE(seen, (QStringList{said, said, said}));
  QCOMPARE(fixture.strip(), QString());
  QVERIFY(!fixture.indicator().isRunning());
  QCOMPARE(fixture.text("mHeaderProfileName"), QStringLiteral("Play"));
}

void MouseMainControllerPresenceTest::a_wait_that_does_not_last_shows_nothing() {
  Connected fixture;
  fixture.link.answer(MessageID::UpdateProfile, changeAnswer(bundleWith({"Play"})));
  fixture.link.onSend = [&](const ScriptedLink::Request&) {
    QCOMPARE(fixture.strip(), QString());
    QVERIFY(!fixture.indicator().isRunning());
  };
  fixture.hub().updateValueForSetting(change);
  QCOMPARE(fixture.text("mHeaderProfileName"), QStringLiteral("Play"));
}

void MouseMainControllerPresenceTest::a_wait_closes_an_open_menu() {
  Connected fixture;
  QMenu menu(&fixture.window);
  menu.addAction(QStringLiteral("An entry"));
  menu.popup(fixture.window.pos());
  QVERIFY(QTest::qWaitForWindowExposed(&menu));
  fixture.link.turnsOfAWait = 1;
  fixture.hub().updateValueForSetting(change);
  QVERIFY(!menu.isVisible());
}

void MouseMainControllerPresenceTest::a_deletion_keeps_its_indicator_during_a_wait() {
  Connected fixture;
  fixture.link.turnsOfAWait = 2;
  fixture.hub().deleteProfileWithProfileID(0);
  QVERIFY(fixture.indicator().isRunning());
  QCOMPARE(fixture.strip(), localized("lkeyStateEngineSilent"));
}

void MouseMainControllerPresenceTest::a_wait_ends_when_the_program_must_end() {
  struct Ending : HubFixture {
    bool mustEnd = false;
  } fixture;
  HubServices services = fixture.services();
  services.mustEnd = [&fixture] { return fixture.mustEnd; };
  fixture.delegate = std::make_unique<Vorn_ConfiguratorAppDelegate>(fixture.window, std::move(services));
  QVERIFY(fixture.link.whileWaiting());
  fixture.mustEnd = true;
  QVERIFY(!fixture.link.whileWaiting());
}

SKARN_QTEST(MouseMainControllerPresenceTest)
#include "MouseMainController_presence_test.moc"
