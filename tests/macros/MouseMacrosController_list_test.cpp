// The Macros tab adds, renames, deletes and selects macros, and says which of its controls can be used and why not.
#include <QLabel>
#include <QMessageBox>
#include <utility>

#include "macros/MacrosFixture.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const QStringList detailsButtons{"mAddMacroDetails", "mDeleteMacroDetails", "mSettingsMacroDetails",
                                 "mRecordMacroDetails"};

PropertyList macroOfEvents(const char* name, int count) {
  std::vector<PropertyList> events;
  for (int event = 0; event < count; ++event) events.push_back(macroEvent(1, 4 + event));
  return macro(name, std::move(events));
}

}  // namespace

class MouseMacrosControllerListTest : public QObject {
  Q_OBJECT

 private slots:
  void aNewMacroIsAddedSelectedAndNamedAtOnce() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    QStringList seen;
    fixture.delegate.onCall = [&](const QString& call) {
      if (call.startsWith("add")) seen << (fixture.editor() ? "naming" : "not naming");
    };
    fixture.click("mAddMacro");
    QCOMPARE(fixture.delegate.take(), (QStringList{added("Untitled Macro"), "getMacroDetailsForMacroAtIndex(3)"}));
    QCOMPARE(seen, QStringList{"naming"});
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 3);
    QVERIFY(fixture.tab->mMacrosSettingsArray() ==
            macrosNamed({"Fireball", "Greeting", "Build order"}).appending(newMacro("Untitled Macro")));
    QVERIFY(fixture.editor() != nullptr);
    QCOMPARE(fixture.editor()->selectedText(), QStringLiteral("Untitled Macro"));
    QCOMPARE(fixture.tab->mEditedRow(), 3);
  }

  void theNameFieldOutlivesTheReloadThatAnAddCauses() {
    MacrosFixture fixture(QStringList{});
    fixture.delegate.onCall = [&](const QString& call) {
      if (!call.startsWith("add")) return;
      fixture.tab->setMMacrosSettingsArray(PropertyList::array({newMacro("Untitled Macro").with("macroID", 0)}));
      fixture.tab->refreshTableDisplay();
    };
    fixture.click("mAddMacro");
    fixture.delegate.take();
    QLineEdit* editor = fixture.editor();
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, "Jump");
    // A further reload does not wipe out what is being typed.
    fixture.tab->refreshTableDisplay();
    QCOMPARE(editor->text(), QStringLiteral("Jump"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QCOMPARE(fixture.delegate.take(), QStringList{"renameMacroAtIndex(0, Jump)"});
  }

  void newNamesCountUp_data() {
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("empty list") << QStringList() << QByteArray("Untitled Macro");
    QTest::newRow("second") << QStringList{"Untitled Macro"} << QByteArray("Untitled Macro(2)");
    QTest::newRow("third") << QStringList{"Untitled Macro", "Untitled Macro(2)"} << QByteArray("Untitled Macro(3)");
    QTest::newRow("twice the same") << QStringList{"Untitled Macro", "Untitled Macro"}
                                    << QByteArray("Untitled Macro(3)");
  }
  void newNamesCountUp() {
    QFETCH(QStringList, names);
    QFETCH(QByteArray, name);
    MacrosFixture fixture(names);
    fixture.click("mAddMacro");
    QCOMPARE(fixture.delegate.take().constFirst(), added(name.constData()));
  }

  void aNameIsEditedInPlaceAndSentUnique_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("sent");
    QTest::newRow("another name") << "Jump" << QStringList{"renameMacroAtIndex(1, Jump)"};
    QTest::newRow("its own name") << "Greeting" << QStringList{"renameMacroAtIndex(1, Greeting)"};
    QTest::newRow("another macro's name") << "Fireball" << QStringList{"renameMacroAtIndex(1, Fireball(2))"};
    QTest::newRow("no name") << "" << QStringList();
    QTest::newRow("an ampersand") << "Cut & Run" << QStringList{"renameMacroAtIndex(1, Cut & Run)"};
  }
  void aNameIsEditedInPlaceAndSentUnique() {
    QFETCH(QString, typed);
    QFETCH(QStringList, sent);
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QLineEdit* editor = fixture.editor();
    QVERIFY(editor != nullptr);
    QCOMPARE(editor->selectedText(), QStringLiteral("Greeting"));
    QVERIFY(fixture.tab->mIsRenamingMacroName());
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, typed);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QCOMPARE(fixture.delegate.take(), sent);
    QVERIFY(!fixture.tab->mIsRenamingMacroName());
    const QString shown = sent.isEmpty() ? QStringLiteral("Greeting") : sent[0].section(", ", 1).chopped(1);
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()), (QStringList{"Fireball", shown, "Build order"}));
  }

  void aRenamedRecordKeepsItsOtherMembers() {
    MacrosFixture fixture;
    const PropertyList record = macro("Greeting", {macroEvent(1, 4)}).with("macroID", 0).with("colour", "red");
    fixture.tab->setMMacrosSettingsArray(PropertyList::array({record}));
    fixture.tab->refreshTableDisplay();
    fixture.selectMacro(0);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QTest::keyClicks(fixture.editor(), "Jump");
    QTest::keyClick(fixture.editor(), Qt::Key_Return);
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QVERIFY(fixture.tab->mMacrosSettingsArray() == PropertyList::array({record.with("MacroName", "Jump")}));
  }

  void escapeLeavesTheNameAndSendsNothing() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QTest::keyClicks(fixture.editor(), "Jump");
    QTest::keyClick(fixture.editor(), Qt::Key_Escape);
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QVERIFY(!fixture.tab->mIsRenamingMacroName());
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()).at(1), QStringLiteral("Greeting"));
  }

  void whileANameIsEditedTheDetailsButtonsAreDisabledAndSayWhy() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QCOMPARE(fixture.tab->mEditedRow(), 0);
    QCOMPARE(fixture.enabled(), MacrosFixture::without(MacrosFixture::allControls(), detailsButtons));
    for (const QString& button : detailsButtons) {
      QCOMPARE(fixture.find(button.toLatin1())->toolTip(), QStringLiteral("Finish typing the name of the macro first"));
    }
    // A reload meanwhile does not enable them.
    fixture.tab->refreshTableDisplay();
    QCOMPARE(fixture.enabled(), MacrosFixture::without(MacrosFixture::allControls(), detailsButtons));
    QTest::keyClick(fixture.editor(), Qt::Key_Escape);
    QTRY_COMPARE(fixture.enabled(), MacrosFixture::allControls());
  }

  void aClickBesideTheNameFieldEndsItAndKeepsTheName() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QTest::keyClicks(fixture.editor(), "Jump");
    fixture.click("mMacroTableLabel");
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QCOMPARE(fixture.delegate.take(), QStringList{"renameMacroAtIndex(1, Jump)"});
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
  }

  void recordWhileANameIsTypedKeepsTheNameAndRecords() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QTest::keyClicks(fixture.editor(), "Jump");
    // The press takes the focus from the name, and so enables the button before it arrives there.
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take(), (QStringList{"renameMacroAtIndex(1, Jump)", "startMacroRecording(NO, 1)"}));
    QCOMPARE(fixture.tab->mEditedRow(), -1);
  }

  void aTabThatGoesWhileANameIsTypedIsSurvived() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QTest::keyClicks(fixture.editor(), "Jump");
    delete std::exchange(fixture.tab, new MouseMacrosController(&fixture.window));
    QVERIFY(fixture.center.observed().empty());
  }

  void aNameForAMacroThatIsGoneIsNotSent() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QTest::keyClicks(fixture.editor(), "Jump");
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"Fireball"}));
    QTest::keyClick(fixture.editor(), Qt::Key_Return);
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void aReloadThatTakesTheRowAwayEndsItsNaming() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QTest::keyClicks(fixture.editor(), "Jump");
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"Fireball"}));
    fixture.tab->refreshTableDisplay();
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QVERIFY(!fixture.tab->mIsRenamingMacroName());
    QCOMPARE(fixture.delegate.take(), QStringList());
    // The table can be used again.
    fixture.selectMacro(0);
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    fixture.chooseFromGear("mSettingsMacro", 1);
    QVERIFY(fixture.editor() != nullptr);
  }

  void aDoubleClickAndTheEditKeyEditAName() {
    MacrosFixture fixture;
    const QPoint place = fixture.placeOf(fixture.macros(), 1);
    QTest::mouseClick(fixture.macros()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(fixture.macros()->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(fixture.tab->mEditedRow(), 1);
    QTest::keyClick(fixture.editor(), Qt::Key_Escape);
    QTRY_COMPARE(fixture.tab->mEditedRow(), -1);
    QTest::keyClick(fixture.macros(), Qt::Key_F2);
    QCOMPARE(fixture.tab->mEditedRow(), 1);
  }

  void deletingAsksFirst() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mDeleteMacro");
    QMessageBox* alert = fixture.alert();
    QVERIFY(alert != nullptr);
    QCOMPARE(alert->text(), QStringLiteral("Delete Macro “Fireball”?"));
    QCOMPARE(alert->informativeText(), localized("lkeyDeleteMacroAlertDesc"));
    QCOMPARE(alert->windowModality(), Qt::WindowModal);
    QStringList buttons;
    for (const auto* button : alert->buttons()) buttons << button->text();
    QCOMPARE(buttons, (QStringList{"Delete", "Cancel"}));
    QTest::keyClick(alert, Qt::Key_Escape);
    QTRY_VERIFY(fixture.alert() == nullptr);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void deletingSelectsTheRowThatMovedUpOrTheLastOne_data() {
    QTest::addColumn<int>("deleted");
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<int>("selected");
    QTest::newRow("first") << 0 << QStringList{"Greeting", "Build order"} << 0;
    QTest::newRow("middle") << 1 << QStringList{"Fireball", "Build order"} << 1;
    QTest::newRow("last") << 2 << QStringList{"Fireball", "Greeting"} << 1;
  }
  void deletingSelectsTheRowThatMovedUpOrTheLastOne() {
    QFETCH(int, deleted);
    QFETCH(QStringList, left);
    QFETCH(int, selected);
    MacrosFixture fixture;
    fixture.selectMacro(deleted);
    fixture.delegate.onCall = [&](const QString& call) {
      if (!call.startsWith("delete")) return;
      fixture.tab->setMMacrosSettingsArray(macrosNamed(left));
      fixture.tab->refreshTableDisplay();
    };
    fixture.click("mDeleteMacro");
    confirm(fixture.alert());
    QCOMPARE(fixture.delegate.take(),
             (QStringList{QStringLiteral("deleteMacroAtIndex(%1)").arg(deleted),
                          QStringLiteral("getMacroDetailsForMacroAtIndex(%1)").arg(selected)}));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), selected);
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()), left);
    QVERIFY(fixture.tab->mMacroDetailsArray() == fixture.delegate.lines[selected].arrayOrEmpty());
    QTRY_VERIFY(fixture.macros()->hasFocus());
  }

  void deletingTheOnlyMacroDisablesTheDetailsSide() {
    MacrosFixture fixture(QStringList{"Fireball"});
    fixture.selectMacro(0);
    fixture.delegate.onCall = [&](const QString& call) {
      if (!call.startsWith("delete")) return;
      fixture.tab->setMMacrosSettingsArray(PropertyList::array());
      fixture.tab->refreshTableDisplay();
    };
    fixture.chooseFromGear("mSettingsMacro", 5);
    confirm(fixture.alert());
    QCOMPARE(fixture.delegate.take(), QStringList{"deleteMacroAtIndex(0)"});
    QCOMPARE(fixture.enabled(),
             (QStringList{"mMacroTableView", "mAddMacro", "mSettingsMacro", "mMacroDetailsTableView"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array());
    QVERIFY(fixture.find("mNoMacrosView")->isVisible());
  }

  void aRefusedDeletionKeepsTheMacroAndItsLines() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mDeleteMacro");
    confirm(fixture.alert());
    QCOMPARE(fixture.delegate.take(), (QStringList{"deleteMacroAtIndex(0)", "getMacroDetailsForMacroAtIndex(0)"}));
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()).size(), 3);
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(3));
  }

  void withoutASelectedMacroOnlyTheListCanBeUsed() {
    MacrosFixture fixture;
    QCOMPARE(fixture.enabled(),
             (QStringList{"mMacroTableView", "mAddMacro", "mSettingsMacro", "mMacroDetailsTableView"}));
    for (const QString& button : detailsButtons + QStringList{"mDeleteMacro"}) {
      QCOMPARE(fixture.find(button.toLatin1())->toolTip(), QStringLiteral("Select a macro first"));
      fixture.click(button.toLatin1());
    }
    QCOMPARE(fixture.delegate.take(), QStringList());
    QVERIFY(!fixture.find("mMacroDetailsScrollView")->isVisible());
  }

  void selectingAMacroEnablesItsSideAndFetchesItsLines() {
    MacrosFixture fixture;
    fixture.clickRow(fixture.macros(), 0);
    QCOMPARE(fixture.delegate.take(), QStringList{"getMacroDetailsForMacroAtIndex(0)"});
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    QVERIFY(fixture.find("mMacroDetailsScrollView")->isVisible());
    // A macro without lines has none to delete.
    fixture.clickRow(fixture.macros(), 2);
    QCOMPARE(fixture.delegate.take(), QStringList{"getMacroDetailsForMacroAtIndex(2)"});
    QCOMPARE(fixture.enabled(), MacrosFixture::without(MacrosFixture::allControls(), {"mDeleteMacroDetails"}));
    // Deselecting disables it again.
    fixture.clickRow(fixture.macros(), 2, Qt::ControlModifier);
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), -1);
    QCOMPARE(fixture.enabled(),
             (QStringList{"mMacroTableView", "mAddMacro", "mSettingsMacro", "mMacroDetailsTableView"}));
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void aMacroWhoseLinesDoNotComeShowsNoneOfAnother() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.delegate.answersDetails = false;
    fixture.clickRow(fixture.macros(), 1);
    QCOMPARE(fixture.delegate.take(), QStringList{"getMacroDetailsForMacroAtIndex(1)"});
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array());
  }

  void linesOfAWrongShapeAreSurvived() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->updateSelectedMacroWithMacroDetails(PropertyList::array({"Key Press A", 7, PropertyList()}));
    QCOMPARE(MacrosFixture::rowsOf(fixture.lines()), (QStringList{"Key Press A", "", ""}));
    fixture.tab->updateSelectedMacroWithMacroDetails(PropertyList("text"));
    QCOMPARE(MacrosFixture::rowsOf(fixture.lines()), QStringList());
  }

  void withoutMacrosTheTabSaysSo() {
    MacrosFixture fixture;
    QVERIFY(!fixture.find("mNoMacrosView")->isVisible());
    for (const PropertyList& none : {PropertyList::array(), PropertyList("no array")}) {
      fixture.tab->setMMacrosSettingsArray(none);
      fixture.tab->updateUISettings();
      QVERIFY(fixture.find("mNoMacrosView")->isVisible());
      QVERIFY(!fixture.find("mMacroNameScrollView")->isVisible());
    }
  }

  void withoutASelectionOrWithoutLinesTheEventsSideSaysWhatToDo() {
    MacrosFixture fixture;
    QVERIFY(fixture.find("mNoMacroSelectedLabel")->isVisible());
    fixture.selectMacro(2);
    QVERIFY(!fixture.find("mNoMacroSelectedLabel")->isVisible());
    for (const char* part : {"mNoEventsTitle", "mNoEventsLabel", "mTypeText", "mInsertKey"})
      QVERIFY2(fixture.find(part)->isVisible(), part);
    fixture.selectMacro(0);
    for (const char* part : {"mNoEventsTitle", "mNoEventsLabel", "mTypeText", "mInsertKey"})
      QVERIFY2(!fixture.find(part)->isVisible(), part);
  }

  void withoutMacrosNothingSaysThatOneIsToBeSelected() {
    MacrosFixture fixture(QStringList{});
    QCOMPARE(fixture.find<QLabel>("mNoMacroSelectedLabel")->text(), QString());
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"Fireball"}));
    fixture.tab->refreshTableDisplay();
    QCOMPARE(fixture.find<QLabel>("mNoMacroSelectedLabel")->text(),
             QStringLiteral("Select a macro to see its events."));
  }

  void onlyOneMacroCanBeSelected() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.clickRow(fixture.macros(), 1, Qt::ShiftModifier);
    QCOMPARE(fixture.macros()->selectionModel()->selectedRows().size(), 1);
  }

  void theSelectedLineDecidesWhetherItCanBeDeleted() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.clickRow(fixture.lines(), 1);
    QVERIFY(fixture.find("mDeleteMacroDetails")->isEnabled());
    fixture.clickRow(fixture.lines(), 1, Qt::ControlModifier);
    QVERIFY(!fixture.find("mDeleteMacroDetails")->isEnabled());
    QCOMPARE(fixture.find("mDeleteMacroDetails")->toolTip(), QStringLiteral("Select an event or a delay first"));
    QVERIFY(fixture.find("mMacroDetailsScrollView")->isVisible());
    // Lines that are drawn anew can be deleted.
    fixture.tab->updateSelectedMacroWithMacroDetails(linesOfEvents(2));
    QVERIFY(fixture.find("mDeleteMacroDetails")->isEnabled());
    fixture.tab->updateSelectedMacroWithMacroDetails(PropertyList::array());
    QVERIFY(!fixture.find("mDeleteMacroDetails")->isEnabled());
  }

  void aReloadKeepsTheSelectedRowByItsIndexAndShowsTheLinesOfTheMacroThatStandsThere() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    const PropertyList list = macrosNamed({"A", "B", "C", "D"}).replacing(1, macroOfEvents("B", 2));
    fixture.tab->setMMacrosSettingsArray(list);
    fixture.delegate.lines[1] = linesOf(list.at(1));
    fixture.tab->refreshTableDisplay();
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 1);
    QCOMPARE(fixture.delegate.take(), QStringList("getMacroDetailsForMacroAtIndex(1)"));
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOf(list.at(1)));
    QCOMPARE(fixture.tab->mMacroDetailsArray().size(), std::size_t{3});
    // The same list again is no news.
    fixture.tab->setMMacrosSettingsArray(list);
    fixture.tab->refreshTableDisplay();
    QCOMPARE(fixture.delegate.take(), QStringList());
    // A row that is gone takes its selection with it; no other is selected in its place.
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"A"}));
    fixture.tab->refreshTableDisplay();
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), -1);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array());
    QVERIFY(!fixture.find("mRecordMacroDetails")->isEnabled());
  }

  void aReloadWithOtherEventsOfTheSameMacroShowsThem() {
    MacrosFixture fixture({"A"});
    fixture.selectMacro(0);
    const PropertyList list = PropertyList::array({macroOfEvents("A", 2)});
    fixture.delegate.lines[0] = linesOf(list.at(0));
    fixture.tab->setMMacrosSettingsArray(list);
    fixture.tab->refreshTableDisplay();
    QCOMPARE(fixture.delegate.take(), QStringList("getMacroDetailsForMacroAtIndex(0)"));
    QCOMPARE(fixture.tab->mMacroDetailsArray().size(), std::size_t{3});
    // What the table shows already is not asked for again.
    const PropertyList longer = PropertyList::array({macroOfEvents("A", 3)});
    fixture.tab->updateSelectedMacroWithMacroDetails(linesOf(longer.at(0)));
    fixture.tab->setMMacrosSettingsArray(longer);
    fixture.tab->refreshTableDisplay();
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void aConfirmedDeletionDeletesTheMacroThatTheAlertWasOpenedFor() {
    MacrosFixture fixture({"A", "B", "C"});
    fixture.selectMacro(1);
    fixture.find<QAbstractButton>("mDeleteMacro")->click();
    auto* alert = fixture.window.findChild<QMessageBox*>(QStringLiteral("alert"));
    QVERIFY(alert != nullptr);
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"B", "C"}));
    fixture.tab->refreshTableDisplay();
    fixture.delegate.take();
    alert->buttons().constFirst()->click();
    QVERIFY(fixture.delegate.take().contains(QStringLiteral("deleteMacroAtIndex(0)")));
  }

  void aConfirmedDeletionOfAMacroThatIsGoneDeletesNothingAndSaysSo() {
    MacrosFixture fixture({"A", "B", "C"});
    fixture.selectMacro(1);
    fixture.find<QAbstractButton>("mDeleteMacro")->click();
    auto* alert = fixture.window.findChild<QMessageBox*>(QStringLiteral("alert"));
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"A", "C"}));
    fixture.tab->refreshTableDisplay();
    fixture.delegate.take();
    alert->buttons().constFirst()->click();
    QCOMPARE(fixture.delegate.take(), QStringList());
    const auto alerts = fixture.window.findChildren<QMessageBox*>(QStringLiteral("alert"));
    QVERIFY(std::ranges::any_of(alerts, [](const QMessageBox* shown) {
      return shown->isVisible() && shown->text() == localized("lkeyRecordGoneTitle").arg(QLatin1String("B"));
    }));
  }

  void withoutAMouseEverythingIsDisabledAndSaysWhy() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.clickRow(fixture.lines(), 0);
    fixture.tab->enableControlsState(false);
    QCOMPARE(fixture.enabled(), QStringList());
    QVERIFY(!fixture.find("mMacroAssignmentLabel")->isEnabled());
    for (const char* name : MacrosFixture::controlNames) {
      QCOMPARE(fixture.find(name)->toolTip(), QStringLiteral("No mouse connected"));
    }
    QCOMPARE(fixture.tab->toolTip(), QStringLiteral("No mouse connected"));
    // A reload without a mouse enables nothing.
    fixture.tab->refreshTableDisplay();
    fixture.tab->updateSelectedMacroWithMacroDetails(linesOfEvents(2));
    QCOMPARE(fixture.enabled(), QStringList());
    fixture.tab->enableControlsState(true);
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    QVERIFY(fixture.find("mMacroAssignmentLabel")->isEnabled());
    QCOMPARE(fixture.tab->toolTip(), QString());
  }

  void aMouseThatComesEnablesOnlyWhatTheSelectionAllows() {
    MacrosFixture fixture;
    fixture.tab->enableControlsState(false);
    fixture.tab->enableControlsState(true);
    QCOMPARE(fixture.enabled(),
             (QStringList{"mMacroTableView", "mAddMacro", "mSettingsMacro", "mMacroDetailsTableView"}));
  }

  void theOwnerSwitchesTheTableButtonsAsFarAsTheSelectionAllows() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->setStateOfTableButtonsWithState(false);
    QCOMPARE(fixture.enabled(), (QStringList{"mMacroTableView", "mMacroDetailsTableView", "mRecordMacroDetails"}));
    QCOMPARE(fixture.find("mAddMacro")->toolTip(), QStringLiteral("Stop the recording first"));
    fixture.tab->setStateOfTableButtonsWithState(true);
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    fixture.tab->enableControlsState(false);
    fixture.tab->setStateOfTableButtonsWithState(true);
    QCOMPARE(fixture.enabled(), QStringList());
  }

  void theOwnerSwitchesTheTableOfMacrosAlone() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->setStateOfMacroTableWithState(false);
    QCOMPARE(fixture.enabled(), MacrosFixture::without(MacrosFixture::allControls(), {"mMacroTableView"}));
    // Without a recording there is nothing that would switch it on again.
    fixture.tab->stopAllMacroRecording();
    QVERIFY(!fixture.macros()->isEnabled());
    fixture.tab->setStateOfMacroTableWithState(true);
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void everyControlHasANameForAssistiveTechnology() {
    MacrosFixture fixture;
    for (const char* name : MacrosFixture::controlNames) {
      const QWidget* control = fixture.find(name);
      const auto* button = qobject_cast<const QAbstractButton*>(control);
      QVERIFY2(!control->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty()), name);
    }
  }
};

SKARN_QTEST(MouseMacrosControllerListTest)
#include "MouseMacrosController_list_test.moc"
