// The lines of a macro are deleted, and their delays copied and taken away.
#include <QTest>

#include "macros/EditingFixture.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class MouseMacrosControllerLinesTest : public QObject {
  Q_OBJECT

 private slots:
  void deletingALineRemovesItAndSelectsItsSuccessorOrTheLast_data() {
    QTest::addColumn<int>("deleted");
    QTest::addColumn<int>("eventsLeft");
    QTest::addColumn<int>("selected");
    QTest::newRow("the first of five, three left") << 0 << 2 << 0;
    QTest::newRow("the second") << 1 << 2 << 1;
    QTest::newRow("the third becomes the last") << 2 << 2 << 2;
    QTest::newRow("the last") << 4 << 2 << 2;
    QTest::newRow("one left") << 4 << 1 << 0;
    QTest::newRow("none left") << 0 << 0 << -1;
    QTest::newRow("refused by the engine") << 1 << 3 << 1;
    QTest::newRow("the last, refused by the engine") << 4 << 3 << 4;
  }
  void deletingALineRemovesItAndSelectsItsSuccessorOrTheLast() {
    QFETCH(int, deleted);
    QFETCH(int, eventsLeft);
    QFETCH(int, selected);
    EditingFixture fixture(deleted);
    fixture.delegate.lines[0] = linesOfEvents(eventsLeft);
    fixture.click("mDeleteMacroDetails");
    QCOMPARE(fixture.delegate.take(), (QStringList{QStringLiteral("removeEventAtIndex(%1, 0)").arg(deleted),
                                                   "getMacroDetailsForMacroAtIndex(0)"}));
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), selected);
    QTRY_VERIFY(fixture.lines()->hasFocus());
    QCOMPARE(fixture.find("mDeleteMacroDetails")->isEnabled(), eventsLeft > 0);
  }

  void withoutASelectedLineNothingIsDeleted() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mDeleteMacroDetails");
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.beeps, 1);
  }

  void theMenuDeletesALineToo() {
    EditingFixture fixture(2);
    fixture.chooseFromGear("mSettingsMacroDetails", 3);
    QCOMPARE(fixture.delegate.take(), (QStringList{"removeEventAtIndex(2, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void allLinesAreDeletedAndFetchedAgain() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.delegate.lines[0] = PropertyList::array();
    fixture.chooseFromGear("mSettingsMacroDetails", 4);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.alert()->text(), QStringLiteral("Delete All Events of “Fireball”?"));
    confirm(fixture.alert());
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"removeAllEventsForMacroAtIndex(0)", "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array());
    QVERIFY(!fixture.find("mDeleteMacroDetails")->isEnabled());
  }

  void deletingAllLinesAsksFirst() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.chooseFromGear("mSettingsMacroDetails", 4);
    QStringList buttons;
    for (const auto* button : fixture.alert()->buttons()) buttons << button->text();
    QCOMPARE(buttons, (QStringList{"Delete", "Cancel"}));
    QTest::keyClick(fixture.alert(), Qt::Key_Escape);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void allLinesAreDeletedOfTheMacroThatTheAlertWasOpenedFor() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacroDetails", 4);
    fixture.reload(macrosNamed({"Greeting", "Build order"}));
    fixture.delegate.take();
    confirm(fixture.alert());
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"getMacroDetailsForMacroAtIndex(0)", "removeAllEventsForMacroAtIndex(0)",
                          "getMacroDetailsForMacroAtIndex(0)"}));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 0);
  }

  void noLinesAreDeletedOfAMacroThatIsGone() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacroDetails", 4);
    fixture.reload(macrosNamed({"Fireball"}));
    fixture.delegate.take();
    confirm(fixture.alert());
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Greeting” is no longer there"));
  }

  void copyDelaySendsTheRowOfTheDelay() {
    EditingFixture fixture(3);
    fixture.chooseFromGear("mSettingsMacroDetails", 5);
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"setAllEventsDelay(3, 0, NO)", "getMacroDetailsForMacroAtIndex(0)"}));
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), 3);
  }

  void copyDelayOfAnEventDoesNothing_data() {
    QTest::addColumn<int>("line");
    for (const int line : {-1, 0, 2, 4}) QTest::addRow("row %d", line) << line;
  }
  void copyDelayOfAnEventDoesNothing() {
    QFETCH(int, line);
    MacrosFixture fixture;
    fixture.selectMacro(0);
    if (line >= 0) fixture.clickRow(fixture.lines(), line);
    fixture.tab->clickMacroDetailsSettingsMenuItem(5);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void noDelaySendsZeroAndTheFlag() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.chooseFromGear("mSettingsMacroDetails", 6);
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"setAllEventsDelay(0, 0, YES)", "getMacroDetailsForMacroAtIndex(0)"}));
  }
};

SKARN_QTEST(MouseMacrosControllerLinesTest)
#include "MouseMacrosController_lines_test.moc"
