#include "app/TrayControls.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

#include "app/MouseMainWindow.h"
#include "app/TrayIcon.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "ui_MouseMainWindow.h"
#include "widgets/PullDownButton.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

namespace {

// No tray here: this runs without a bus. With one: e2e/tray_on_display_test.
struct Bench {
  explicit Bench(const QString& file = {}) : controls(window, WindowMemory(file)) {
    controls.begin();
    window.show();
  }
  PullDownButton& button() { return *window.ui().mWindowSettings; }
  QAction& box() { return *button().menu()->findChild<QAction*>(QStringLiteral("mShowInTray")); }

  MouseMainWindow window;
  TrayControls controls;
};

}  // namespace

class TrayControlsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    installTranslations(QStringLiteral("en"));
  }

  void the_box_is_off_and_says_why_where_there_is_no_tray() {
    Bench one;
    QCOMPARE(one.button().accessibleName().isEmpty() ? one.button().text() : one.button().accessibleName(),
             QStringLiteral("Settings"));
    QCOMPARE(one.box().text(), QStringLiteral("Show in the Tray"));
    QVERIFY(!one.box().isEnabled());
    QCOMPARE(one.box().toolTip(), QStringLiteral("This desktop has no tray"));
    QCOMPARE(one.controls.icon(), nullptr);
  }

  void what_was_wanted_can_be_given_up_without_a_tray_too_and_is_remembered() {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("window.ini"));
    QVERIFY(WindowMemory(file).setInTray(true));
    Bench one(file);
    QVERIFY(one.box().isChecked() && one.box().isEnabled());
    one.box().trigger();
    QVERIFY(!one.box().isChecked() && !one.box().isEnabled());
    QVERIFY(!WindowMemory(file).isInTray());
  }

  void a_start_without_the_box_reads_its_memory_and_writes_nothing() {
    const QTemporaryDir folder;
    const Bench one(folder.filePath(QStringLiteral("window.ini")));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
  }

  void texts_are_shown_as_they_are_by_the_menus_of_trays() {
    QCOMPARE(trayMenuText(QStringLiteral("Work")), QStringLiteral("Work"));
    QCOMPARE(trayMenuText(QStringLiteral("a_b")), QStringLiteral("a__b"));
    // Qt turns the first "&" into a "_".
    QCOMPARE(trayMenuText(QStringLiteral("R&D & co")), QStringLiteral("&R&D & co"));
  }
};

SKARN_QTEST(TrayControlsTest)
#include "TrayControls_test.moc"
