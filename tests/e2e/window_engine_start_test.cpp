// The real window whose engine has gone, and the bus, which could start another one.
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "app/StateStrip.h"
#include "e2e/OpenWindow.h"
#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QPushButton& buttonOf(OpenWindow& open) {
  return *open.find<QPushButton>("mStateButton");
}

}  // namespace

class WindowEngineStartTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase();
  void init();
  void cleanup();

  void the_button_brings_the_settings_back_data();
  void the_button_brings_the_settings_back();
  void what_keeps_the_engine_from_starting_is_told_and_the_window_goes_on();
  void a_window_that_opens_without_an_engine_shows_the_settings_of_the_installed_one();

 private:
  void openAndKill(OpenWindow& open);

  EngineSession mEngine;
};

void WindowEngineStartTest::initTestCase() {
  installTranslations(QStringLiteral("en"));
}

void WindowEngineStartTest::init() {
  mEngine.begin();
}

void WindowEngineStartTest::cleanup() {
  mEngine.killStarted();
  mEngine.end();
}

void WindowEngineStartTest::openAndKill(OpenWindow& open) {
  open.awaitAnnouncement();
  mEngine.kill();
  QTRY_VERIFY_WITH_TIMEOUT(buttonOf(open).isVisible(), deadline);
  QVERIFY(!open.isEnabled());
}

void WindowEngineStartTest::the_button_brings_the_settings_back_data() {
  QTest::addColumn<bool>("byKeyboard");
  QTest::newRow("by a click") << false;
  QTest::newRow("by keyboard") << true;
}

void WindowEngineStartTest::the_button_brings_the_settings_back() {
  QFETCH(bool, byKeyboard);
  OpenWindow open;
  openAndKill(open);
  mEngine.install();
  if (byKeyboard) {
    QTabBar& tabs = *open.window().findChild<QTabWidget*>(QStringLiteral("mMouseTabView"))->tabBar();
    tabs.setFocus();
    QTest::keyClick(&tabs, Qt::Key_Tab);
    QTest::keyClick(open.window().focusWidget(), Qt::Key_Space);
  } else {
    QTest::mouseClick(&buttonOf(open), Qt::LeftButton);
  }
  QTRY_VERIFY_WITH_TIMEOUT(open.isEnabled(), deadline);
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  QVERIFY(!buttonOf(open).isVisible());
  QCOMPARE(open.profileName(), QStringLiteral("Default"));
}

void WindowEngineStartTest::what_keeps_the_engine_from_starting_is_told_and_the_window_goes_on() {
  OpenWindow open;
  openAndKill(open);
  mEngine.installBroken();
  QTest::mouseClick(&buttonOf(open), Qt::LeftButton);
  const auto alert = [&open] { return open.window().findChild<QMessageBox*>(QStringLiteral("alert")); };
  QTRY_VERIFY_WITH_TIMEOUT(alert() != nullptr, deadline);
  QCOMPARE(alert()->informativeText(),
           localized("lkeyStartFailedReason").arg(QStringLiteral("Process org.vorn.CoreEngine exited with status 1")));
  alert()->accept();
  // One that is installed well by then does.
  mEngine.install();
  QTRY_VERIFY_WITH_TIMEOUT(buttonOf(open).isEnabled(), deadline);
  QTest::mouseClick(&buttonOf(open), Qt::LeftButton);
  QTRY_VERIFY_WITH_TIMEOUT(open.isEnabled(), deadline);
}

void WindowEngineStartTest::a_window_that_opens_without_an_engine_shows_the_settings_of_the_installed_one() {
  mEngine.kill();
  mEngine.install();
  OpenWindow open;
  QVERIFY(open.isEnabled());
  QVERIFY(!buttonOf(open).isVisible());
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
}

SKARN_QTEST(WindowEngineStartTest)
#include "window_engine_start_test.moc"
