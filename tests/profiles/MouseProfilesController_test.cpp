// The profiles table: what it shows, selecting, deleting and restoring.
#include <QHeaderView>
#include <QHelpEvent>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <algorithm>

#include "profiles/ProfilesTabTest.h"
#include "profiles/ProfilesTableModel.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"
#include "widgets/Palettes.h"

using namespace skarn;
using namespace skarn::test;

class MouseProfilesControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  // --- What is shown

  void theProfilesAreListedInTheirOrder() {
    ProfilesTab test;
    test.delegate.reload();
    QCOMPARE(test.tab->objectName(), QStringLiteral("MouseProfilesController"));
    QCOMPARE(test.table().objectName(), QStringLiteral("mProfilesTableView"));
    QCOMPARE(test.rows(), (QStringList{"1 | Default |  | [ ]", "2 | Work | LibreOffice Writer | [ ]",
                                       "3 | Raid: Molten Depths, healer set-up for the second boss | Skirmish Online "
                                       "| [x]",
                                       "4 | Racing |  | [ ]"}));
    const QAbstractItemModel& model = *test.table().model();
    QStringList headers;
    QStringList identifiers;
    QString editable;
    for (int column = 0; column < model.columnCount(); ++column) {
      headers << model.headerData(column, Qt::Horizontal).toString();
      identifiers << model.headerData(column, Qt::Horizontal, Qt::UserRole).toString();
      const Qt::ItemFlags flags = model.index(0, column).flags();
      editable += flags & Qt::ItemIsEditable ? 'e' : flags & Qt::ItemIsUserCheckable ? 'c' : '-';
    }
    QCOMPARE(headers, (QStringList{"No.", "Name", "Application", "Auto switch"}));
    QCOMPARE(identifiers, (QStringList{"id", "name", "application", "auto switch"}));
    QCOMPARE(editable, QStringLiteral("-e-c"));
    QCOMPARE(test.table().selectionMode(), QAbstractItemView::SingleSelection);
  }

  void theActiveProfileIsSelectedAndHasTheDot() {
    QApplication::setPalette(lightPalette());
    ProfilesTab test;
    test.show();
    QCOMPARE(test.selectedRow(), 1);
    const QImage seen = test.table().viewport()->grab().toImage();
    QList<int> dots;
    for (int row = 0; row < test.table().model()->rowCount(); ++row) {
      const QRect place = test.table().visualRect(test.table().model()->index(row, 0));
      bool found = false;
      for (int x = place.left(); x <= place.right() && !found; ++x) {
        found = QColor(seen.pixel(x, place.center().y())) == accentColor(lightPalette());
      }
      if (found) dots << row;
    }
    QCOMPARE(dots, QList<int>{1});
  }

  void autoSwitchIsACheckBoxInTheMiddleOfItsCell() {
    ProfilesTab test;
    test.show();
    const auto picture = [&](int row) {
      return test.table().viewport()->grab(test.table().visualRect(test.table().model()->index(row, 3))).toImage();
    };
    // The rows 2 and 3 are not selected and differ in nothing but the state: in the box's ink, around the middle.
    const QImage on = picture(2);
    const QImage off = picture(3);
    QRect changed;
    for (int y = 0; y < on.height(); ++y) {
      for (int x = 0; x < on.width(); ++x) {
        if (on.pixel(x, y) != off.pixel(x, y)) changed |= QRect(x, y, 1, 1);
      }
    }
    QVERIFY(!changed.isEmpty());
    QVERIFY(changed.width() <= 18 && changed.height() <= 18);
    QVERIFY((changed.center() - on.rect().center()).manhattanLength() <= 4);
    QCOMPARE(test.table().model()->index(2, 3).data(Qt::DisplayRole).toString(), QString());
  }

  void eachColumnHasItsValuesAndOneOfTwoCells() {
    ProfilesTab test;
    test.delegate.reload();
    const auto* model = qobject_cast<ProfilesTableModel*>(test.table().model());
    QVERIFY(model);
    const QVariantList values[] = {{1, "Default", "", 0}, {2, "Work", "LibreOffice Writer", 0}};
    for (int row = 0; row < 2; ++row) {
      for (int column = 0; column < 4; ++column) {
        QCOMPARE(model->tableViewObjectValueForTableColumn(ProfilesTableModel::identifierOf(column), row),
                 values[row][column]);
      }
    }
    QCOMPARE(model->tableViewObjectValueForTableColumn(QStringLiteral("auto switch"), 2), QVariant(1));
    QVERIFY(!model->tableViewObjectValueForTableColumn(QStringLiteral("other"), 0).isValid());
    QVERIFY(test.tab->tableViewDataCellForTableColumn(QStringLiteral("auto switch")) !=
            test.tab->tableViewDataCellForTableColumn(QStringLiteral("name")));
    for (int column = 0; column < 4; ++column) {
      QCOMPARE(test.table().itemDelegateForColumn(column),
               test.tab->tableViewDataCellForTableColumn(ProfilesTableModel::identifierOf(column)));
    }
  }

  void aTextThatIsCutOffIsToldAsItStands_data() {
    QTest::addColumn<int>("column");
    QTest::newRow("name") << 1;
    QTest::newRow("application") << 2;
  }
  void aTextThatIsCutOffIsToldAsItStands() {
    QFETCH(int, column);
    ProfilesTab test;
    const std::string text = "<b>Fire & Ice</b>";
    test.showProfiles(
        PropertyList::array(
            {profile(text).with(keys::AppInfo, PropertyList::dictionary({{keys::Application, text}})), profile("B")}),
        1);
    QTableView& table = test.table();
    const auto tooltip = [&] {
      const QPoint place = test.cell(0, column);
      QHelpEvent help(QEvent::ToolTip, place, table.viewport()->mapToGlobal(place));
      QApplication::sendEvent(table.viewport(), &help);
      return QToolTip::text();
    };
    const int textWidth = table.fontMetrics().horizontalAdvance(QString::fromStdString(text));
    // Padding left and right of the text, and before an application's name the place of its icon.
    const int around = 2 * 8 + (column == 2 ? table.iconSize().width() + 8 : 0);
    table.horizontalHeader()->setSectionResizeMode(column, QHeaderView::Fixed);
    table.horizontalHeader()->resizeSection(column, textWidth + around);
    QCOMPARE(tooltip(), QString());
    table.horizontalHeader()->resizeSection(column, textWidth + around - 1);
    QCOMPARE(QTextDocumentFragment::fromHtml(tooltip()).toPlainText(), QString::fromStdString(text));
    // The one of another cell goes.
    table.horizontalHeader()->resizeSection(column, textWidth + around);
    tooltip();
    QTRY_VERIFY(!QToolTip::isVisible());
  }

  void aClickBelowTheRowsLeavesTheSelectionAndTakesTheKeyboard_data() {
    QTest::addColumn<Qt::KeyboardModifier>("modifier");
    QTest::newRow("plain") << Qt::NoModifier;
    QTest::newRow("Ctrl") << Qt::ControlModifier;
    QTest::newRow("Shift") << Qt::ShiftModifier;
  }
  void aClickBelowTheRowsLeavesTheSelectionAndTakesTheKeyboard() {
    QFETCH(Qt::KeyboardModifier, modifier);
    ProfilesTab test;
    test.show();
    test.gear().setFocus();
    QTableView& table = test.table();
    const QPoint below(table.viewport()->width() / 2, table.viewport()->height() - 5);
    QVERIFY(!table.indexAt(below).isValid());
    // Through the window, as the pointer does it: the focus comes with the press.
    QTest::mouseClick(test.window.windowHandle(), Qt::LeftButton, modifier,
                      table.viewport()->mapTo(&test.window, below));
    QCOMPARE(test.selectedRow(), 1);
    QVERIFY(table.hasFocus());
    VERIFY_CALLS(test.delegate.calls, {});
    test.key(Qt::Key_Down);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2)});
  }

  void aRefreshKeepsTheSelectedRowByItsIndex() {
    ProfilesTab test;
    test.showProfiles(profiles(), 2);
    test.tab->setMProfilesArray(profiles().removing(0));
    test.tab->refreshTableDisplay();
    QCOMPARE(test.selectedRow(), 2);
    QCOMPARE(test.rows().size(), 3);
    test.tab->setMProfilesArray(namedProfiles({"Only"}));
    test.tab->refreshTableDisplay();
    QCOMPARE(test.selectedRow(), -1);
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void noRowIsSelectedForAnActiveProfileOutsideTheList() {
    const PropertyList outside[] = {4, -1, "1", PropertyList::array(), PropertyList()};
    for (const PropertyList& active : outside) {
      ProfilesTab test;
      test.delegate.reload();
      test.tab->setMDeviceSettingsDict(deviceSettings().with(keys::ActiveProfile, active));
      test.tab->updateUISettings();
      test.tab->refreshTableDisplay();
      QCOMPARE(test.selectedRow(), -1);
      VERIFY_CALLS(test.delegate.calls, {});
    }
  }

  void hostileProfilesShowEmptyCells() {
    ProfilesTab test;
    test.showProfiles(
        PropertyList::array(
            {7, "text", PropertyList(),
             PropertyList::dictionary(
                 {{keys::ProfileName, 3}, {keys::AppInfo, "app"}, {keys::AutoSwitchOn, PropertyList::array()}}),
             PropertyList::dictionary({{keys::AppInfo, PropertyList::dictionary({{keys::Application, 1}})}})}),
        1);
    QCOMPARE(test.rows(),
             (QStringList{"1 |  |  | [ ]", "2 |  |  | [ ]", "3 |  |  | [ ]", "4 |  |  | [ ]", "5 |  |  | [ ]"}));
    test.tab->setMProfilesArray(PropertyList("no array"));
    test.tab->setMDeviceSettingsDict(PropertyList(1));
    test.tab->setMDefaultDict(PropertyList("none"));
    test.tab->updateUISettings();
    QCOMPARE(test.rows(), QStringList());
    QCOMPARE(test.selectedRow(), -1);
  }

  void nothingIsRedrawnWithoutAnActiveProfilesSettings() {
    ProfilesTab test;
    test.show();
    test.tab->setMProfileSettingsDict(PropertyList());
    test.tab->setMProfilesArray(PropertyList::array());
    test.tab->updateUISettings();
    QCOMPARE(test.rows().size(), 4);
  }

  // --- Selecting

  void theFirstSelectionShowsTheActiveProfileAndSwitchesNothing() {
    ProfilesTab test;
    test.tab->setMProfilesArray(profiles());
    test.tab->setMDeviceSettingsDict(deviceSettings());
    test.tab->refreshTableDisplay();
    test.appear();
    test.click(3, 1);
    QCOMPARE(test.selectedRow(), 1);
    VERIFY_CALLS(test.delegate.calls, {});
    // The second one is the user's choice.
    test.click(3, 1);
    QCOMPARE(test.selectedRow(), 1 + 2);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(3)});
  }

  void selectingAnotherRowSwitchesToItOnce() {
    ProfilesTab test;
    test.show();
    test.click(2, 1);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2)});
    QCOMPARE(test.selectedRow(), 2);
    test.click(0, 2);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2), switchedTo(0)});
    QCOMPARE(test.selectedRow(), 0);
  }

  void clickingTheActiveRowSendsNothing() {
    ProfilesTab test;
    test.show();
    for (const int column : {0, 1, 2}) test.click(1, column);
    QVERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void theArrowKeysSwitch() {
    ProfilesTab test;
    test.show();
    test.table().setFocus();
    test.key(Qt::Key_Down);
    test.key(Qt::Key_Up);
    test.key(Qt::Key_Up);
    test.key(Qt::Key_Up);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2), switchedTo(1), switchedTo(0)});
  }

  void theArrowKeysGoOnFromTheSelectedRowAfterARefusedSwitch() {
    ProfilesTab test;
    test.show();
    test.delegate.doesAnswer = false;
    test.delegate.duringCall = [&] { test.delegate.reload(); };
    test.click(3, 1);
    QCOMPARE(test.selectedRow(), 1);
    test.key(Qt::Key_Up);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(3), switchedTo(0)});
  }

  void aRowIsNeitherTakenOutNorAddedWithModifiers() {
    ProfilesTab test;
    test.show();
    test.click(1, 1, Qt::ControlModifier);
    QCOMPARE(test.selectedRow(), 1);
    VERIFY_CALLS(test.delegate.calls, {});
    test.click(2, 1, Qt::ShiftModifier);
    QCOMPARE(test.selectedRow(), 2);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2)});
  }

  void reloadsSelectTheActiveRowAndSendNothing() {
    ProfilesTab test;
    test.show();
    const std::pair<PropertyList, int> states[] = {{profiles(), 3},           {profiles(), 0},
                                                   {namedProfiles({"A"}), 0}, {namedProfiles({"A", "B", "C"}), 2},
                                                   {namedProfiles({"B"}), 0}, {profiles(), 3}};
    for (const auto& [list, active] : states) {
      test.delegate.list = list;
      test.delegate.active = active;
      for (int times = 0; times < 2; ++times) test.delegate.reload();
      QCOMPARE(test.selectedRow(), active);
      QCOMPARE(test.rows().size(), static_cast<qsizetype>(list.size()));
    }
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void aSwitchWithoutAnAnswerIsAskedOnce() {
    ProfilesTab test;
    test.show();
    test.delegate.doesAnswer = false;
    test.click(3, 1);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(3)});
  }

  // --- Deleting

  void deleteAsksAndDeletesTheSelectedProfile_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<int>("active");
    QTest::newRow("first") << 0 << QStringList{"B", "C"} << 0;
    QTest::newRow("middle") << 1 << QStringList{"A", "C"} << 0;
    QTest::newRow("last") << 2 << QStringList{"A", "B"} << 1;
  }
  void deleteAsksAndDeletesTheSelectedProfile() {
    QFETCH(int, row);
    QFETCH(QStringList, left);
    QFETCH(int, active);
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), row);
    QTest::mouseClick(&test.remove(), Qt::LeftButton);
    QVERIFY(test.alert());
    QCOMPARE(test.alert()->text(), QStringLiteral("Delete Profile “%1”?").arg(QLatin1Char("ABC"[row])));
    QVERIFY(test.alert()->informativeText().startsWith(QLatin1String("The profile is removed from the mouse")));
    VERIFY_CALLS(test.delegate.calls, {});
    test.press(QStringLiteral("Delete"));
    VERIFY_CALLS(test.delegate.calls, {deleted(row)});
    QCOMPARE(test.names(), left);
    QCOMPARE(test.selectedRow(), active);
    QCOMPARE(test.window.focusWidget(), &test.table());
    QVERIFY(test.add().isEnabled() && test.remove().isEnabled());
  }

  void aDownwardDeleteLeavesTheLastProfile() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 1);
    test.table().setFocus();
    test.key(Qt::Key_Delete);
    confirm(test.alert());
    QTRY_VERIFY(!test.alert());
    VERIFY_CALLS(test.delegate.calls, {deleted(1)});
    QVERIFY(!test.remove().isEnabled());
    QCOMPARE(test.remove().toolTip(), QStringLiteral("The last profile cannot be deleted."));
    test.key(Qt::Key_Delete);
    QVERIFY(!test.alert());
    test.tab->deleteProfile();
    QCOMPARE(test.delegate.calls.size(), std::size_t{1});
    QVERIFY(test.add().isEnabled());
  }

  void aDeleteWithoutAnAnswerChangesNothing() {
    ProfilesTab test;
    test.show();
    test.delegate.doesAnswer = false;
    test.tab->deleteProfile();
    VERIFY_CALLS(test.delegate.calls, {deleted(1)});
    QCOMPARE(test.names().size(), 4);
    QCOMPARE(test.selectedRow(), 1);
  }

  void cancelledAlertsSendNothing_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<bool>("byEscape");
    for (const int tag : {5, 9}) {
      for (const bool byEscape : {false, true}) {
        QTest::addRow("item %d by %s", tag, byEscape ? "Escape" : "Cancel") << tag << byEscape;
      }
    }
  }
  void cancelledAlertsSendNothing() {
    QFETCH(int, tag);
    QFETCH(bool, byEscape);
    ProfilesTab test;
    test.show();
    test.choose(tag);
    QVERIFY(test.alert());
    QCOMPARE(test.alert()->windowModality(), Qt::WindowModal);
    if (byEscape) {
      QTest::keyClick(test.alert(), Qt::Key_Escape);
    } else {
      test.press(QStringLiteral("Cancel"));
    }
    QTRY_VERIFY(!test.alert());
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void aConfirmedAlertActsOnTheProfileThatItWasOpenedFor_data() {
    QTest::addColumn<QStringList>("listThen");
    QTest::addColumn<int>("activeThen");
    QTest::addColumn<int>("place");
    QTest::newRow("another profile was switched to") << QStringList{"A", "B", "C"} << 2 << 1;
    QTest::newRow("the one before it was deleted") << QStringList{"B", "C"} << 1 << 0;
  }
  void aConfirmedAlertActsOnTheProfileThatItWasOpenedFor() {
    QFETCH(QStringList, listThen);
    QFETCH(int, activeThen);
    QFETCH(int, place);
    std::vector<std::string> names;
    for (const QString& name : listThen) names.push_back(name.toStdString());
    for (const bool isDeletion : {true, false}) {
      ProfilesTab test;
      test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
      if (isDeletion) {
        test.remove().click();
      } else {
        test.tab->selectMenuItem(9);
      }
      QVERIFY(test.alert());
      test.delegate.list = namedProfiles(names);
      test.delegate.active = activeThen;
      test.delegate.reload();
      test.press(isDeletion ? QStringLiteral("Delete") : QStringLiteral("Restore"));
      if (isDeletion) {
        VERIFY_CALLS(test.delegate.calls, {deleted(place)});
      } else {
        VERIFY_CALLS(test.delegate.calls, {renamed(place, test.delegate.factory.with(keys::ProfileName, "B"))});
      }
    }
  }

  void aConfirmedAlertOfAProfileThatIsGoneChangesNothingAndSaysSo() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    test.remove().click();
    test.delegate.list = namedProfiles({"A", "C"});
    test.delegate.reload();
    for (QAbstractButton* button : test.alert()->buttons()) {
      if (button->text() == QStringLiteral("Delete")) button->click();
    }
    VERIFY_CALLS(test.delegate.calls, {});
    const auto alerts = test.window.findChildren<QMessageBox*>(QStringLiteral("alert"));
    QVERIFY(std::ranges::any_of(alerts, [](const QMessageBox* alert) {
      return alert->isVisible() && alert->text() == QStringLiteral("“B” is no longer there");
    }));
  }

  void otherEndsOfSheetsDoNothing() {
    ProfilesTab test;
    test.show();
    const std::pair<int, int> ends[] = {{1001, 5}, {1001, 9}, {0, 5},     {1, 9},
                                        {1000, 0}, {1000, 1}, {1000, 11}, {0, 10}};
    for (const auto& [code, context] : ends) test.tab->sheetDidEnd(code, context);
    VERIFY_CALLS(test.delegate.calls, {});
    QVERIFY(!test.window.findChild<QDialog*>());
  }

  // --- Restoring, on-screen display

  void restoreSendsTheDefaultProfileUnderTheSelectedName() {
    ProfilesTab test;
    test.show();
    test.choose(9);
    QVERIFY(test.alert());
    test.press(QStringLiteral("Restore"));
    VERIFY_CALLS(test.delegate.calls, {updated(test.delegate.factory.with(keys::ProfileName, "Work"))});
    QCOMPARE(test.names().at(1), QStringLiteral("Work"));
  }

  void theOnScreenDisplayIsSentAndShown() {
    ProfilesTab test;
    test.show();
    QVERIFY(!test.onScreen().isChecked());
    QTest::mouseClick(&test.onScreen(), Qt::LeftButton, {}, QPoint(8, test.onScreen().height() / 2));
    QTest::keyClick(&test.onScreen(), Qt::Key_Space);
    VERIFY_CALLS(test.delegate.calls, {updated(PropertyList::dictionary({{keys::ProfileOSDOn, 1}})),
                                       updated(PropertyList::dictionary({{keys::ProfileOSDOn, 0}}))});
    test.delegate.device = test.delegate.device.with(keys::ProfileOSDOn, 1);
    test.delegate.reload();
    QVERIFY(test.onScreen().isChecked());
    QCOMPARE(test.delegate.calls.size(), std::size_t{2});
  }

  void withoutASelectionThereIsNothingToActOn() {
    ProfilesTab test;
    test.showProfiles(profiles(), 7);
    QCOMPARE(test.selectedRow(), -1);
    for (const int tag : {1, 4, 6, 8}) test.tab->selectMenuItem(tag);
    test.tab->deleteProfile();
    test.tab->restoreProfileToDefaultSettings();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_F2, Qt::Key_Delete}) test.key(key);
    QVERIFY(!test.editor());
    QVERIFY(!test.window.findChild<QDialog*>());
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void withoutADelegateTheProfilesStayAsTheyAre() {
    ProfilesTab test;
    test.show();
    const QStringList before = test.rows();
    test.tab->setMProfileDelegate(nullptr);
    test.click(2, 1);
    QCOMPARE(test.selectedRow(), 2);
    for (const int tag : {2, 6, 8}) test.tab->selectMenuItem(tag);
    test.tab->tableViewSetObjectValueForTableColumn(QStringLiteral("X"), QStringLiteral("name"), 1);
    test.tab->tableViewSetObjectValueForTableColumn(1, QStringLiteral("auto switch"), 1);
    test.tab->sheetDidEnd(1000, 5);
    test.tab->sheetDidEnd(1000, 9);
    test.tab->openPanelDidEnd(0, {}, 1);
    test.tab->tickEnableOnScreen(true);
    QCOMPARE(test.rows(), before);
    QVERIFY(test.tab->mProfilesArray() == profiles());
    // The next redraw selects the active profile again, and nothing is sent late.
    test.tab->setMProfileDelegate(&test.delegate);
    test.tab->updateUISettings();
    QCOMPARE(test.selectedRow(), 1);
    QVERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {});
  }
};

SKARN_QTEST(MouseProfilesControllerTest)
#include "MouseProfilesController_test.moc"
