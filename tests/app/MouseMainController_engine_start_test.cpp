// The hub and the start of the window where no engine runs: who asks for it, what is shown, and what follows.
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "app/HubFixture.h"
#include "app/Sheets.h"
#include "app/StateStrip.h"
#include "support/PaintCounter.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::ServiceStart;
using Status = vorn::ServiceStart::Status;

namespace {

// No engine runs, and one that is asked for takes until the test says how that ended.
struct Bereft : HubFixture {
  Bereft() {
    link.isAvailable = false;
    link.startOutcome.reset();
    link.answer(MessageID::RegisterDevice, statusAnswer(true));
    link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundle));
    link.answer(MessageID::UpdateProfile, changeAnswer(bundle));
  }
  // Up to the paint of the window, and what follows from it.
  void launch(const LaunchInformation& launch = {}) {
    create();
    QObject::connect(delegate.get(), &Vorn_ConfiguratorAppDelegate::startUpFinished, [this] { hasStarted = true; });
    PaintCounter painted(&window);
    delegate->applicationDidFinishLaunching(launch);
    QVERIFY(QTest::qWaitFor([&] { return painted.paints > 0; }));
    // After the paint the start-up goes on from the event loop, which has nothing else to do.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
  }
  void finish() {
    QVERIFY(QTest::qWaitFor([this] { return hasStarted; }));
  }
  void engineComes() {
    link.isAvailable = true;
    link.engineChanged(true);
  }
  QString strip() { return window.stateStrip().isVisible() ? window.stateStrip().text() : QString(); }
  const QMessageBox* alert() { return window.findChild<QMessageBox*>(QStringLiteral("alert")); }
  QPushButton& button() { return *window.findChild<QPushButton*>(QStringLiteral("mStateButton")); }
  QTabBar& tabs() { return *window.ui().mMouseTabView->tabBar(); }

  const PropertyList bundle = bundleWith({"Work"});
  bool hasStarted = false;
};

// The window is open, and its engine has gone.
struct Abandoned : Bereft {
  Abandoned() {
    link.isAvailable = true;
    startConnected(bundle);
    link.isAvailable = false;
    link.engineChanged(false);
    window.activateWindow();
  }
};

const ServiceStart notInstalled{Status::NotInstalled, "no such service"};

}  // namespace

class MouseMainControllerEngineStartTest : public QObject {
  Q_OBJECT

 private slots:
  void an_engine_that_runs_is_not_asked_for();
  void a_start_without_an_engine_asks_for_it_and_sends_nothing_until_it_comes();
  void a_start_whose_engine_does_not_come_goes_on_as_without_one_data();
  void a_start_whose_engine_does_not_come_goes_on_as_without_one();
  void a_launch_in_the_background_asks_for_the_engine_before_its_first_look();
  void a_start_without_the_restoring_sheet_can_be_used_when_the_engine_is_there();
  void the_key_that_quits_quits_while_the_engine_is_awaited_data();
  void the_key_that_quits_quits_while_the_engine_is_awaited();
  void an_engine_that_was_never_there_is_sent_nothing_after_the_start();
  void what_the_strip_says_has_room_in_the_smallest_window();
  void a_start_may_end_while_its_engine_is_awaited();
  void the_button_of_the_strip_asks_for_an_engine_that_has_gone();
  void an_engine_that_is_there_but_silent_has_no_button();
  void why_the_engine_was_not_started_is_told_data();
  void why_the_engine_was_not_started_is_told();
  void the_button_works_by_keyboard_and_keeps_the_keyboard_when_it_was_in_vain();
  void the_keyboard_goes_to_the_tabs_when_the_engine_comes();
  void what_became_of_an_earlier_request_is_not_taken_for_this_one();
};

void MouseMainControllerEngineStartTest::an_engine_that_runs_is_not_asked_for() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  QCOMPARE(fixture.link.starts, 0);
}

void MouseMainControllerEngineStartTest::a_start_without_an_engine_asks_for_it_and_sends_nothing_until_it_comes() {
  Bereft fixture;
  fixture.launch();
  QCOMPARE(fixture.link.starts, 1);
  QCOMPARE(fixture.strip(), localized("lkeyStateEngineStarting"));
  QVERIFY(fixture.isShown("mRestoringStateWindow"));
  QVERIFY(fixture.link.requests.empty());
  QVERIFY(!fixture.hasStarted);
  fixture.engineComes();
  fixture.finish();
  QVERIFY(fixture.link.unansweredWaits.empty());
  QCOMPARE(fixture.text("mHeaderProfileName"), QStringLiteral("Work"));
  QCOMPARE(fixture.strip(), QString());
  QCOMPARE(fixture.enabledPages().size(), 6);
  QVERIFY(!fixture.isShown("mRestoringStateWindow"));
  // The answer of the bus comes last.
  fixture.link.startEnded({});
  QVERIFY(fixture.alert() == nullptr);
  const auto registrations = std::ranges::count_if(
      fixture.link.requests, [](const auto& sent) { return sent.messageID == MessageID::RegisterDevice; });
  QCOMPARE(registrations, 1);
}

void MouseMainControllerEngineStartTest::a_start_whose_engine_does_not_come_goes_on_as_without_one_data() {
  QTest::addColumn<int>("status");
  QTest::newRow("not installed") << static_cast<int>(Status::NotInstalled);
  QTest::newRow("not in time") << static_cast<int>(Status::Timeout);
  QTest::newRow("failed") << static_cast<int>(Status::Failed);
  QTest::newRow("no bus") << static_cast<int>(Status::NoBus);
  QTest::newRow("started without a port") << static_cast<int>(Status::Running);
}

void MouseMainControllerEngineStartTest::a_start_whose_engine_does_not_come_goes_on_as_without_one() {
  QFETCH(int, status);
  Bereft fixture;
  fixture.link.answer(MessageID::RegisterDevice, {});
  QStringList said;
  fixture.link.onSend = [&](const ScriptedLink::Request&) { said << fixture.strip(); };
  fixture.launch();
  fixture.link.startEnded({static_cast<Status>(status), "because"});
  fixture.finish();
  QCOMPARE(said, QStringList(localized("lkeyStateStarting")));
  QCOMPARE(fixture.link.requests.size(), std::size_t{1});
  QCOMPARE(fixture.link.requests.front().messageID, MessageID::RegisterDevice);
  QCOMPARE(fixture.link.unansweredWaits.size(), std::size_t{1});
  // The one alert is that of a registration without an answer.
  QVERIFY(fixture.alert() != nullptr);
  QCOMPARE(fixture.alert()->text(), localized("lkeyCommErrorTitle"));
  QCOMPARE(fixture.strip(), localized("lkeyStateNoEngine"));
  QCOMPARE(fixture.button().text(), localized("lkeyStartEngine"));
}

void MouseMainControllerEngineStartTest::a_launch_in_the_background_asks_for_the_engine_before_its_first_look() {
  Bereft fixture;
  fixture.launch({.isDefaultLaunch = false});
  QCOMPARE(fixture.link.starts, 1);
  QCOMPARE(fixture.link.lookUps, 0);
  QCOMPARE(fixture.strip(), localized("lkeyStateEngineStarting"));
  fixture.link.startEnded(notInstalled);
  QCOMPARE(fixture.strip(), localized("lkeyStateStarting"));
  QVERIFY(fixture.isShown("mRestoringStateWindow"));
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerEngineStartTest::a_start_without_the_restoring_sheet_can_be_used_when_the_engine_is_there() {
  Bereft fixture;
  fixture.launch({.isDefaultLaunch = std::nullopt});
  QVERIFY(!fixture.isShown("mRestoringStateWindow"));
  QVERIFY(!fixture.window.ui().mMouseTabView->isEnabled());
  QVERIFY(!fixture.window.ui().mAppySettings->isEnabled());
  QVERIFY(fixture.window.findChild<QWidget*>(QStringLiteral("mStateStrip"))->isEnabled());
  fixture.engineComes();
  fixture.finish();
  QVERIFY(fixture.window.ui().mMouseTabView->isEnabled());
  QVERIFY(fixture.window.ui().mAppySettings->isEnabled());
  QCOMPARE(fixture.enabledPages().size(), 6);
}

void MouseMainControllerEngineStartTest::the_key_that_quits_quits_while_the_engine_is_awaited_data() {
  QTest::addColumn<bool>("hasSheet");
  QTest::newRow("under the restoring sheet") << true;
  QTest::newRow("without it") << false;
}

void MouseMainControllerEngineStartTest::the_key_that_quits_quits_while_the_engine_is_awaited() {
  QFETCH(const bool, hasSheet);
  Bereft fixture;
  fixture.launch({.isDefaultLaunch = hasSheet ? std::optional(true) : std::nullopt});
  auto* const sheet = fixture.window.findChild<RestoringStateSheet*>(QStringLiteral("mRestoringStateWindow"));
  QCOMPARE(sheet->isVisible(), hasSheet);
  int quits = 0;
  QObject::connect(sheet, &RestoringStateSheet::closed, [&] { ++quits; });
  QWidget* const active = hasSheet ? static_cast<QWidget*>(sheet) : &fixture.window;
  active->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(active));
  QTest::keyClick(active, Qt::Key_Q, Qt::ControlModifier);
  QCOMPARE(quits, hasSheet ? 1 : 0);
  QCOMPARE(fixture.window.isVisible(), hasSheet);
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerEngineStartTest::an_engine_that_was_never_there_is_sent_nothing_after_the_start() {
  Bereft fixture;
  fixture.link.answer(MessageID::RegisterDevice, {});
  fixture.launch();
  fixture.link.startEnded(notInstalled);
  fixture.finish();
  fixture.link.requests.clear();
  fixture.link.unansweredWaits.clear();
  QPushButton& apply = *fixture.window.ui().mAppySettings;
  QVERIFY(!apply.isEnabled());
  QCOMPARE(apply.toolTip(), localized("lkeyApplyNoEngineTip"));
  fixture.hub().clickApplySettings();
  QVERIFY(fixture.link.requests.empty());
  QVERIFY(fixture.link.unansweredWaits.empty());

  fixture.link.answer(MessageID::RegisterDevice, statusAnswer(true));
  fixture.engineComes();
  QVERIFY(apply.isEnabled());
  QCOMPARE(apply.toolTip(), localized("lkeyApplyTip"));
}

void MouseMainControllerEngineStartTest::what_the_strip_says_has_room_in_the_smallest_window() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work"}));
  fixture.window.resize(1024, 680);
  QVERIFY(QTest::qWaitFor([&] { return fixture.window.width() == 1024; }));
  auto* const label = fixture.window.findChild<QWidget*>(QStringLiteral("mStateStrip"));
  const std::pair<const char*, bool> texts[] = {
      {"lkeyStateStarting", false},   {"lkeyStateEngineStarting", true}, {"lkeyStateNoEngine", true},
      {"lkeyStateEngineGone", true},  {"lkeyStateEngineSilent", false},  {"lkeyStateNoDevice", false},
      {"lkeyStateDeviceGone", false},
  };
  for (const auto& [text, hasButton] : texts) {
    StripButton button;
    if (hasButton) button = {localized("lkeyStartEngine"), localized("lkeyStartEngineHint"), true};
    fixture.window.stateStrip().say(localized(text), button);
    fixture.window.stateStrip().paintNow();
    QVERIFY2(label->width() >= label->sizeHint().width(), text);
  }
}

void MouseMainControllerEngineStartTest::a_start_may_end_while_its_engine_is_awaited() {
  Bereft fixture;
  fixture.launch();
  const auto ended = fixture.link.startEnded;
  fixture.delegate.reset();
  ended({});
  QVERIFY(fixture.link.requests.empty());
  QVERIFY(!fixture.hasStarted);
}

void MouseMainControllerEngineStartTest::the_button_of_the_strip_asks_for_an_engine_that_has_gone() {
  Abandoned fixture;
  QPushButton& button = fixture.button();
  QVERIFY(button.isVisible());
  QVERIFY(button.isEnabled());
  QCOMPARE(button.text(), localized("lkeyStartEngine"));
  QCOMPARE(button.toolTip(), localized("lkeyStartEngineHint"));
  QCOMPARE(fixture.link.starts, 0);
  QTest::mouseClick(&button, Qt::LeftButton);
  QCOMPARE(fixture.link.starts, 1);
  QCOMPARE(fixture.strip(), localized("lkeyStateEngineStarting"));
  QVERIFY(!button.isEnabled());
  fixture.hub().startEngine(true);
  QCOMPARE(fixture.link.starts, 1);
  QVERIFY(fixture.link.requests.empty());
  fixture.engineComes();
  QCOMPARE(fixture.strip(), QString());
  QVERIFY(!button.isVisible());
  QCOMPARE(fixture.enabledPages().size(), 6);
  QVERIFY(fixture.alert() == nullptr);
}

void MouseMainControllerEngineStartTest::an_engine_that_is_there_but_silent_has_no_button() {
  HubFixture fixture;
  fixture.start({});
  QCOMPARE(fixture.window.stateStrip().text(), localized("lkeyStateNoEngine"));
  QVERIFY(!fixture.window.findChild<QPushButton*>(QStringLiteral("mStateButton"))->isVisible());
  Abandoned abandoned;
  abandoned.link.answer(MessageID::RegisterDevice, {});
  abandoned.engineComes();
  QVERIFY(!abandoned.button().isVisible());
  QCOMPARE(abandoned.strip(), localized("lkeyStateEngineSilent"));
}

void MouseMainControllerEngineStartTest::why_the_engine_was_not_started_is_told_data() {
  QTest::addColumn<int>("status");
  QTest::addColumn<QString>("text");
  const auto row = [](const char* name, Status status, const QString& text) {
    QTest::newRow(name) << static_cast<int>(status) << text;
  };
  installTranslations(QStringLiteral("en"));
  row("not installed", Status::NotInstalled, localized("lkeyStartFailedNotInstalled"));
  row("not in time", Status::Timeout, localized("lkeyStartFailedTimeout"));
  row("started without a port", Status::Running, localized("lkeyStartFailedTimeout"));
  row("failed", Status::Failed, localized("lkeyStartFailedReason").arg(QStringLiteral("because")));
  row("no bus", Status::NoBus, localized("lkeyStartFailedReason").arg(QStringLiteral("because")));
}

void MouseMainControllerEngineStartTest::why_the_engine_was_not_started_is_told() {
  QFETCH(int, status);
  QFETCH(QString, text);
  Abandoned fixture;
  QTest::mouseClick(&fixture.button(), Qt::LeftButton);
  fixture.link.startEnded({static_cast<Status>(status), "because"});
  QVERIFY(fixture.alert() != nullptr);
  QCOMPARE(fixture.alert()->text(), localized("lkeyStartFailedTitle"));
  QCOMPARE(fixture.alert()->informativeText(), text);
  QCOMPARE(fixture.strip(), localized("lkeyStateEngineGone"));
  QVERIFY(fixture.button().isEnabled());
  QCOMPARE(fixture.button().text(), localized("lkeyStartEngine"));
  // An engine that comes after all takes the alert away.
  fixture.engineComes();
  QTRY_VERIFY(fixture.alert() == nullptr);
  QCOMPARE(fixture.enabledPages().size(), 6);
}

void MouseMainControllerEngineStartTest::the_button_works_by_keyboard_and_keeps_the_keyboard_when_it_was_in_vain() {
  Abandoned fixture;
  fixture.link.startOutcome.reset();
  fixture.tabs().setFocus();
  QTest::keyClick(&fixture.tabs(), Qt::Key_Tab);
  QCOMPARE(fixture.window.focusWidget(), &fixture.button());
  QTest::keyClick(&fixture.button(), Qt::Key_Space);
  QCOMPARE(fixture.link.starts, 1);
  QCOMPARE(fixture.window.focusWidget(), &fixture.tabs());
  fixture.link.startEnded(notInstalled);
  QCOMPARE(fixture.window.focusWidget(), &fixture.button());
}

void MouseMainControllerEngineStartTest::the_keyboard_goes_to_the_tabs_when_the_engine_comes() {
  Abandoned fixture;
  fixture.button().setFocus();
  fixture.engineComes();
  QCOMPARE(fixture.window.focusWidget(), &fixture.tabs());
  // It does not come back when the engine goes again.
  fixture.link.engineChanged(false);
  QCOMPARE(fixture.window.focusWidget(), &fixture.tabs());
}

void MouseMainControllerEngineStartTest::what_became_of_an_earlier_request_is_not_taken_for_this_one() {
  Abandoned fixture;
  fixture.hub().startEngine(true);
  const auto earlier = fixture.link.startEnded;
  fixture.engineComes();
  fixture.link.engineChanged(false);
  fixture.hub().startEngine(true);
  QCOMPARE(fixture.link.starts, 2);
  earlier({});
  QVERIFY(fixture.hub().isStartingEngine());
  QVERIFY(fixture.alert() == nullptr);
  fixture.link.startEnded(notInstalled);
  QVERIFY(fixture.alert() != nullptr);
}

SKARN_QTEST(MouseMainControllerEngineStartTest)
#include "MouseMainController_engine_start_test.moc"
