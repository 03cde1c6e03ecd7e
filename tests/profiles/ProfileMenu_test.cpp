// The gear menu and the right-click menu of the profiles table, the column of check boxes, and what is enabled when.
#include <QContextMenuEvent>

#include "profiles/ProfilesTabTest.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const QStringList titles{
    "Rename",           "New", "Import…", "Export…", "Delete…", "Copy", "Assign Application…", "Remove Application",
    "Restore Defaults…"};

// The nine; what is below them is tested elsewhere.
QList<QAction*> itemsOf(const QMenu& menu) {
  return menu.actions().first(titles.size());
}

QStringList titlesIn(const QMenu& menu) {
  QStringList texts;
  for (const QAction* item : itemsOf(menu)) texts << item->text();
  return texts;
}

// The tags of the disabled ones.
QList<int> disabledIn(const QMenu& menu) {
  QList<int> tags;
  for (const QAction* item : itemsOf(menu)) {
    if (!item->isEnabled()) tags << item->property("tag").toInt();
  }
  return tags;
}

// This many profiles, all with or all without an application.
PropertyList manyProfiles(int count, bool haveApplication) {
  std::vector<PropertyList> list;
  for (int i = 0; i < count; ++i) {
    list.push_back(
        profile("P" + std::to_string(i))
            .with(keys::AppInfo, PropertyList::dictionary({{keys::Application, haveApplication ? "Editor" : ""}})));
  }
  return PropertyList::array(list);
}

}  // namespace

class ProfileMenuTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void bothMenusSayWhichKeysMoveAProfile() {
    ProfilesTab test;
    test.show();
    QMenu* contextMenu = test.rightClick(1, 1);
    QVERIFY(contextMenu);
    for (const QMenu* menu : {contextMenu, test.gear().menu()}) {
      QStringList keysOfMoves;
      for (const QAction* item : menu->actions()) {
        const QKeySequence shortcut = item->shortcut();
        if (!shortcut.isEmpty()) keysOfMoves << item->text() + QLatin1Char(' ') + shortcut.toString();
      }
      QCOMPARE(keysOfMoves, (QStringList{"Move Up Alt+Up", "Move Down Alt+Down"}));
    }
    contextMenu->close();
  }

  void bothMenusHaveTheNineItems() {
    ProfilesTab test;
    test.show();
    QMenu* contextMenu = test.rightClick(2, 1);
    QVERIFY(contextMenu);
    for (const QMenu* menu : {test.gear().menu(), contextMenu}) {
      QCOMPARE(titlesIn(*menu), titles);
      int tag = 0;
      for (const QAction* item : itemsOf(*menu)) {
        QCOMPARE(item->property("tag").toInt(), ++tag);
        QCOMPARE(item->objectName(), QStringLiteral("selectMenuItem"));
      }
    }
    QVERIFY(test.gear().text().isEmpty());
    QVERIFY(!test.gear().icon().isNull());
    contextMenu->close();
  }

  void itemsAreEnabledByTheListAndTheSelection_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("haveApplication");
    for (const int count : {1, 2, 4, 5}) {
      for (const int row : {0, count - 1}) {
        for (const bool haveApplication : {false, true}) {
          QTest::addRow("%d profiles, row %d, %s application", count, row, haveApplication ? "an" : "no")
              << count << row << haveApplication;
        }
      }
    }
  }
  void itemsAreEnabledByTheListAndTheSelection() {
    QFETCH(int, count);
    QFETCH(int, row);
    QFETCH(bool, haveApplication);
    ProfilesTab test;
    test.showProfiles(manyProfiles(count, haveApplication), row);
    QList<int> disabled;
    if (count == 5) disabled << 2 << 3;
    if (count == 1) disabled << 5;
    if (count == 5) disabled << 6;
    if (!haveApplication) disabled << 8;
    QTest::mouseClick(&test.gear(), Qt::LeftButton);
    QVERIFY(test.gear().menu()->isVisible());
    QCOMPARE(disabledIn(*test.gear().menu()), disabled);
    for (const QAction* item : itemsOf(*test.gear().menu())) {
      QCOMPARE(test.tab->validateMenuItem(*item), item->isEnabled());
      QCOMPARE(item->toolTip().isEmpty() || item->toolTip() == item->text(), item->isEnabled());
    }
    test.gear().menu()->close();
    QMenu* menu = test.rightClick(row, 1);
    QVERIFY(menu);
    QCOMPARE(disabledIn(*menu), disabled);
    menu->close();
    QCOMPARE(test.add().isEnabled(), count < 5);
    QCOMPARE(test.remove().isEnabled(), count > 1);
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void inADisabledTableAllItemsAreDisabledAndSayWhy() {
    ProfilesTab test;
    test.show();
    test.tab->enableControlsState(false);
    QMenu* menu = test.rightClick(2, 1);
    QVERIFY(menu);
    QCOMPARE(disabledIn(*menu), (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    for (const QAction* item : itemsOf(*menu)) QCOMPARE(item->toolTip(), QStringLiteral("No mouse connected"));
    menu->close();
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void aRightClickOnARowSwitchesToItAndItsMenuActsOnIt_data() {
    QTest::addColumn<int>("column");
    for (int column = 0; column < 4; ++column) QTest::addRow("column %d", column) << column;
  }
  void aRightClickOnARowSwitchesToItAndItsMenuActsOnIt() {
    QFETCH(int, column);
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    QMenu* menu = test.rightClick(2, column);
    QVERIFY(menu);
    QCOMPARE(test.selectedRow(), 2);
    test.chooseIn(*menu, 6);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2), added(profile("C(2)"))});
  }

  void aRightClickOnTheSelectedRowOrBelowTheRowsSwitchesNothing() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    QVERIFY(test.rightClick(1, 1));
    test.openMenu()->close();
    test.rightClickBelowTheRows();
    QVERIFY(test.openMenu());
    test.chooseIn(*test.openMenu(), 6);
    VERIFY_CALLS(test.delegate.calls, {added(profile("B(2)"))});
  }

  void aRightClickWhoseSwitchIsRefusedOpensNoMenu() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    test.delegate.doesAnswer = false;
    test.delegate.duringCall = [&test] { test.delegate.reload(); };
    QVERIFY(!test.rightClick(2, 1));
    QCOMPARE(test.selectedRow(), 1);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2)});
  }

  void theMenuOfARowStaysWithItsProfileWhenAnotherOneComesInForce() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    QMenu* menu = test.rightClick(2, 1);
    QVERIFY(menu);
    test.delegate.list = namedProfiles({"B", "C"});
    test.delegate.active = 0;
    test.delegate.reload();
    test.chooseIn(*menu, 5);
    QVERIFY(test.alert());
    QCOMPARE(test.alert()->text(), QStringLiteral("Delete Profile “C”?"));
    test.press(QStringLiteral("Delete"));
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2), deleted(1)});
  }

  void theMenuOfARowWhoseProfileIsGoneSaysSoAndDoesNothing_data() {
    QTest::addColumn<int>("tag");
    for (const int tag : {1, 4, 5, 6, 7, 8, 9}) QTest::addRow("item %d", tag) << tag;
  }
  void theMenuOfARowWhoseProfileIsGoneSaysSoAndDoesNothing() {
    QFETCH(int, tag);
    ProfilesTab test;
    test.showProfiles(manyProfiles(3, true), 1);
    const QString gone = test.names().at(2);
    QMenu* menu = test.rightClick(2, 1);
    QVERIFY(menu);
    test.delegate.list = manyProfiles(2, true);
    test.delegate.active = 0;
    test.delegate.reload();
    test.chooseIn(*menu, tag);
    QVERIFY(test.alert());
    QCOMPARE(test.alert()->text(), QStringLiteral("“%1” is no longer there").arg(gone));
    QVERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2)});
  }

  void eachRightClickMakesAFreshMenu() {
    ProfilesTab test;
    test.show();
    for (int times = 0; times < 3; ++times) {
      QMenu* menu = test.rightClick(0, 1);
      QVERIFY(menu);
      menu->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(test.table().findChildren<QMenu*>().size(), 0);
    test.delegate.list = manyProfiles(1, false);
    test.delegate.active = 0;
    test.delegate.reload();
    QMenu* menu = test.rightClick(0, 1);
    QCOMPARE(disabledIn(*menu), (QList<int>{5, 8}));
    menu->close();
  }

  void theMenuKeyOpensTheMenuAtTheSelectedRow() {
    ProfilesTab test;
    test.show();
    test.table().setFocus();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(&test.table(), &event);
    QMenu* menu = test.openMenu();
    QVERIFY(menu);
    QCOMPARE(titlesIn(*menu), titles);
    const QRect row = test.table().visualRect(test.table().model()->index(1, 1));
    QCOMPARE(menu->pos(), test.table().viewport()->mapToGlobal(row.bottomLeft()));
    menu->close();
  }

  void aContextMenuEventAfterThePressOpensNoSecondMenu() {
    ProfilesTab test;
    test.show();
    QMenu* menu = test.rightClick(2, 1);
    QVERIFY(menu);
    QContextMenuEvent event(QContextMenuEvent::Mouse, test.cell(2, 1),
                            test.table().viewport()->mapToGlobal(test.cell(2, 1)));
    QCoreApplication::sendEvent(test.table().viewport(), &event);
    QCOMPARE(test.openMenu(), menu);
    QVERIFY(menu->isVisible());
    menu->close();
  }

  void unknownTagsDoNothing() {
    ProfilesTab test;
    test.show();
    for (const int tag : {0, 10, -1, 1000}) test.tab->selectMenuItem(tag);
    QVERIFY(!test.editor());
    QVERIFY(!test.window.findChild<QDialog*>());
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void theGearRenamesAndAdds() {
    ProfilesTab test;
    test.show();
    test.choose(1);
    QTRY_COMPARE(test.editedRow(), 1);
    test.typeName(QStringLiteral("Office"));
    test.choose(2);
    VERIFY_CALLS(test.delegate.calls, {renamed(1, profiles().at(1).with(keys::ProfileName, "Office")),
                                       added(test.delegate.factory.with(keys::ProfileName, "Untitled Profile"))});
    QTRY_COMPARE(test.editedRow(), 4);
  }

  // --- Auto switch

  void aBoxIsClickedAlone() {
    ProfilesTab test;
    test.show();
    test.click(1, 3);
    VERIFY_CALLS(test.delegate.calls, {updated(PropertyList::dictionary({{keys::AutoSwitchOn, 1}}))});
    QCOMPARE(test.rows().at(1), QStringLiteral("2 | Work | LibreOffice Writer | [x]"));
    test.click(1, 3);
    VERIFY_CALLS(test.delegate.calls, {updated(PropertyList::dictionary({{keys::AutoSwitchOn, 1}})),
                                       updated(PropertyList::dictionary({{keys::AutoSwitchOn, 0}}))});
    QCOMPARE(test.rows().at(1), QStringLiteral("2 | Work | LibreOffice Writer | [ ]"));
  }

  void aBoxInAnotherRowMakesItsProfileTheActiveOneFirst() {
    ProfilesTab test;
    test.show();
    // The selection changes by the switch's reload, not by the click.
    std::vector<int> selected;
    test.delegate.duringCall = [&] { selected.push_back(test.selectedRow()); };
    test.click(2, 3);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2), updated(PropertyList::dictionary({{keys::AutoSwitchOn, 0}}))});
    QCOMPARE(selected, (std::vector<int>{1, 2}));
    QCOMPARE(test.selectedRow(), 2);
  }

  void aBoxWhoseProfileIsNotSwitchedToChangesNoOther() {
    ProfilesTab test;
    test.show();
    test.delegate.doesAnswer = false;
    const QStringList before = test.rows();
    test.click(2, 3);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2)});
    QCOMPARE(test.rows(), before);
    QVERIFY(!test.find<QDialog>("applicationPanel"));
  }

  void aPressThatLeavesTheBoxDoesNothing() {
    ProfilesTab test;
    test.show();
    QTest::mousePress(test.table().viewport(), Qt::LeftButton, {}, test.cell(2, 3));
    QTest::mouseRelease(test.table().viewport(), Qt::LeftButton, {}, test.cell(3, 3));
    QTest::mousePress(test.table().viewport(), Qt::LeftButton, {}, test.cell(2, 3));
    QTest::mouseRelease(test.table().viewport(), Qt::LeftButton, {}, test.cell(2, 2));
    QCOMPARE(test.selectedRow(), 1);
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void twoQuickClicksTickAndUntick() {
    ProfilesTab test;
    test.show();
    test.click(1, 3);
    QTest::mouseDClick(test.table().viewport(), Qt::LeftButton, {}, test.cell(1, 3));
    QTest::mouseRelease(test.table().viewport(), Qt::LeftButton, {}, test.cell(1, 3));
    QVERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {updated(PropertyList::dictionary({{keys::AutoSwitchOn, 1}})),
                                       updated(PropertyList::dictionary({{keys::AutoSwitchOn, 0}}))});
  }

  void spaceTicksTheSelectedRowsBox() {
    ProfilesTab test;
    test.showProfiles(profiles(), 2);
    test.table().setFocus();
    test.key(Qt::Key_Space);
    VERIFY_CALLS(test.delegate.calls, {updated(PropertyList::dictionary({{keys::AutoSwitchOn, 0}}))});
    QCOMPARE(test.selectedRow(), 2);
  }

  void aBoxSaysItsStateInWords() {
    ProfilesTab test;
    test.show();
    const QAbstractItemModel& model = *test.table().model();
    QCOMPARE(model.index(2, 3).data(Qt::AccessibleTextRole).toString(), QStringLiteral("On"));
    QCOMPARE(model.index(3, 3).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Off"));
    QCOMPARE(model.index(1, 0).data(Qt::AccessibleDescriptionRole).toString(), QStringLiteral("Active profile"));
  }

  // --- Enabling

  void aBoxSaysWhatItSwitchesFor() {
    ProfilesTab test;
    const PropertyList editor = PropertyList::dictionary({{keys::Application, "Editor"}});
    test.showProfiles(PropertyList::array({profile("A").with(keys::AppInfo, editor).with(keys::AutoSwitchOn, 1),
                                           profile("B").with(keys::AppInfo, editor).with(keys::AutoSwitchOn, 0),
                                           profile("C").without(keys::AppInfo)}),
                      2);
    const auto box = [&](int row) { return test.table().model()->index(row, 3); };
    QCOMPARE(box(0).data(Qt::ToolTipRole).toString(), QStringLiteral("Comes into force when “Editor” is in front"));
    QVERIFY(box(1).data(Qt::ToolTipRole).toString().startsWith(QStringLiteral("Tick to have this profile")));
    QVERIFY(box(2).data(Qt::ToolTipRole).toString().startsWith(QStringLiteral("Tick to choose")));
    for (int row = 0; row < 3; ++row) {
      QCOMPARE(box(row).data(Qt::AccessibleDescriptionRole), box(row).data(Qt::ToolTipRole));
    }
    // The name of an application that nothing is switched for is fainter.
    const auto cell = [&](int row) {
      const QRect place = test.table().visualRect(test.table().model()->index(row, 2)).adjusted(4, 2, -4, -4);
      return test.table().viewport()->grab(place).toImage();
    };
    QVERIFY(cell(0) != cell(1));
  }

  void controlsAreEnabledWithTheMouse() {
    ProfilesTab test;
    test.show();
    for (const bool enabled : {false, true}) {
      test.tab->enableControlsState(enabled);
      for (QWidget* control : std::initializer_list<QWidget*>{&test.table(), &test.add(), &test.remove(), &test.gear(),
                                                              &test.onScreen()}) {
        QCOMPARE(control->isEnabled(), enabled);
        if (!enabled)
          QCOMPARE(control->toolTip().isEmpty() ? test.tab->toolTip() : control->toolTip(),
                   QStringLiteral("No mouse connected"));
      }
      QCOMPARE(test.tab->toolTip(), enabled ? QString() : QStringLiteral("No mouse connected"));
    }
  }

  void theMouseEnablesNoDeleteOfTheLastProfile() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"Only"}), 0);
    for (const bool enabled : {false, true}) {
      test.tab->enableControlsState(enabled);
      QVERIFY(!test.remove().isEnabled());
      QCOMPARE(test.add().isEnabled(), enabled);
    }
  }

  void newsWithoutAMouseEnablesNothing() {
    ProfilesTab test;
    test.show();
    test.tab->enableControlsState(false);
    test.delegate.reload();
    for (QWidget* control :
         std::initializer_list<QWidget*>{&test.table(), &test.add(), &test.remove(), &test.gear(), &test.onScreen()}) {
      QVERIFY(!control->isEnabled());
    }
  }

  void duringAnAddOnlyAddFollowsTheCount_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("enabled");
    for (const int count : {1, 4, 5}) {
      for (const bool enabled : {false, true}) {
        QTest::addRow("%d profiles, %s", count, enabled ? "on" : "off") << count << enabled;
      }
    }
  }
  void duringAnAddOnlyAddFollowsTheCount() {
    QFETCH(int, count);
    QFETCH(bool, enabled);
    ProfilesTab test;
    test.showProfiles(manyProfiles(count, false), 0);
    test.tab->enableControlsForAddProfiles(enabled);
    QCOMPARE(test.add().isEnabled(), count < 5);
    QCOMPARE(test.remove().isEnabled(), enabled);
    QCOMPARE(test.gear().isEnabled(), enabled);
    QCOMPARE(test.onScreen().isEnabled(), enabled);
    QVERIFY(test.table().isEnabled());
  }

  void controlsHaveNamesAndAreReachedByTheKeyboard() {
    ProfilesTab test;
    test.show();
    QCOMPARE(test.table().accessibleName(), QStringLiteral("Profiles"));
    QCOMPARE(test.add().accessibleName(), QStringLiteral("New profile"));
    QCOMPARE(test.remove().accessibleName(), QStringLiteral("Delete the selected profile"));
    QCOMPARE(test.gear().accessibleName(), QStringLiteral("More for profiles"));
    QCOMPARE(test.onScreen().text(), QStringLiteral("Show the profile on screen when it changes"));
    test.table().setFocus();
    QList<QWidget*> reached{&test.table()};
    for (int times = 0; times < 4; ++times) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      reached << QApplication::focusWidget();
    }
    QCOMPARE(reached, (QList<QWidget*>{&test.table(), &test.add(), &test.remove(), &test.gear(), &test.onScreen()}));
  }

  void anEmptyListHasItsMenuAndShowsTheKeyboardsFocus() {
    QApplication::setStyle(new SkarnStyle);
    ProfilesTab test;
    test.showProfiles(PropertyList::array(), -1);
    test.tab->refreshTableDisplay();
    test.rightClickBelowTheRows();
    QMenu* menu = test.openMenu();
    QVERIFY(menu);
    QCOMPARE(disabledIn(*menu), (QList<int>{8}));
    menu->close();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(), test.table().mapToGlobal(QPoint()));
    QApplication::sendEvent(&test.table(), &byKey);
    QVERIFY(test.openMenu());
    test.chooseIn(*test.openMenu(), 2);
    VERIFY_CALLS(test.delegate.calls, {added(test.delegate.factory.with(keys::ProfileName, "Untitled Profile"))});
    test.showProfiles(PropertyList::array(), -1);
    test.add().setFocus();
    const QImage without = test.table().viewport()->grab().toImage();
    test.table().setFocus();
    QVERIFY(test.table().viewport()->grab().toImage() != without);
  }

  void theKeyboardsFocusIsSeenAtTheSelectedRow() {
    QApplication::setStyle(new SkarnStyle);
    ProfilesTab test;
    test.show();
    test.add().setFocus();
    const QImage without = test.table().viewport()->grab().toImage();
    test.table().setFocus();
    const QImage with = test.table().viewport()->grab().toImage();
    const QRect row =
        test.table().visualRect(test.table().model()->index(1, 0)).adjusted(0, 0, test.table().viewport()->width(), 0);
    int changed = 0;
    for (int y = 0; y < with.height(); ++y) {
      for (int x = 0; x < with.width(); ++x) {
        if (with.pixel(x, y) == without.pixel(x, y)) continue;
        QVERIFY(row.contains(x, y));
        ++changed;
      }
    }
    QVERIFY(changed > 0);
  }
};

SKARN_QTEST(ProfileMenuTest)
#include "ProfileMenu_test.moc"
