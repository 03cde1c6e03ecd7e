// Macros are found by their names, told who plays them, and doubled.
#include <QLabel>

#include "macros/SequenceFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QStringList shownNames(MacrosFixture& fixture) {
  QStringList names;
  const QStringList all = MacrosFixture::rowsOf(fixture.macros());
  for (int row = 0; row < all.size(); ++row) {
    if (!fixture.macros()->isRowHidden(row)) names << all[row];
  }
  return names;
}

}  // namespace

class MouseMacrosControllerFindingTest : public QObject {
  Q_OBJECT

 private slots:
  void theListShowsTheMacrosWhoseNamesHaveTheText() {
    MacrosFixture fixture({"Fireball", "Greeting", "Ice ball"});
    auto* search = fixture.find<QLineEdit>("mMacroSearch");
    QVERIFY(!fixture.find("mNothingFoundLabel")->isVisible());
    QTest::keyClicks(search, QStringLiteral("BALL"));
    QCOMPARE(shownNames(fixture), (QStringList{"Fireball", "Ice ball"}));
    QVERIFY(!fixture.find("mNothingFoundLabel")->isVisible());
    // A row is still the macro's position.
    fixture.clickRow(fixture.macros(), 2);
    QCOMPARE(fixture.delegate.take(), QStringList{"getMacroDetailsForMacroAtIndex(2)"});
    search->setText(QStringLiteral("ballad"));
    QCOMPARE(shownNames(fixture), QStringList());
    QVERIFY(fixture.find("mNothingFoundLabel")->isVisible());
    search->clear();
    QCOMPARE(shownNames(fixture).size(), 3);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void whatTheSearchHidesIsNotSelected() {
    MacrosFixture fixture({"Fireball", "Greeting"});
    fixture.selectMacro(0);
    auto* search = fixture.find<QLineEdit>("mMacroSearch");
    QTest::keyClicks(search, QStringLiteral("ball"));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 0);
    QTest::keyClicks(search, QStringLiteral("ad"));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), -1);
    QCOMPARE(fixture.tab->mMacroDetailsArray().size(), std::size_t{0});
    QCOMPARE(fixture.enabled(), MacrosFixture::without(MacrosFixture::allControls(),
                                                       {"mDeleteMacro", "mAddMacroDetails", "mDeleteMacroDetails",
                                                        "mSettingsMacroDetails", "mRecordMacroDetails"}));
    fixture.tab->clickRecordMacroDetails();
    fixture.tab->clickDeleteMacro();
    QVERIFY(fixture.alert() == nullptr);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void aSelectedMacroThatIsRenamedStaysShownUntilAnotherTextIsSought() {
    MacrosFixture fixture({"Fireball", "Greeting"});
    auto* search = fixture.find<QLineEdit>("mMacroSearch");
    search->setText(QStringLiteral("ball"));
    fixture.selectMacro(0);
    fixture.reload(macrosNamed({"Comet", "Greeting"}));
    QCOMPARE(shownNames(fixture), QStringList{"Comet"});
    QVERIFY(!fixture.find("mNothingFoundLabel")->isVisible());
    search->setText(QStringLiteral("fire"));
    QCOMPARE(shownNames(fixture), QStringList());
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), -1);
  }

  void aDeletionSelectsAMacroThatIsFound() {
    MacrosFixture fixture({"Ice ball", "Fireball", "Greeting"});
    fixture.find<QLineEdit>("mMacroSearch")->setText(QStringLiteral("ball"));
    const auto deleteMacro = [&](int row, const QStringList& left) {
      fixture.selectMacro(row);
      fixture.delegate.onCall = [&fixture, left](const QString& call) {
        if (call.startsWith(QLatin1String("deleteMacroAtIndex")))
          fixture.tab->setMMacrosSettingsArray(macrosNamed(left));
      };
      fixture.click("mDeleteMacro");
      fixture.alert()->buttons().constFirst()->click();
    };
    deleteMacro(1, {"Ice ball", "Greeting"});
    QTRY_COMPARE(MacrosFixture::selectedRow(fixture.macros()), 0);
    QCOMPARE(shownNames(fixture), QStringList{"Ice ball"});
    deleteMacro(0, {"Greeting"});
    QTRY_COMPARE(MacrosFixture::selectedRow(fixture.macros()), -1);
    QCOMPARE(shownNames(fixture), QStringList());
  }

  void theSearchIsReachedAndLeftByTheKeyboard() {
    MacrosFixture fixture({"Fireball", "Greeting", "Ice ball"});
    auto* search = fixture.find<QLineEdit>("mMacroSearch");
    QTest::keyClick(fixture.macros(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(search->hasFocus());
    QTest::keyClicks(search, QStringLiteral("ice"));
    QTest::keyClick(search, Qt::Key_Return);
    QVERIFY(fixture.macros()->hasFocus());
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 2);
    QTest::keyClick(fixture.macros(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(search->selectedText(), QStringLiteral("ice"));
    QTest::keyClick(search, Qt::Key_Escape);
    QCOMPARE(search->text(), QString());
    QVERIFY(search->hasFocus());
    QTest::keyClick(search, Qt::Key_Escape);
    QVERIFY(fixture.macros()->hasFocus());
    // Nothing is found: there is nowhere to go.
    search->setFocus();
    search->setText(QStringLiteral("copzz"));
    QTest::keyClick(search, Qt::Key_Return);
    QVERIFY(search->hasFocus());
  }

  void aReloadIsSearchedToo() {
    MacrosFixture fixture({"Fireball", "Greeting"});
    fixture.find<QLineEdit>("mMacroSearch")->setText(QStringLiteral("ball"));
    fixture.reload(macrosNamed({"Greeting", "Fireball", "Ice ball"}));
    QCOMPARE(shownNames(fixture), (QStringList{"Fireball", "Ice ball"}));
  }

  void aNewMacroIsSeenWhateverIsSearched() {
    MacrosFixture fixture;
    fixture.find<QLineEdit>("mMacroSearch")->setText(QStringLiteral("ball"));
    fixture.click("mAddMacro");
    QCOMPARE(shownNames(fixture).last(), QStringLiteral("Untitled Macro"));
    QVERIFY(fixture.editor() != nullptr);
  }

  void anEmptyListHasNothingToSearch() {
    MacrosFixture fixture(QStringList{});
    QVERIFY(!fixture.find("mMacroSearch")->isVisible());
    QVERIFY(!fixture.find("mNothingFoundLabel")->isVisible());
  }

  void theControlsThatPlayAMacroAreToldByProfile() {
    MacrosFixture fixture;
    const auto withMacro = [](const PropertyList& profile, const char* key, int macro) {
      return profile.with("Keys", profile["Keys"].with(key, assignment(10, macro, 1)));
    };
    const PropertyList work = withMacro(withMacro(plainProfile("Work"), "43", 1), "20", 1);
    const PropertyList play = withMacro(plainProfile("Play"), "43", 2);
    const auto* label = fixture.find<QLabel>("mMacroAssignmentLabel");
    fixture.tab->setMAllProfiles(PropertyList::array({work, play}));
    QCOMPARE(label->text(), localized("lkeyMacroAssignment"));
    fixture.selectMacro(1);
    QCOMPARE(label->text(), QStringLiteral("Controls that play it: 1, 2 of “Work”"));
    fixture.selectMacro(0);
    QCOMPARE(label->text(), localized("lkeyMacroAssignment"));
    // News of the profiles alone change it.
    fixture.tab->setMAllProfiles(PropertyList::array({withMacro(work, "26", 0), play}));
    QCOMPARE(label->text(), QStringLiteral("Controls that play it: 3 of “Work”"));
  }

  void aMacroIsDoubledAsTheEngineHasItNow() {
    SequenceFixture fixture;
    fixture.take(0, {keyEvent(true, 0, keyOfC)});
    QTest::keyClick(fixture.macros(), Qt::Key_D, Qt::ControlModifier);
    const PropertyList copy = PropertyList::dictionary(
        {{"MacroName", "Fireball(2)"}, {"delay", 15}, {"sequence", sequenceOf({keyEvent(true, 0, keyOfC)})}});
    const QStringList calls = fixture.delegate.take();
    QVERIFY2(calls.contains("addMacroWithSettings(" + RecordingMacros::text(copy) + ")"),
             qPrintable(calls.join(QLatin1Char('\n'))));
    QCOMPARE(calls.constFirst(), QStringLiteral("reloadMacros()"));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 2);
  }

  void aCopyThatTheEngineDoesNotTakeIsToldAndLeavesNoRow() {
    SequenceFixture fixture;
    fixture.delegate.answerToAdd = vorn::ReturnStatus::OutOfRange;
    fixture.chooseFromGear("mSettingsMacro", macroMenuTags::Duplicate);
    QVERIFY(fixture.alert() != nullptr);
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()), (QStringList{"Fireball", "Greeting"}));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 0);
  }
};

SKARN_QTEST(MouseMacrosControllerFindingTest)
#include "MouseMacrosController_finding_test.moc"
