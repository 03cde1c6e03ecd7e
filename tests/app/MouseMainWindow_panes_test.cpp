// What screen readers find of the window: panes have names, and what is closed holds nothing.
#include <QAccessible>
#include <QListView>
#include <QTabWidget>
#include <QTest>

#include "app/HubFixture.h"
#include "buttons/ControlRow.h"
#include "buttons/MouseButtonController.h"
#include "support/ApplicationsHome.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QString nameOf(QObject* object) {
  return QAccessible::queryAccessibleInterface(object)->text(QAccessible::Name);
}

// Whatever lies in it, at any depth, and is not told to be invisible.
QList<QAccessibleInterface*> shownIn(QAccessibleInterface& one) {
  QList<QAccessibleInterface*> shown;
  for (int index = 0; index < one.childCount(); ++index) {
    QAccessibleInterface* child = one.child(index);
    if (child == nullptr) continue;
    if (!child->state().invisible) shown << child;
    shown << shownIn(*child);
  }
  return shown;
}

QList<QAccessibleInterface*> cellsIn(QObject* object) {
  QList<QAccessibleInterface*> cells;
  for (QAccessibleInterface* one : shownIn(*QAccessible::queryAccessibleInterface(object))) {
    if (one->role() == QAccessible::Cell || one->role() == QAccessible::ListItem) cells << one;
  }
  return cells;
}

}  // namespace

class MouseMainWindowPanesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void every_page_is_called_like_its_tab() {
    HubFixture fixture;
    fixture.startConnected(bundleWith({"Work"}));
    QTabWidget* tabs = fixture.window.ui().mMouseTabView;
    QVERIFY(!nameOf(tabs).isEmpty());
    for (int index = 0; index < tabs->count(); ++index) {
      tabs->setCurrentIndex(index);
      QCOMPARE(nameOf(tabs->widget(index)), tabs->tabText(index));
      QCOMPARE(nameOf(tabs->widget(index)->parentWidget()), tabs->tabText(index));
    }
  }

  void every_row_of_the_buttons_tab_is_called_like_its_control() {
    HubFixture fixture;
    fixture.startConnected(bundleWith({"Work"}));
    const QList<ControlRow*> rows = fixture.window.findChildren<ControlRow*>();
    QCOMPARE(rows.size(), 27);
    for (ControlRow* row : rows) QCOMPARE(nameOf(row), spokenName(row->control()));
  }

  void a_closed_sheet_holds_nothing() {
    HubFixture fixture;
    fixture.startConnected(bundleWith({"Work"}));
    auto* tab = fixture.window.findChild<MouseButtonController*>();
    for (const int command : {16, 50}) tab->checkSelectedValue(command, "43", 2);
    tab->clickMacroRepeatButton(controlTable[0]);
    const char* const sheets[] = {"mSingleKey", "mKeymapWindow", "mMacroRepeatWindow"};
    for (const char* name : sheets)
      QVERIFY(!shownIn(*QAccessible::queryAccessibleInterface(fixture.sheet(name))).isEmpty());
    for (const char* name : sheets) QTest::keyClick(fixture.sheet(name), Qt::Key_Escape);
    for (QDialog* sheet : fixture.window.findChildren<QDialog*>()) {
      if (sheet->isVisible()) continue;
      QVERIFY2(shownIn(*QAccessible::queryAccessibleInterface(sheet)).isEmpty(), qPrintable(sheet->objectName()));
      QCOMPARE(QAccessible::queryAccessibleInterface(sheet)->role(), QAccessible::Dialog);
    }
    tab->checkSelectedValue(50, "43", 2);
    QVERIFY(!shownIn(*QAccessible::queryAccessibleInterface(fixture.sheet("mKeymapWindow"))).isEmpty());
  }

  void the_applications_to_choose_from_have_names() {
    ApplicationsHome home;
    for (const char* name : {"Notes", "Paint"}) {
      const QString file = QLatin1String(name) + QStringLiteral(".desktop");
      QVERIFY(!home.addEntry(file, QByteArray("Name=") + name + "\nExec=/bin/sh\n").isEmpty());
    }
    HubFixture fixture;
    fixture.startConnected(bundleWith({"Work"}));
    fixture.window.findChild<MouseButtonController*>()->checkSelectedValue(46, "43", 2);
    auto* list = fixture.window.findChild<QListView*>(QStringLiteral("mApplicationList"));
    QVERIFY(list != nullptr && !nameOf(list).isEmpty());
    QStringList names;
    for (QAccessibleInterface* cell : cellsIn(list)) names << cell->text(QAccessible::Name);
    QCOMPARE(names, QStringList({"Notes", "Paint"}));
  }
};

SKARN_QTEST(MouseMainWindowPanesTest)
#include "MouseMainWindow_panes_test.moc"
