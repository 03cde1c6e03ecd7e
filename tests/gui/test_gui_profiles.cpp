// The profiles table: what it shows, selecting, adding, copying, renaming, deleting and restoring.
#include "ProfilesTabTest.h"
#include "widgets/Palettes.h"

using namespace skarn;
using namespace skarn::test;

class ProfilesTest : public QObject {
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

  void aRowIsNeitherTakenOutNorAddedWithModifiersOrByDragging() {
    ProfilesTab test;
    test.show();
    test.click(1, 1, Qt::ControlModifier);
    QCOMPARE(test.selectedRow(), 1);
    VERIFY_CALLS(test.delegate.calls, {});
    test.click(2, 1, Qt::ShiftModifier);
    QCOMPARE(test.selectedRow(), 2);
    QTest::mousePress(test.table().viewport(), Qt::LeftButton, {}, test.cell(3, 1));
    QTest::mouseMove(test.table().viewport(), test.cell(2, 1));
    QTest::mouseMove(test.table().viewport(), test.cell(0, 1));
    QTest::mouseRelease(test.table().viewport(), Qt::LeftButton, {}, test.cell(0, 1));
    QCOMPARE(test.selectedRow(), 3);
    VERIFY_CALLS(test.delegate.calls, {switchedTo(2), switchedTo(3)});
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

  // --- Adding

  void uniqueNamesCountTheirMatches_data() {
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("name");
    QTest::newRow("empty list") << QStringList() << "Work"
                                << "Work";
    QTest::newRow("no match") << QStringList{"A"} << "Work"
                              << "Work";
    QTest::newRow("one match") << QStringList{"Work"} << "Work"
                               << "Work(2)";
    QTest::newRow("a match of what is made") << QStringList{"Work", "Work(2)"} << "Work"
                                             << "Work(3)";
    QTest::newRow("two alike") << QStringList{"Work", "Work"} << "Work"
                               << "Work(3)";
    QTest::newRow("a gap is not filled") << QStringList{"Work", "Work(3)"} << "Work"
                                         << "Work(2)";
    QTest::newRow("case counts") << QStringList{"work"} << "Work"
                                 << "Work";
    QTest::newRow("a suffix is part of the name") << QStringList{"Work(2)"} << "Work(2)"
                                                  << "Work(2)(2)";
  }
  void uniqueNamesCountTheirMatches() {
    QFETCH(QStringList, names);
    QFETCH(QString, wanted);
    QFETCH(QString, name);
    std::vector<std::string> list;
    for (const QString& each : names) list.push_back(each.toStdString());
    QCOMPARE(QString::fromStdString(
                 MouseProfilesController::checkForDuplicateName(namedProfiles(list), wanted.toStdString())),
             name);
  }

  void addSendsTheDefaultProfileUnderAFreeNameAndEditsIt() {
    ProfilesTab test;
    test.show();
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    const PropertyList untitled = test.delegate.factory.with(keys::ProfileName, "Untitled Profile");
    VERIFY_CALLS(test.delegate.calls, {added(untitled)});
    QCOMPARE(test.names().size(), 5);
    QCOMPARE(test.selectedRow(), 4);
    QVERIFY(test.editor());
    QCOMPARE(test.editedRow(), 4);
    QVERIFY(test.editor()->hasFocus());
    QCOMPARE(test.editor()->selectedText(), QStringLiteral("Untitled Profile"));
    test.typeName(QStringLiteral("Travel"));
    VERIFY_CALLS(test.delegate.calls, {added(untitled), renamed(4, untitled.with(keys::ProfileName, "Travel"))});
    QCOMPARE(test.names().constLast(), QStringLiteral("Travel"));
    // The new profile is not switched to: the active one is selected again.
    QCOMPARE(test.selectedRow(), 1);
  }

  void aSecondUntitledProfileGetsANumber() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "Untitled Profile"}), 0);
    test.tab->selectMenuItem(2);
    VERIFY_CALLS(test.delegate.calls, {added(test.delegate.factory.with(keys::ProfileName, "Untitled Profile(2)"))});
  }

  void whileAnAddRunsAddStaysUsableAndTheRestDoesNot() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 0);
    int asked = 0;
    test.delegate.duringCall = [&] {
      ++asked;
      QVERIFY(test.add().isEnabled());
      QVERIFY(!test.gear().isEnabled());
      QVERIFY(!test.onScreen().isEnabled());
      QCOMPARE(test.selectedRow(), 2);
    };
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QCOMPARE(asked, 1);
    QVERIFY(test.gear().isEnabled() && test.onScreen().isEnabled() && test.remove().isEnabled());
  }

  void fourProfilesAreFilledUpToFiveAndNoMore() {
    ProfilesTab test;
    test.show();
    bool wasEnabled = true;
    test.delegate.duringCall = [&] { wasEnabled = test.add().isEnabled(); };
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QVERIFY(!wasEnabled);
    QVERIFY(!test.add().isEnabled());
    QCOMPARE(test.add().toolTip(), QStringLiteral("The mouse holds five profiles. Delete one first."));
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    test.tab->selectMenuItem(2);
    test.tab->selectMenuItem(6);
    QCOMPARE(test.delegate.calls.size(), std::size_t{1});
  }

  void anAddWithoutAnAnswerKeepsTheRowUntilTheNextReload() {
    ProfilesTab test;
    test.show();
    test.delegate.doesAnswer = false;
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QCOMPARE(test.names().size(), 5);
    test.delegate.reload();
    QCOMPARE(test.names().size(), 4);
    QVERIFY(!test.editor());
    QCOMPARE(test.selectedRow(), 1);
    QCOMPARE(test.delegate.calls.size(), std::size_t{1});
  }

  void theEditSurvivesReloadsWithWhatWasTyped() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 1);
    test.tab->selectMenuItem(1);
    QTest::keyClicks(test.editor(), QStringLiteral("Tra"));
    test.delegate.list = test.delegate.list.replacing(0, profile("Z"));
    test.delegate.reload();
    QVERIFY(test.editor());
    QCOMPARE(test.editor()->text(), QStringLiteral("Tra"));
    QTest::keyClicks(test.editor(), QStringLiteral("vel"));
    QTest::keyClick(test.editor(), Qt::Key_Return);
    QTRY_VERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {renamed(1, profile("Travel"))});
  }

  void anEditEndsWithoutARenameWhenItsRowBecomesAnotherProfiles_data() {
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("active");
    QTest::newRow("another profile is active now") << QStringList{"A", "B", "C"} << 0;
    QTest::newRow("a profile before it is gone") << QStringList{"B", "C"} << 1;
    QTest::newRow("its row is gone") << QStringList{"A"} << 0;
    QTest::newRow("it was renamed elsewhere") << QStringList{"A", "Bee", "C"} << 1;
  }
  void anEditEndsWithoutARenameWhenItsRowBecomesAnotherProfiles() {
    QFETCH(QStringList, names);
    QFETCH(int, active);
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    test.tab->selectMenuItem(1);
    QTest::keyClicks(test.editor(), QStringLiteral("X"));
    std::vector<std::string> list;
    for (const QString& each : names) list.push_back(each.toStdString());
    test.delegate.list = namedProfiles(list);
    test.delegate.active = active;
    test.delegate.reload();
    QVERIFY(!test.editor());
    QCOMPARE(test.selectedRow(), active);
    QCoreApplication::processEvents();
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void givingUpTheNameOfANewProfileKeepsItAndSelectsTheActiveOne() {
    ProfilesTab test;
    test.show();
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QTest::keyClicks(test.editor(), QStringLiteral("Tra"));
    QTest::keyClick(test.editor(), Qt::Key_Escape);
    QVERIFY(!test.editor());
    QCOMPARE(test.names().constLast(), QStringLiteral("Untitled Profile"));
    QCOMPARE(test.selectedRow(), 1);
    QCOMPARE(test.delegate.calls.size(), std::size_t{1});
    // No later reload edits a row that is not selected.
    test.delegate.reload();
    QVERIFY(!test.editor());
  }

  void theWishToEditEndsWithASwitchARenameOrADelete_data() {
    QTest::addColumn<int>("ending");
    QTest::newRow("switch") << 0;
    QTest::newRow("rename") << 1;
    QTest::newRow("delete") << 2;
  }
  void theWishToEditEndsWithASwitchARenameOrADelete() {
    QFETCH(int, ending);
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 0);
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QTest::keyClick(test.editor(), Qt::Key_Escape);
    if (ending == 0) test.click(2, 2);
    if (ending == 1) {
      test.tab->selectMenuItem(1);
      test.typeName(QStringLiteral("X"));
    }
    if (ending == 2) test.tab->deleteProfile();
    QCOMPARE(test.delegate.calls.size(), std::size_t{2});
    // The last row is selected and would be edited.
    test.delegate.active = static_cast<int>(test.delegate.list.size()) - 1;
    test.delegate.reload();
    QVERIFY(!test.editor());
  }

  void aReloadAfterAGivenUpAddEditsTheLastRowOnceItIsActive() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 0);
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QTest::keyClick(test.editor(), Qt::Key_Escape);
    test.delegate.active = 2;
    test.delegate.reload();
    QCOMPARE(test.editedRow(), 2);
    QCOMPARE(test.delegate.calls.size(), std::size_t{1});
  }

  void clickingElsewhereTakesTheTypedNameOver() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    test.tab->selectMenuItem(1);
    QTest::keyClicks(test.editor(), QStringLiteral("X"));
    test.click(2, 2);
    QTRY_VERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {renamed(1, profile("X")), switchedTo(2)});
    QCOMPARE(test.names(), (QStringList{"A", "X", "C"}));
  }

  void addTakesTheTypedNameOverFirst() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 1);
    test.tab->selectMenuItem(1);
    QTest::keyClicks(test.editor(), QStringLiteral("X"));
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    VERIFY_CALLS(test.delegate.calls,
                 {renamed(1, profile("X")), added(test.delegate.factory.with(keys::ProfileName, "Untitled Profile"))});
    QCOMPARE(test.editedRow(), 2);
  }

  void tabTakesTheTypedNameOverAndMovesNoSelection() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 0);
    test.tab->selectMenuItem(1);
    QTest::keyClicks(test.editor(), QStringLiteral("X"));
    QTest::keyClick(test.editor(), Qt::Key_Tab);
    QTRY_VERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {renamed(0, profile("X"))});
    QCOMPARE(test.selectedRow(), 0);
  }

  // --- Copying

  void copySendsTheSelectedProfileUnderAFreeNameAndEditsIt() {
    ProfilesTab test;
    test.show();
    test.choose(6);
    const PropertyList copy = profiles().at(1).with(keys::ProfileName, "Work(2)");
    VERIFY_CALLS(test.delegate.calls, {added(copy)});
    QCOMPARE(test.selectedRow(), 4);
    QCOMPARE(test.editedRow(), 4);
    QCOMPARE(test.editor()->selectedText(), QStringLiteral("Work(2)"));
    test.typeName(QStringLiteral("Work"));
    VERIFY_CALLS(test.delegate.calls, {added(copy), renamed(4, copy)});
    QCOMPARE(test.selectedRow(), 1);
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

  // --- Renaming

  void theNameIsEditedInItsCell_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("double click") << 0;
    QTest::newRow("F2") << static_cast<int>(Qt::Key_F2);
    QTest::newRow("Return") << static_cast<int>(Qt::Key_Return);
    QTest::newRow("Enter") << static_cast<int>(Qt::Key_Enter);
  }
  void theNameIsEditedInItsCell() {
    QFETCH(int, way);
    ProfilesTab test;
    test.show();
    test.table().setFocus();
    if (way == 0) {
      test.click(1, 1);
      QTest::mouseDClick(test.table().viewport(), Qt::LeftButton, {}, test.cell(1, 1));
    } else {
      test.key(static_cast<Qt::Key>(way));
    }
    QCOMPARE(test.editedRow(), 1);
    QCOMPARE(test.editor()->selectedText(), QStringLiteral("Work"));
    QCOMPARE(test.editor()->accessibleName(), QStringLiteral("Name"));
    test.typeName(QStringLiteral("Office"));
    VERIFY_CALLS(test.delegate.calls, {renamed(1, profiles().at(1).with(keys::ProfileName, "Office"))});
    QVERIFY(test.table().hasFocus());
  }

  void otherColumnsAreNotEdited() {
    ProfilesTab test;
    test.show();
    for (const int column : {0, 2}) {
      QTest::mouseDClick(test.table().viewport(), Qt::LeftButton, {}, test.cell(1, column));
      QVERIFY(!test.editor());
    }
    test.tab->tableViewSetObjectValueForTableColumn(QStringLiteral("9"), QStringLiteral("id"), 1);
    test.tab->tableViewSetObjectValueForTableColumn(QStringLiteral("x"), QStringLiteral("application"), 1);
    VERIFY_CALLS(test.delegate.calls, {});
  }

  void aRenameIsMadeUniqueAmongTheOthers_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    QTest::newRow("a new name") << "Draw"
                                << "Draw";
    QTest::newRow("its own name") << "Work"
                                  << "Work";
    QTest::newRow("the name of another") << "Racing"
                                         << "Racing(2)";
    QTest::newRow("a blank") << " "
                             << " ";
    QTest::newRow("not Latin") << QString::fromUtf8("レイド & 戦") << QString::fromUtf8("レイド & 戦");
  }
  void aRenameIsMadeUniqueAmongTheOthers() {
    QFETCH(QString, typed);
    QFETCH(QString, name);
    ProfilesTab test;
    test.show();
    test.tab->selectMenuItem(1);
    test.editor()->setText(typed);
    QTest::keyClick(test.editor(), Qt::Key_Return);
    QTRY_VERIFY(!test.editor());
    const PropertyList record = profiles().at(1).with(keys::ProfileName, name.toStdString());
    VERIFY_CALLS(test.delegate.calls, {renamed(1, record)});
    QVERIFY(test.tab->mUserSettingsDict() == record);
    QCOMPARE(test.names().at(1), name);
  }

  void anEmptyNameOrEscapeChangesNothing() {
    ProfilesTab test;
    test.show();
    test.tab->selectMenuItem(1);
    test.editor()->clear();
    QTest::keyClick(test.editor(), Qt::Key_Return);
    QTRY_VERIFY(!test.editor());
    test.tab->selectMenuItem(1);
    QTest::keyClicks(test.editor(), QStringLiteral("X"));
    QTest::keyClick(test.editor(), Qt::Key_Escape);
    QVERIFY(!test.editor());
    QCoreApplication::processEvents();
    VERIFY_CALLS(test.delegate.calls, {});
    QVERIFY(test.tab->mProfilesArray() == profiles());
    QVERIFY(test.tab->mUserSettingsDict() == PropertyList::dictionary());
  }

  void aRenameMovesTheRecordInTheWorkingListUntilTheReload() {
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    test.delegate.doesAnswer = false;
    test.tab->tableViewSetObjectValueForTableColumn(QStringLiteral("X"), QStringLiteral("name"), 1);
    VERIFY_CALLS(test.delegate.calls, {renamed(1, profile("X"))});
    QVERIFY(test.tab->mProfilesArray() == namedProfiles({"A", "X", "X"}));
    test.delegate.reload();
    QVERIFY(test.tab->mProfilesArray() == namedProfiles({"A", "B", "C"}));
  }

  void losingTheMouseGivesUpTheEdit() {
    ProfilesTab test;
    test.show();
    test.tab->selectMenuItem(1);
    QTest::keyClicks(test.editor(), QStringLiteral("X"));
    test.tab->enableControlsState(false);
    QVERIFY(!test.editor());
    QCoreApplication::processEvents();
    VERIFY_CALLS(test.delegate.calls, {});
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
    QCOMPARE(test.alert()->text(), QStringLiteral("Delete this profile?"));
    QVERIFY(test.alert()->informativeText().startsWith(QLatin1String("The profile is removed from the mouse")));
    VERIFY_CALLS(test.delegate.calls, {});
    test.press(QStringLiteral("OK"));
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
    QTest::keyClick(test.alert(), Qt::Key_Return);
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
    test.press(QStringLiteral("OK"));
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

  void withoutADelegateNothingHappens() {
    ProfilesTab test;
    test.show();
    test.tab->setMProfileDelegate(nullptr);
    test.click(2, 1);
    for (const int tag : {2, 6, 8}) test.tab->selectMenuItem(tag);
    test.tab->tableViewSetObjectValueForTableColumn(QStringLiteral("X"), QStringLiteral("name"), 1);
    test.tab->tableViewSetObjectValueForTableColumn(1, QStringLiteral("auto switch"), 1);
    test.tab->sheetDidEnd(1000, 5);
    test.tab->sheetDidEnd(1000, 9);
    test.tab->openPanelDidEnd(0, {}, 1);
    test.tab->tickEnableOnScreen(true);
    QCOMPARE(test.names().size(), 4);
    QVERIFY(test.tab->mProfilesArray() == profiles());
    VERIFY_CALLS(test.delegate.calls, {});
  }
};

QTEST_MAIN(ProfilesTest)
#include "test_gui_profiles.moc"
