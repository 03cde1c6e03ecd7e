// The two sheets for a line act on the line that they were opened for, whatever comes to stand in its place.
#include <QTest>

#include "macros/EditingFixture.h"
#include "model/eventParser.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

constexpr int delayRow = 1;
constexpr int eventRow = 2;

// The macro "Greeting" of three events behind "Fireball", with the sheet for one of its lines.
struct SheetFixture : EditingFixture {
  explicit SheetFixture(int line) : EditingFixture(0) {
    delegate.lines = {{0, linesOfEvents(1)}, {1, linesOfEvents(3)}};
    selectMacro(1);
    clickRow(lines(), line);
    edit();
    delegate.take();
  }
  // "Greeting" comes to stand first.
  void moveUp() {
    delegate.lines = {{0, linesOfEvents(3)}};
    reload(macrosNamed({"Greeting", "Build order"}));
  }
  // Another program changes the events of "Greeting".
  void changeLines(const PropertyList& changed) {
    delegate.lines[1] = changed;
    reload(macrosNamed({"Fireball", "Greeting", "Build order"})
               .replacing(1, macro("Greeting", {macroEvent(1, static_cast<int>(changed.size()))})));
  }
};

QStringList sentForDelay(int macro, int line) {
  return {QStringLiteral("setNewDelay(7, %1, %2)").arg(line).arg(macro),
          QStringLiteral("getMacroDetailsForMacroAtIndex(%1)").arg(macro)};
}

QStringList sentForEvent(int macro, int line) {
  const QString place = QStringLiteral("%1, %2").arg(macro).arg(line);
  return {"stopSingleKeyRecording()", "getSequenceDetails(" + place + ")",
          "updateSequenceInfo(" + place + ", " + RecordingMacros::text(eventOf(1, 7, 4)) + ")",
          QStringLiteral("getMacroDetailsForMacroAtIndex(%1)").arg(macro)};
}

QStringList sentFor(int macro, int line) {
  return line % 2 == 1 ? sentForDelay(macro, line) : sentForEvent(macro, line);
}

}  // namespace

class MouseMacrosControllerMeantLineTest : public QObject {
  Q_OBJECT

 private:
  static void eachSheet() {
    QTest::addColumn<int>("line");
    QTest::newRow("a delay") << delayRow;
    QTest::newRow("an event") << eventRow;
  }

 private slots:
  void aMacroThatMovedIsActedOnInItsNewPlace_data() { eachSheet(); }
  void aMacroThatMovedIsActedOnInItsNewPlace() {
    QFETCH(int, line);
    SheetFixture fixture(line);
    fixture.moveUp();
    QVERIFY(fixture.hasSheet());
    fixture.delegate.take();
    QCOMPARE(fixture.confirmed(), sentFor(0, line));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 0);
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), line);
    QVERIFY(!fixture.hasSheet());
  }

  void anotherSelectionIsNotActedOn_data() { eachSheet(); }
  void anotherSelectionIsNotActedOn() {
    QFETCH(int, line);
    SheetFixture fixture(line);
    fixture.macros()->selectRow(0);
    fixture.delegate.take();
    const QStringList sent = fixture.confirmed();
    QCOMPARE(sent.mid(sent.size() - sentFor(1, line).size()), sentFor(1, line));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 1);
  }

  void aMacroThatIsGoneClosesTheSheetAndThatIsSaid_data() { eachSheet(); }
  void aMacroThatIsGoneClosesTheSheetAndThatIsSaid() {
    QFETCH(int, line);
    SheetFixture fixture(line);
    fixture.reload(macrosNamed({"Fireball", "Build order"}));
    QVERIFY(!fixture.hasSheet());
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Greeting” is no longer there"));
    const QStringList sent = fixture.delegate.take();
    QVERIFY(!sent.join(QString()).contains(QLatin1String("set")));
    QVERIFY(!sent.join(QString()).contains(QLatin1String("update")));
    QCOMPARE(sent.contains(QLatin1String("stopSingleKeyRecording()")), line == eventRow);
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QVERIFY(fixture.macros()->isEnabled());
  }

  void aLineThatMovedIsActedOnInItsNewPlace_data() { eachSheet(); }
  void aLineThatMovedIsActedOnInItsNewPlace() {
    QFETCH(int, line);
    SheetFixture fixture(line);
    const PropertyList lines = linesOfEvents(3);
    fixture.changeLines(PropertyList::array(
        {"Key Press X", "0.500 seconds delay\n", lines.at(0), lines.at(1), lines.at(2), lines.at(3), lines.at(4)}));
    QVERIFY(fixture.hasSheet());
    fixture.delegate.take();
    QCOMPARE(fixture.confirmed(), sentFor(1, line + 2));
  }

  void aLineThatIsAnotherOneClosesTheSheetAndThatIsSaid_data() { eachSheet(); }
  void aLineThatIsAnotherOneClosesTheSheetAndThatIsSaid() {
    QFETCH(int, line);
    SheetFixture fixture(line);
    fixture.changeLines(linesOfEvents(3).replacing(line, line == delayRow ? "0.500 seconds delay\n" : "Key Press X"));
    QVERIFY(!fixture.hasSheet());
    QCOMPARE(fixture.alert()->text(), QStringLiteral("This line is no longer there"));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QVERIFY(!fixture.delegate.take().join(QString()).contains(QLatin1String("updateSequenceInfo")));
    QVERIFY(fixture.macros()->isEnabled());
  }

  void aChangeBehindTheLineLeavesTheSheetAlone_data() { eachSheet(); }
  void aChangeBehindTheLineLeavesTheSheetAlone() {
    QFETCH(int, line);
    SheetFixture fixture(line);
    fixture.changeLines(linesOfEvents(2));
    fixture.delegate.take();
    QCOMPARE(fixture.confirmed(), sentFor(1, line));
  }
};

SKARN_QTEST(MouseMacrosControllerMeantLineTest)
#include "MouseMacrosController_meant_line_test.moc"
