// What the desktop sees of the main window and of its sheets, and how it is left by the keyboard.
#include <QApplication>
#include <QDialog>
#include <QTest>

#include "app/HubFixture.h"
#include "app/MouseMainWindow.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class MouseMainWindowDesktopTest : public QObject {
  Q_OBJECT

 private:
  static void quitByKey(QWidget& window) { QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier); }

 private slots:
  void theWindowAndItsSheetsHaveTheApplicationsIcon() {
    HubFixture fixture;
    fixture.create();
    QCOMPARE(fixture.window.windowIcon().availableSizes(), (QList<QSize>{{64, 64}, {128, 128}}));
    auto* sheet = fixture.window.findChild<QDialog*>(QStringLiteral("mDeviceConnectionWindow"));
    QVERIFY(sheet);
    QCOMPARE(sheet->windowIcon().cacheKey(), fixture.window.windowIcon().cacheKey());
  }

  void noSheetIsMinimisedOrMaximised() {
    HubFixture fixture;
    fixture.create();
    const auto sheets = fixture.window.findChildren<QDialog*>();
    QVERIFY(sheets.size() >= 3);
    for (const QDialog* sheet : sheets) {
      const Qt::WindowFlags flags = sheet->windowFlags();
      QVERIFY2(flags & Qt::CustomizeWindowHint, qPrintable(sheet->objectName()));
      QVERIFY2(flags & Qt::WindowCloseButtonHint, qPrintable(sheet->objectName()));
      QVERIFY2(!(flags & Qt::WindowMinMaxButtonsHint), qPrintable(sheet->objectName()));
    }
  }

  void theKeyToQuitClosesTheWindow() {
    HubFixture fixture;
    fixture.startConnected(bundleWith({"Work"}));
    fixture.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&fixture.window));
    quitByKey(fixture.window);
    QVERIFY(!fixture.window.isVisible());
  }

  void theKeyToQuitDoesNothingUnderASheet() {
    HubFixture fixture;
    fixture.startConnected(bundleWith({"Work"}));
    fixture.hub().showErrorDialog();
    auto* sheet = fixture.window.findChild<QDialog*>(QStringLiteral("mDeviceConnectionWindow"));
    QVERIFY(sheet && QTest::qWaitForWindowActive(sheet));
    quitByKey(*sheet);
    QVERIFY(sheet->isVisible());
    QVERIFY(fixture.window.isVisible());
  }
};

SKARN_QTEST(MouseMainWindowDesktopTest)
#include "MouseMainWindow_desktop_test.moc"
