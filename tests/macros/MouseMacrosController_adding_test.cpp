// New macros that the engine does not take.
#include <QTest>

#include "macros/MacrosFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::ReturnStatus;

class MouseMacrosControllerAddingTest : public QObject {
  Q_OBJECT

 private slots:
  void aRefusedMacroIsToldAndNothingOfItStays_data() {
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no room") << int(ReturnStatus::OutOfRange)
                             << "The mouse holds as many macros as it can. Delete one that you no longer need, then "
                                "try again.";
    QTest::newRow("a full disk") << int(ReturnStatus::NotSaved)
                                 << "The core engine could not write it to the disk, which may be full. Nothing was "
                                    "changed.";
    QTest::newRow("too large") << int(ReturnStatus::TooLarge) << "This profile or macro is too large for the mouse.";
    QTest::newRow("anything else") << int(ReturnStatus::Malformed)
                                   << "The core engine refused it. Nothing was changed.";
    QTest::newRow("no answer") << -1 << "The core engine did not answer.";
  }
  void aRefusedMacroIsToldAndNothingOfItStays() {
    QFETCH(int, status);
    QFETCH(QString, reason);
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.delegate.answerToAdd = status < 0 ? std::nullopt : std::optional(static_cast<ReturnStatus>(status));
    fixture.click("mAddMacro");
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Untitled Macro” could not be added"));
    QCOMPARE(fixture.alert()->informativeText(), reason);
    expectNothingAdded(fixture);
    // No name is left to be typed.
    QVERIFY(fixture.editor() == nullptr);
    QCOMPARE(fixture.tab->mEditedRow(), -1);
    // The next one goes as ever.
    fixture.delegate.answerToAdd = ReturnStatus::Done;
    QTest::keyClick(fixture.alert(), Qt::Key_Escape);
    QTRY_VERIFY(fixture.alert() == nullptr);
    fixture.click("mAddMacro");
    QCOMPARE(fixture.delegate.take(), (QStringList{added("Untitled Macro"), "getMacroDetailsForMacroAtIndex(3)"}));
    QVERIFY(fixture.editor() != nullptr);
  }

  void aRefusalKeepsWhatAReloadHasBroughtMeanwhile() {
    MacrosFixture fixture;
    fixture.delegate.answerToAdd = ReturnStatus::OutOfRange;
    fixture.delegate.onCall = [&](const QString& call) {
      if (call.startsWith("add")) fixture.tab->setMMacrosSettingsArray(macrosNamed({"A", "B"}));
    };
    fixture.click("mAddMacro");
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()), (QStringList{"A", "B"}));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), -1);
  }

 private:
  // The second macro is selected, as before the add, and its lines are shown.
  static void expectNothingAdded(MacrosFixture& fixture) {
    QCOMPARE(fixture.delegate.take(), (QStringList{added("Untitled Macro"), "getMacroDetailsForMacroAtIndex(1)"}));
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()), (QStringList{"Fireball", "Greeting", "Build order"}));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 1);
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(1));
  }
};

SKARN_QTEST(MouseMacrosControllerAddingTest)
#include "MouseMacrosController_adding_test.moc"
