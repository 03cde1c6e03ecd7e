// What a screen reader finds on the pages of the window.
#include <QAbstractButton>
#include <QAccessible>
#include <QTabWidget>

#include "app/HubFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// Those that a person stops at or that hold others together by a name.
bool needsName(QAccessible::Role role) {
  switch (role) {
    case QAccessible::PushButton:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::List:
    case QAccessible::Pane:
    case QAccessible::Client:
    case QAccessible::Grouping:
    case QAccessible::Dialog:
      return true;
    default:
      return false;
  }
}

template <typename Visit>
void walk(QAccessibleInterface* at, const Visit& visit) {
  if (at == nullptr || !at->isValid()) return;
  visit(*at);
  for (int child = 0; child < at->childCount(); ++child) walk(at->child(child), visit);
}

QString described(QAccessibleInterface& at) {
  const QObject* object = at.object();
  return QStringLiteral("%1 %2 (role %3)")
      .arg(object ? QLatin1String(object->metaObject()->className()) : QLatin1String("?"),
           object ? object->objectName() : QString())
      .arg(static_cast<int>(at.role()));
}

QStringList namelessIn(QWidget* shown) {
  QStringList nameless;
  walk(QAccessible::queryAccessibleInterface(shown), [&](QAccessibleInterface& at) {
    // What has no object is the view's own, such as the corner of a table.
    if (at.object() == nullptr || at.state().invisible) return;
    if (needsName(at.role()) && at.text(QAccessible::Name).isEmpty()) nameless << described(at);
  });
  return nameless;
}

}  // namespace

class MouseMainWindowAccessibilityTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    mHub = std::make_unique<HubFixture>();
    mHub->startConnected(bundleWith({"Work", "Play"}, {"Fire"}));
    mHub->window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&mHub->window));
  }
  void cleanup() { mHub.reset(); }

  void everythingThatIsStoppedAtHasAName_data() { pages(); }
  void everythingThatIsStoppedAtHasAName() {
    QFETCH(QString, page);
    QCOMPARE(namelessIn(shown(page)), QStringList());
  }

  void everythingInTheOpenSheetOfTheStagesHasAName() {
    QTest::mouseClick(shown(QStringLiteral("MousePerformanceController"))
                          ->findChild<QAbstractButton*>(QStringLiteral("mSensitivityStages")),
                      Qt::LeftButton);
    QDialog* sheet = mHub->sheet("mSensitivityStagesView");
    QVERIFY(sheet->isVisible());
    QCOMPARE(namelessIn(sheet).join(QLatin1Char(',')), QString());
  }

  void aClosedSheetShowsNothing_data() { pages(); }
  void aClosedSheetShowsNothing() {
    QFETCH(QString, page);
    shown(page);
    QStringList showing;
    for (QDialog* sheet : mHub->window.findChildren<QDialog*>()) {
      QVERIFY(!sheet->isVisible());
      walk(QAccessible::queryAccessibleInterface(sheet), [&](QAccessibleInterface& at) {
        const bool isCorner = at.object() == nullptr && at.role() == QAccessible::Pane;
        if (!at.state().invisible && !isCorner) showing << sheet->objectName() + ": " + described(at);
      });
    }
    QVERIFY2(showing.isEmpty(), qPrintable(showing.mid(0, 10).join(QLatin1Char('\n'))));
  }

 private:
  static void pages() {
    QTest::addColumn<QString>("page");
    for (const char* page : {"MouseButtonController", "MouseMacrosController", "MouseProfilesController",
                             "MousePerformanceController", "MouseLightingController", "MouseMaintenanceController"}) {
      QTest::newRow(page) << QString::fromLatin1(page);
    }
  }
  QWidget* shown(const QString& name) {
    QWidget* page = mHub->page(qPrintable(name));
    mHub->window.ui().mMouseTabView->setCurrentWidget(page);
    return page;
  }

  std::unique_ptr<HubFixture> mHub;
};

SKARN_QTEST(MouseMainWindowAccessibilityTest)
#include "MouseMainWindow_accessibility_test.moc"
