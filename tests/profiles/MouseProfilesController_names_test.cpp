// New profiles and their names: adding, copying, renaming, and the edit of a name in its cell.
#include <QFileDialog>
#include <QFileInfo>

#include "profiles/ProfilesTabTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class MouseProfilesControllerNamesTest : public QObject {
  Q_OBJECT

 private:
  // The edit of a new profile in this row ended with the name "Mine", and then this item acted on it.
  static void verifyMeant(ProfilesTab& test, int tag, int row) {
    const PropertyList mine = test.delegate.factory.with(keys::ProfileName, "Mine");
    ProfileCalls calls{renamed(row, mine)};
    QString alert;
    switch (tag) {
      case 1:
        QCOMPARE(test.editedRow(), row);
        QCOMPARE(test.editor()->text(), QStringLiteral("Mine"));
        break;
      case 4: {
        auto* panel = test.find<QFileDialog>("mProfileSavePanel");
        QVERIFY(panel);
        QCOMPARE(QFileInfo(panel->selectedFiles().value(0)).fileName(), QStringLiteral("Mine"));
        break;
      }
      case 6:
        calls.push_back(added(mine.with(keys::ProfileName, "Mine(2)")));
        break;
      case 7:
        QVERIFY(test.find<QDialog>("applicationPanel"));
        test.find<QDialog>("applicationPanel")->reject();
        calls.push_back(renamed(row, PropertyList::dictionary({{keys::AutoSwitchOn, 0}})));
        break;
      case 8: {
        const PropertyList none = PropertyList::dictionary(
            {{keys::Application, ""}, {keys::Executable, ""}, {keys::Identifier, ""}, {keys::Signature, ""}});
        calls.push_back(renamed(row, PropertyList::dictionary({{keys::AutoSwitchOn, false}, {keys::AppInfo, none}})));
        break;
      }
      default:
        QVERIFY(test.alert());
        QVERIFY2(test.alert()->text().contains(QStringLiteral("“Mine”")), qPrintable(test.alert()->text()));
        test.alert()->reject();
    }
    VERIFY_CALLS(test.delegate.calls, {calls});
  }

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

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
    QTest::keyClick(test.editor(), Qt::Key_Escape);
    test.tab->selectMenuItem(2);
    test.tab->selectMenuItem(6);
    QCOMPARE(test.delegate.calls.size(), std::size_t{1});
  }

  void whatTheEngineDoesNotAddIsToldAndLeavesNoRow_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("tellsTheList");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("mentions");
    for (const bool isCopy : {false, true}) {
      const int tag = isCopy ? 6 : 2;
      const QString name = isCopy ? QStringLiteral("Work(2)") : QStringLiteral("Untitled Profile");
      const char* what = isCopy ? "copy" : "new one";
      QTest::addRow("%s: full", what) << tag << 3 << true << name << "five profiles";
      QTest::addRow("%s: not saved", what) << tag << 4 << true << name << "disk";
      QTest::addRow("%s: too large", what) << tag << 5 << true << name << "too large";
      QTest::addRow("%s: unusable", what) << tag << 2 << true << name << "refused";
      QTest::addRow("%s: without settings", what) << tag << 1 << false << name << "refused";
      QTest::addRow("%s: no answer", what) << tag << -1 << false << name << "did not answer";
    }
  }
  void whatTheEngineDoesNotAddIsToldAndLeavesNoRow() {
    QFETCH(int, tag);
    QFETCH(int, status);
    QFETCH(bool, tellsTheList);
    QFETCH(QString, name);
    QFETCH(QString, mentions);
    ProfilesTab test;
    test.show();
    const QStringList before = test.names();
    if (status < 0) {
      test.delegate.doesAnswer = false;
    } else {
      test.delegate.statusOfAdd = static_cast<vorn::ReturnStatus>(status);
    }
    test.delegate.doesRefusalTellTheList = tellsTheList;
    test.choose(tag);
    QVERIFY(test.alert());
    QCOMPARE(test.alert()->text(), QStringLiteral("“%1” could not be added").arg(name));
    QVERIFY2(test.alert()->informativeText().contains(mentions), qPrintable(test.alert()->informativeText()));
    test.press(QStringLiteral("OK"));
    QCOMPARE(test.names(), before);
    QCOMPARE(test.selectedRow(), 1);
    QVERIFY(!test.editor());
    QVERIFY(test.tab->mProfilesArray() == test.delegate.list);
    test.delegate.reload();
    QVERIFY(!test.editor());
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

  void givingUpTheNameOfANewProfileKeepsItAndSelectsTheActiveOne_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key");
    QTest::newRow("Escape") << QStringLiteral("Tra") << static_cast<int>(Qt::Key_Escape);
    QTest::newRow("an empty name") << QString() << static_cast<int>(Qt::Key_Return);
    QTest::newRow("an empty name and Tab") << QString() << static_cast<int>(Qt::Key_Tab);
  }
  void givingUpTheNameOfANewProfileKeepsItAndSelectsTheActiveOne() {
    QFETCH(QString, typed);
    QFETCH(int, key);
    ProfilesTab test;
    test.show();
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    test.editor()->setText(typed);
    QTest::keyClick(test.editor(), static_cast<Qt::Key>(key));
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

  void deleteMeansTheProfileWhoseNameWasBeingTyped() {
    ProfilesTab test;
    test.show();
    const int added = test.table().model()->rowCount();
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QTRY_VERIFY(test.editor());
    QTest::keyClicks(test.editor(), QStringLiteral("Mistake"));
    test.delegate.calls.clear();
    QTest::mouseClick(&test.remove(), Qt::LeftButton);
    QVERIFY(test.alert());
    QCOMPARE(test.alert()->text(), QStringLiteral("Delete Profile “Mistake”?"));
    test.press(QStringLiteral("Delete"));
    QCOMPARE(test.delegate.calls.size(), std::size_t{2});
    QCOMPARE(test.delegate.calls.back(), deleted(added));
    // The next deletion is that of the selected row again.
    QTest::mouseClick(&test.remove(), Qt::LeftButton);
    QCOMPARE(test.alert()->text(), QStringLiteral("Delete Profile “%1”?").arg(test.names().at(test.selectedRow())));
  }

  void anActionEndsAnEditFirstAndMeansTheProfileThatWasEdited_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<bool>("byGear");
    for (const bool byGear : {true, false}) {
      for (const int tag : {1, 4, 5, 6, 7, 8, 9}) {
        QTest::addRow("item %d of the %s", tag, byGear ? "gear" : "right click") << tag << byGear;
      }
    }
  }
  void anActionEndsAnEditFirstAndMeansTheProfileThatWasEdited() {
    QFETCH(int, tag);
    QFETCH(bool, byGear);
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B", "C"}), 1);
    const int added = test.table().model()->rowCount();
    test.delegate.factory = test.delegate.factory.with(
        keys::AppInfo, PropertyList::dictionary({{keys::Application, "Editor"}, {keys::Identifier, "editor"}}));
    test.delegate.reload();
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QTRY_VERIFY(test.editor());
    QTest::keyClicks(test.editor(), QStringLiteral("Mine"));
    test.delegate.calls.clear();
    if (byGear) {
      test.choose(tag);
    } else {
      test.rightClickBelowTheRows();
      QVERIFY(test.openMenu());
      test.chooseIn(*test.openMenu(), tag);
    }
    verifyMeant(test, tag, added);
  }

  void aRightClickOnARowEndsAnEditFirstAndMeansThatRow_data() {
    QTest::addColumn<int>("clicked");
    QTest::newRow("another row") << 0;
    QTest::newRow("the row that is edited") << 2;
  }
  void aRightClickOnARowEndsAnEditFirstAndMeansThatRow() {
    QFETCH(int, clicked);
    ProfilesTab test;
    test.showProfiles(namedProfiles({"A", "B"}), 1);
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QTRY_VERIFY(test.editor());
    QTest::keyClicks(test.editor(), QStringLiteral("Mine"));
    test.delegate.calls.clear();
    // Beside the field in which the name is typed.
    QVERIFY(test.rightClick(clicked, 0));
    QVERIFY(!test.editor());
    test.chooseIn(*test.openMenu(), 5);
    QCOMPARE(test.alert()->text(), QStringLiteral("Delete Profile “%1”?").arg(test.names().at(clicked)));
    VERIFY_CALLS(test.delegate.calls,
                 {renamed(2, test.delegate.factory.with(keys::ProfileName, "Mine")), switchedTo(clicked)});
    test.press(QStringLiteral("Cancel"));
  }

  // An edit that is left by opening a menu which is closed again is over.
  void aMenuThatIsClosedAgainMeansNothing() {
    ProfilesTab test;
    test.show();
    QTest::mouseClick(&test.add(), Qt::LeftButton);
    QTRY_VERIFY(test.editor());
    QTest::mouseClick(&test.gear(), Qt::LeftButton);
    QVERIFY(!test.editor());
    QTest::keyClick(test.gear().menu(), Qt::Key_Escape);
    QTRY_VERIFY(!test.gear().menu()->isVisible());
    QCoreApplication::processEvents();
    QTest::mouseClick(&test.remove(), Qt::LeftButton);
    QVERIFY(test.alert()->text().contains(QStringLiteral("“Work”")));
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

  void onlyTheSelectedRowsNameIsEdited() {
    ProfilesTab test;
    test.show();
    // A switch that is refused: the active row is selected again before the second click of the two.
    test.delegate.doesAnswer = false;
    test.delegate.duringCall = [&] { test.delegate.reload(); };
    test.click(3, 1);
    QCOMPARE(test.selectedRow(), 1);
    QMouseEvent second(QEvent::MouseButtonDblClick, test.cell(3, 1),
                       test.table().viewport()->mapToGlobal(test.cell(3, 1)), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(test.table().viewport(), &second);
    QVERIFY(!test.editor());
    VERIFY_CALLS(test.delegate.calls, {switchedTo(3)});
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
    test.tab->tableViewSetObjectValueForTableColumn(QString(), QStringLiteral("name"), 1);
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
};

SKARN_QTEST(MouseProfilesControllerNamesTest)
#include "MouseProfilesController_names_test.moc"
