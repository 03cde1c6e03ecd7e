// The Macros tab by the keyboard alone, without a macro to click on, and as a screen reader finds it.
#include <QAccessible>
#include <QLabel>
#include <QPaintEvent>
#include <QTest>

#include "macros/EditingFixture.h"
#include "macros/MacroMenus.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QImage pictureOf(QTableView* table) {
  return table->viewport()->grab().toImage();
}

QList<int> selectedRows(QTableView* table) {
  QList<int> rows;
  for (const QModelIndex& index : table->selectionModel()->selectedRows()) rows << index.row();
  return rows;
}

// The same with and without the keyboard.
bool showsFocus(QTableView* table) {
  table->clearFocus();
  const QImage without = pictureOf(table);
  table->setFocus();
  return table->hasFocus() && pictureOf(table) != without;
}

// What of a widget is painted from now on.
class PaintedRegion : public QObject {
 public:
  explicit PaintedRegion(QWidget* widget) { widget->installEventFilter(this); }

  const QRegion& region() const { return mRegion; }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) mRegion += static_cast<QPaintEvent*>(event)->region();
    return QObject::eventFilter(watched, event);
  }

 private:
  QRegion mRegion;
};

QStringList enabledTitles(const QMenu& menu) {
  QStringList titles;
  for (const QAction* item : taggedItems(menu)) {
    if (item->isEnabled() && tagOf(*item) < macroDetailsMenuTags::Cut) titles << titleOf(*item);
  }
  return titles;
}

// What a person stops at or is told of as a group, and has no name.
void collectNameless(QAccessibleInterface* at, QStringList& nameless) {
  if (at == nullptr || !at->isValid() || at->object() == nullptr || at->state().invisible) return;
  const bool isScrollPart = at->object()->objectName().startsWith(QLatin1String("qt_scrollarea"));
  const QList<QAccessible::Role> named{QAccessible::Button, QAccessible::ButtonMenu, QAccessible::Table,
                                       QAccessible::Pane,   QAccessible::Client,     QAccessible::CheckBox};
  const bool isNamed = !at->text(QAccessible::Name).isEmpty();
  if (!isScrollPart && named.contains(at->role()) && !isNamed) nameless << at->object()->objectName();
  for (int child = 0; child < at->childCount(); ++child) collectNameless(at->child(child), nameless);
}

}  // namespace

class MouseMacrosControllerKeyboardTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void aTableShowsThatTheKeyboardIsThere() {
    MacrosFixture fixture;
    QVERIFY(showsFocus(fixture.macros()));
    fixture.selectMacro(0);
    QVERIFY(showsFocus(fixture.macros()));
    QVERIFY(showsFocus(fixture.lines()));
    fixture.clickRow(fixture.lines(), 2);
    QVERIFY(showsFocus(fixture.lines()));
  }

  // The frame of the whole table would stay beside that of the row.
  void theWholeTableIsPaintedAnewWhenItsFirstRowIsSelected() {
    MacrosFixture fixture;
    QTableView* table = fixture.macros();
    table->setFocus();
    QVERIFY(QTest::qWaitForWindowExposed(table->window()));
    QCoreApplication::processEvents();
    PaintedRegion painted(table->viewport());
    fixture.selectMacro(1);
    QTRY_VERIFY(!painted.region().isEmpty());
    QCOMPARE(painted.region().intersected(table->viewport()->rect()), QRegion(table->viewport()->rect()));
  }

  void deleteInTheListAsksAsTheMinusButtonDoes() {
    MacrosFixture fixture;
    QTest::keyClick(fixture.macros(), Qt::Key_Delete);
    QVERIFY(fixture.alert() == nullptr);
    fixture.selectMacro(1);
    QTest::keyClick(fixture.macros(), Qt::Key_Delete);
    QCOMPARE(fixture.alert()->text(), QStringLiteral("Delete Macro “Greeting”?"));
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void deleteInTheLinesRemovesTheSelectedLine() {
    EditingFixture fixture(2);
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    QCOMPARE(fixture.delegate.take(), (QStringList{"removeEventAtIndex(2, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
    // A key that is held down does not empty the macro.
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(fixture.lines(), &held);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void duringARecordingDeleteRemovesNothing() {
    EditingFixture fixture(2);
    fixture.click("mAddMacroDetails");
    fixture.clickRow(fixture.lines(), 2);
    fixture.delegate.take();
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    QTest::keyClick(fixture.macros(), Qt::Key_Delete);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QVERIFY(fixture.alert() == nullptr);
  }

  void anEmptyListHasItsMenuToo() {
    MacrosFixture fixture(QStringList{});
    for (const char* place : {"mNoMacrosView", "mNoMacrosTitle"}) {
      QTest::mouseClick(fixture.find(place), Qt::RightButton);
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      QVERIFY2(menu != nullptr, place);
      QCOMPARE(enabledTitles(*menu), (QStringList{localized("lkeyNew"), localized("lkeyImport")}));
      menu->close();
    }
    fixture.tab->enableControlsState(false);
    QTest::mouseClick(fixture.find("mNoMacrosView"), Qt::RightButton);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
  }

  void aMacroWithoutEventsHasTheMenuOfItsLinesToo() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    QTest::mouseClick(fixture.lines()->viewport(), Qt::RightButton);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr);
    QCOMPARE(enabledTitles(*menu), QStringList{localized("lkeyRecord")});
    menu->close();
  }

  void noRowStaysLitWhenItsMenuHasClosed() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    const QImage before = pictureOf(fixture.macros());
    const QPoint row = fixture.placeOf(fixture.macros(), 1);
    QTest::mouseMove(fixture.macros()->viewport(), row);
    QMenu* menu = fixture.rightClick(fixture.macros(), 1);
    QVERIFY(menu != nullptr);
    menu->close();
    QCOMPARE(pictureOf(fixture.macros()), before);
  }

  void anArrowBeginsAtTheFirstRowOfAListWithoutASelection() {
    EditingFixture fixture(0);
    // The macro first selected has more than one line.
    for (QTableView* table : {fixture.lines(), fixture.macros()}) {
      for (const Qt::Key arrow : {Qt::Key_Down, Qt::Key_Up}) {
        table->clearSelection();
        table->setFocus();
        QTest::keyClick(table, arrow);
        QCOMPARE(selectedRows(table), QList<int>{0});
      }
      QTest::keyClick(table, Qt::Key_Down);
      QCOMPARE(selectedRows(table), QList<int>{1});
    }
  }

  void tabGoesDownTheListAndThenDownTheEvents() {
    EditingFixture fixture(2);
    const QStringList order{
        "mMacroTableView",        "mAddMacro",        "mDeleteMacro",        "mSettingsMacro",
        "mMacroDetailsTableView", "mAddMacroDetails", "mDeleteMacroDetails", "mSettingsMacroDetails",
        "mRecordMacroDetails"};
    fixture.macros()->setFocus();
    QStringList reached;
    for (qsizetype step = 0; step < order.size(); ++step) {
      reached << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, order);
  }

  void everythingThatAScreenReaderStopsAtHasAName_data() {
    QTest::addColumn<QStringList>("macros");
    QTest::newRow("with macros") << QStringList{"Fireball"};
    QTest::newRow("without macros") << QStringList();
  }
  void everythingThatAScreenReaderStopsAtHasAName() {
    QFETCH(QStringList, macros);
    MacrosFixture fixture(macros);
    if (!macros.isEmpty()) fixture.selectMacro(0);
    QStringList nameless;
    collectNameless(QAccessible::queryAccessibleInterface(fixture.tab), nameless);
    QCOMPARE(nameless, QStringList());
  }

  void recordIsAToggleButtonAndItsDotIsNothingToRead() {
    EditingFixture fixture(2);
    QPushButton* record = fixture.tab->mRecordMacroDetails();
    QAccessibleInterface* read = QAccessible::queryAccessibleInterface(record);
    QCOMPARE(read->role(), QAccessible::Button);
    QVERIFY(read->state().checkable);
    QVERIFY(!read->state().checked);
    QCOMPARE(read->childCount(), 0);
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("Record"));
    read->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(read->state().checked);
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("Stop"));
  }

  void aClosedSheetIsNotRead() {
    EditingFixture fixture(1);
    fixture.edit();
    fixture.click("mMacroDelayCancel");
    for (const char* part : {"mEditDelayWindow", "mInputMacroDelay", "mMacroDelayOK", "mEditEventWindow",
                             "mInputMacroEvent", "mChangesPartner"}) {
      QVERIFY2(QAccessible::queryAccessibleInterface(fixture.find(part))->state().invisible, part);
    }
  }
};

SKARN_QTEST(MouseMacrosControllerKeyboardTest)
#include "MouseMacrosController_keyboard_test.moc"
