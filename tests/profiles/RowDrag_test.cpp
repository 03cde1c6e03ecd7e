// The order of the profiles: by dragging a row, with the keyboard and from the menus.
#include "profiles/ProfileMenu.h"
#include "profiles/ProfilesTabTest.h"
#include "support/QtTests.h"
#include "widgets/Notice.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const PropertyList four = namedProfiles({"A", "B", "C", "D"});
const PropertyList namesOfFour = vorn::profileNames(four);

constexpr int moveUp = static_cast<int>(ProfileListItem::MoveUp);
constexpr int moveDown = static_cast<int>(ProfileListItem::MoveDown);

}  // namespace

class RowDragTest : public QObject {
  Q_OBJECT

 private:
  QWidget& viewport() { return *mTest->table().viewport(); }
  void press(int row) { QTest::mousePress(&viewport(), Qt::LeftButton, {}, mTest->cell(row, 1)); }
  void moveTo(const QPoint& position) {
    QMouseEvent move(QEvent::MouseMove, position, viewport().mapToGlobal(QPointF(position)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&viewport(), &move);
  }
  void release(const QPoint& position) { QTest::mouseRelease(&viewport(), Qt::LeftButton, {}, position); }
  // The upper or the lower edge of a row.
  QPoint edge(int row, bool isLower) {
    const QRect rect = mTest->table().visualRect(mTest->table().model()->index(row, 1));
    return isLower ? rect.bottomLeft() - QPoint(0, 2) : rect.topLeft() + QPoint(0, 2);
  }
  void drag(int row, const QPoint& to) {
    press(row);
    moveTo(to);
    release(to);
  }
  QString notice() { return mTest->find<Notice>("mProfileNotice")->text(); }
  bool isMarked() { return viewport().cursor().shape() == Qt::ClosedHandCursor; }

  std::unique_ptr<ProfilesTab> mTest;

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() {
    mTest = std::make_unique<ProfilesTab>();
    mTest->showProfiles(four, 1);
  }
  void cleanup() { mTest.reset(); }

  void theNoticeGoesWhenTheProfilesAreOthersThanItTells() {
    mTest->table().selectRow(3);
    mTest->find<Notice>("mProfileNotice")->say(QStringLiteral("D is at position 1 now"));
    mTest->showProfiles(four, 1);
    QCOMPARE(notice(), QStringLiteral("D is at position 1 now"));
    mTest->showProfiles(namedProfiles({"D", "A", "B", "C"}), 1);
    QCOMPARE(notice(), QString());
  }

  void aDropSendsOneOrder_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("over");
    QTest::addColumn<bool>("isLower");
    QTest::addColumn<QList<int>>("order");
    QTest::addRow("up to the first place") << 3 << 0 << false << QList<int>{3, 0, 1, 2};
    QTest::addRow("up behind the first") << 3 << 0 << true << QList<int>{0, 3, 1, 2};
    QTest::addRow("down to the last place") << 0 << 3 << true << QList<int>{1, 2, 3, 0};
    QTest::addRow("down before the last") << 0 << 3 << false << QList<int>{1, 2, 0, 3};
    QTest::addRow("the active one") << 1 << 2 << true << QList<int>{0, 2, 1, 3};
  }
  void aDropSendsOneOrder() {
    QFETCH(int, from);
    QFETCH(int, over);
    QFETCH(bool, isLower);
    QFETCH(QList<int>, order);
    drag(from, edge(over, isLower));
    const vorn::ProfileOrder expected(order.begin(), order.end());
    VERIFY_CALLS(mTest->delegate.calls, {reordered(expected, namesOfFour)});
    QStringList names;
    for (const int each : order) names << QStringLiteral("ABCD").sliced(each, 1);
    QCOMPARE(mTest->names(), names);
    QCOMPARE(mTest->selectedRow(), names.indexOf(QLatin1String("B")));
    QVERIFY(!isMarked());
  }

  void aDragBelowTheRowsGoesToTheEnd() {
    drag(0, viewport().rect().bottomLeft() + QPoint(50, -5));
    VERIFY_CALLS(mTest->delegate.calls, {reordered({1, 2, 3, 0}, namesOfFour)});
  }

  void aDragThatEndsWhereItBeganSendsNothingAndSelectsNothing_data() {
    QTest::addColumn<int>("over");
    QTest::addColumn<bool>("isLower");
    QTest::addRow("on its own row") << 2 << false;
    QTest::addRow("behind the one before") << 1 << true;
    QTest::addRow("before the next one") << 3 << false;
  }
  void aDragThatEndsWhereItBeganSendsNothingAndSelectsNothing() {
    QFETCH(int, over);
    QFETCH(bool, isLower);
    press(2);
    moveTo(edge(0, false));
    QVERIFY(isMarked());
    moveTo(edge(over, isLower));
    release(edge(over, isLower));
    VERIFY_CALLS(mTest->delegate.calls, {});
    QCOMPARE(mTest->selectedRow(), 1);
    QVERIFY(!isMarked());
  }

  void aDragLetGoOfBesideTheTableSendsNothing() {
    for (const QPoint& outside : {QPoint(-5, 10), QPoint(20, -10), viewport().rect().bottomRight() + QPoint(10, 0)}) {
      drag(2, outside);
    }
    VERIFY_CALLS(mTest->delegate.calls, {});
    QCOMPARE(mTest->selectedRow(), 1);
  }

  void aPressSelectsItsRowWhenItIsLetGo() {
    press(2);
    VERIFY_CALLS(mTest->delegate.calls, {});
    moveTo(mTest->cell(2, 1) + QPoint(1, 1));
    release(mTest->cell(2, 1) + QPoint(1, 1));
    VERIFY_CALLS(mTest->delegate.calls, {switchedTo(2)});
    QCOMPARE(mTest->selectedRow(), 2);
  }

  void aClickFollowsItsProfileWhereTheListChangesBeforeItIsLetGo() {
    press(2);
    mTest->delegate.list = namedProfiles({"C", "A", "B", "D"});
    mTest->delegate.active = 2;
    mTest->delegate.reload();
    release(mTest->cell(2, 1));
    VERIFY_CALLS(mTest->delegate.calls, {switchedTo(0)});
    press(1);
    mTest->delegate.list = namedProfiles({"C", "B", "D"});
    mTest->delegate.active = 0;
    mTest->delegate.reload();
    release(mTest->cell(1, 1));
    VERIFY_CALLS(mTest->delegate.calls, {switchedTo(0)});
  }

  void escapeOrARightClickEndsADrag_data() {
    QTest::addColumn<bool>("isEscape");
    QTest::addRow("Escape") << true;
    QTest::addRow("a right click") << false;
  }
  void escapeOrARightClickEndsADrag() {
    QFETCH(bool, isEscape);
    press(3);
    moveTo(edge(0, false));
    if (isEscape) {
      mTest->key(Qt::Key_Escape);
    } else {
      QTest::mouseClick(&viewport(), Qt::RightButton, {}, mTest->cell(1, 1));
      QVERIFY(mTest->openMenu());
      mTest->openMenu()->close();
    }
    QVERIFY(!isMarked());
    release(edge(0, false));
    VERIFY_CALLS(mTest->delegate.calls, {});
    QCOMPARE(mTest->selectedRow(), 1);
  }

  void keysDoNothingWhileARowIsDragged() {
    press(3);
    moveTo(edge(0, false));
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_F2, Qt::Key_Down, Qt::Key_Space}) mTest->key(key);
    QVERIFY(!mTest->alert());
    QVERIFY(!mTest->editor());
    VERIFY_CALLS(mTest->delegate.calls, {});
    release(edge(0, false));
    VERIFY_CALLS(mTest->delegate.calls, {reordered({3, 0, 1, 2}, namesOfFour)});
  }

  void aDragGoesOnWhenAReloadBringsTheSameProfiles() {
    press(3);
    moveTo(edge(0, false));
    mTest->delegate.list = four.replacing(0, four.at(0).with(keys::DPIX, 1234));
    mTest->delegate.active = 2;
    mTest->delegate.reload();
    release(edge(0, false));
    VERIFY_CALLS(mTest->delegate.calls, {reordered({3, 0, 1, 2}, namesOfFour)});
  }

  void aDragMovesNothingWhenTheListChangesUnderIt_data() {
    QTest::addColumn<QStringList>("names");
    QTest::addRow("renamed") << QStringList{"A", "B", "C", "E"};
    QTest::addRow("another order") << QStringList{"D", "A", "B", "C"};
    QTest::addRow("one gone") << QStringList{"A", "B", "C"};
    QTest::addRow("one more") << QStringList{"A", "B", "C", "D", "E"};
  }
  void aDragMovesNothingWhenTheListChangesUnderIt() {
    QFETCH(QStringList, names);
    press(3);
    moveTo(edge(0, false));
    std::vector<std::string> list;
    for (const QString& name : names) list.push_back(name.toStdString());
    mTest->delegate.list = namedProfiles(list);
    mTest->delegate.reload();
    moveTo(edge(0, false));
    release(edge(0, false));
    VERIFY_CALLS(mTest->delegate.calls, {});
    QCOMPARE(mTest->names(), names);
  }

  void aDragEndsWithTheMouse() {
    press(3);
    moveTo(edge(0, false));
    mTest->tab->enableControlsState(false);
    QVERIFY(!isMarked());
    mTest->tab->enableControlsState(true);
    release(edge(0, false));
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void aDragTakesATypedNameOverFirst() {
    mTest->table().setFocus();
    mTest->key(Qt::Key_F2);
    QVERIFY(mTest->editor());
    QTest::keyClicks(mTest->editor(), QStringLiteral("Beta"));
    // As a press on the viewport does.
    mTest->table().setFocus(Qt::MouseFocusReason);
    drag(3, edge(0, false));
    const PropertyList now = namedProfiles({"A", "Beta", "C", "D"});
    VERIFY_CALLS(mTest->delegate.calls, {renamed(1, now.at(1)), reordered({3, 0, 1, 2}, vorn::profileNames(now))});
  }

  void aMoveSaysWhatCameOfIt() {
    drag(3, edge(0, false));
    QCOMPARE(notice(), QStringLiteral("“D” is profile 1 now."));
    mTest->delegate.statusOfReorder = vorn::ReturnStatus::Outdated;
    drag(3, edge(0, false));
    QCOMPARE(notice(), localized("lkeyProfilesChangedMeanwhile"));
    mTest->delegate.statusOfReorder = vorn::ReturnStatus::NotSaved;
    drag(3, edge(0, false));
    QVERIFY(notice().startsWith(QStringLiteral("“C” was not moved. The core engine could not write it")));
    mTest->delegate.doesAnswer = false;
    drag(3, edge(0, false));
    QVERIFY(notice().startsWith(QStringLiteral("“C” was not moved. ")));
    QCOMPARE(mTest->names(), (QStringList{"D", "A", "B", "C"}));
    QCOMPARE(mTest->selectedRow(), 2);
  }

  void altWithUpAndDownMovesTheSelectedProfile() {
    mTest->table().setFocus();
    mTest->key(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(mTest->names(), (QStringList{"A", "C", "B", "D"}));
    QCOMPARE(mTest->selectedRow(), 2);
    mTest->key(Qt::Key_Up, Qt::AltModifier);
    mTest->key(Qt::Key_Up, Qt::AltModifier);
    mTest->key(Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(mTest->names(), (QStringList{"B", "A", "C", "D"}));
    const auto names = [](const char* a, const char* b, const char* c, const char* d) {
      return PropertyList::array({a, b, c, d});
    };
    VERIFY_CALLS(mTest->delegate.calls,
                 {reordered({0, 2, 1, 3}, namesOfFour), reordered({0, 2, 1, 3}, names("A", "C", "B", "D")),
                  reordered({1, 0, 2, 3}, namesOfFour)});
    QVERIFY(mTest->table().hasFocus());
  }

  void theMenusMoveTheProfileThatTheyWereOpenedOn() {
    QMenu* menu = mTest->rightClick(1, 1);
    QVERIFY(menu);
    mTest->chooseIn(*menu, moveDown);
    mTest->choose(moveUp);
    VERIFY_CALLS(mTest->delegate.calls, {reordered({0, 2, 1, 3}, namesOfFour),
                                         reordered({0, 2, 1, 3}, PropertyList::array({"A", "C", "B", "D"}))});
  }

  void theMenusSayWhyAProfileCannotMove_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("reasonAgainstUp");
    QTest::addColumn<QString>("reasonAgainstDown");
    QTest::addRow("first") << 0 << "It is the first profile."
                           << "";
    QTest::addRow("between") << 1 << ""
                             << "";
    QTest::addRow("last") << 3 << ""
                          << "It is the last profile.";
  }
  void theMenusSayWhyAProfileCannotMove() {
    QFETCH(int, row);
    QFETCH(QString, reasonAgainstUp);
    QFETCH(QString, reasonAgainstDown);
    mTest->showProfiles(four, row);
    QMenu* menu = mTest->rightClick(row, 1);
    QVERIFY(menu);
    int count = 0;
    for (const QAction* item : menu->actions()) {
      const int tag = item->property("tag").toInt();
      if (tag != moveUp && tag != moveDown) continue;
      const QString reason = tag == moveUp ? reasonAgainstUp : reasonAgainstDown;
      QCOMPARE(item->isEnabled(), reason.isEmpty());
      if (!reason.isEmpty()) QCOMPARE(item->toolTip(), reason);
      ++count;
    }
    QCOMPARE(count, 2);
    menu->close();
  }

  void aMenuWhoseProfileIsGoneMovesNone() {
    QMenu* menu = mTest->rightClick(1, 1);
    QVERIFY(menu);
    mTest->delegate.list = namedProfiles({"A", "C", "D"});
    mTest->delegate.reload();
    mTest->chooseIn(*menu, moveDown);
    QVERIFY(mTest->alert());
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void aSingleProfileStaysWhereItIs() {
    mTest->showProfiles(namedProfiles({"A"}), 0);
    drag(0, viewport().rect().bottomLeft() + QPoint(50, -5));
    mTest->key(Qt::Key_Up, Qt::AltModifier);
    mTest->key(Qt::Key_Down, Qt::AltModifier);
    VERIFY_CALLS(mTest->delegate.calls, {});
  }
};

SKARN_QTEST(RowDragTest)
#include "RowDrag_test.moc"
