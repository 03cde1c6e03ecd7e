// A delay that is being typed into its line stays that line's, whatever others change meanwhile.
#include <QTest>

#include "macros/MacrosFixture.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

constexpr int delayRow = 3;

// "Greeting" of three events stands between "Fireball" and "Build order"; 7 is typed into its second delay.
struct InPlaceFixture : MacrosFixture {
  InPlaceFixture() {
    delegate.lines = {{0, linesOfEvents(1)}, {1, linesOfEvents(3)}};
    selectMacro(1);
    clickRow(lines(), delayRow);
    QTest::keyClick(lines(), Qt::Key_F2);
    QTest::keyClicks(field(), QStringLiteral("7"));
  }
  // The field in which the delay is being typed; none otherwise.
  QLineEdit* field() {
    for (auto* shown : lines()->viewport()->findChildren<QLineEdit*>()) {
      if (shown->isVisible()) return shown;
    }
    return nullptr;
  }
  bool isTyping() { return field() != nullptr && field()->hasFocus() && field()->text() == QLatin1String("7"); }
  // Another program changes the events of "Greeting".
  void changeLines(const PropertyList& changed) {
    delegate.lines[1] = changed;
    reload(macrosNamed({"Fireball", "Greeting", "Build order"})
               .replacing(1, macro("Greeting", {macroEvent(1, static_cast<int>(changed.size()))})));
  }
  QStringList confirmed() {
    delegate.take();
    QTest::keyClick(field(), Qt::Key_Return);
    if (!QTest::qWaitFor([this] { return field() == nullptr; })) qFatal("the field stays");
    return delegate.take();
  }
};

QStringList sent(int macro, int line) {
  return {QStringLiteral("setNewDelay(7, %1, %2)").arg(line).arg(macro),
          QStringLiteral("getMacroDetailsForMacroAtIndex(%1)").arg(macro)};
}

}  // namespace

class MouseMacrosControllerDelayInPlaceTest : public QObject {
  Q_OBJECT

 private slots:
  void aMacroThatMovedIsActedOnInItsNewPlace() {
    InPlaceFixture fixture;
    QVERIFY(fixture.isTyping());
    fixture.delegate.lines = {{0, linesOfEvents(3)}, {1, linesOfEvents(1)}};
    fixture.reload(macrosNamed({"Greeting", "Build order"}));
    QVERIFY(fixture.isTyping());
    QVERIFY(fixture.alert() == nullptr);
    QCOMPARE(fixture.delegate.take(), QStringList("getMacroDetailsForMacroAtIndex(0)"));
    QCOMPARE(fixture.confirmed(), sent(0, delayRow));
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 0);
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), delayRow);
    QTRY_VERIFY(fixture.lines()->hasFocus());
  }

  void aLineThatMovedIsActedOnInItsNewPlace() {
    InPlaceFixture fixture;
    const PropertyList lines = linesOfEvents(3);
    fixture.changeLines(PropertyList::array(
        {"Key Press X", "0.500 seconds delay\n", lines.at(0), lines.at(1), lines.at(2), lines.at(3), lines.at(4)}));
    QVERIFY(fixture.isTyping());
    QCOMPARE(fixture.confirmed(), sent(1, delayRow + 2));
  }

  void anUntouchedDelayBeginsAnewWithTheWholeNumberSelected() {
    InPlaceFixture fixture;
    QTest::keyClick(fixture.field(), Qt::Key_Escape);
    QTRY_VERIFY(fixture.field() == nullptr);
    QTest::keyClick(fixture.lines(), Qt::Key_F2);
    fixture.changeLines(linesOfEvents(4));
    QVERIFY(fixture.field() != nullptr);
    QCOMPARE(fixture.field()->selectedText(), QStringLiteral("20"));
  }

  void aMacroThatIsGoneEndsTheEditAndThatIsSaid_data() {
    QTest::addColumn<QStringList>("left");
    QTest::newRow("another one takes its place") << QStringList{"Fireball", "Build order"};
    QTest::newRow("it was the last one") << QStringList{"Fireball"};
  }
  void aMacroThatIsGoneEndsTheEditAndThatIsSaid() {
    QFETCH(QStringList, left);
    InPlaceFixture fixture;
    fixture.reload(macrosNamed(left));
    QVERIFY(fixture.field() == nullptr);
    QVERIFY(fixture.alert() != nullptr);
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Greeting” is no longer there"));
    const bool isAnother = left.size() > 1;
    // The lines that are shown are never those of the macro that is gone.
    QCOMPARE(fixture.delegate.take(), isAnother ? QStringList("getMacroDetailsForMacroAtIndex(1)") : QStringList());
    confirm(fixture.alert());
    QTRY_VERIFY(fixture.alert() == nullptr);
    QApplication::setActiveWindow(&fixture.window);
    QTRY_VERIFY((isAnother ? fixture.lines() : fixture.macros())->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QVERIFY(!fixture.delegate.take().join(QString()).contains(QLatin1String("start")));
  }

  void aLineThatIsAnotherOneEndsTheEditAndThatIsSaid() {
    InPlaceFixture fixture;
    fixture.changeLines(linesOfEvents(3).replacing(delayRow, "0.500 seconds delay\n"));
    QVERIFY(fixture.field() == nullptr);
    QVERIFY(fixture.alert() != nullptr);
    QCOMPARE(fixture.alert()->text(), QStringLiteral("This line is no longer there"));
    QCOMPARE(fixture.delegate.take(), QStringList("getMacroDetailsForMacroAtIndex(1)"));
  }

  void whatIsTypedIsTakenOverBeforeAMenuOrAButtonActs() {
    InPlaceFixture fixture;
    fixture.chooseFromGear("mSettingsMacroDetails", 6);
    QCOMPARE(fixture.delegate.take(), sent(1, delayRow) << "setAllEventsDelay(0, 1, YES)"
                                                        << "getMacroDetailsForMacroAtIndex(1)");
    InPlaceFixture other;
    other.click("mDeleteMacroDetails");
    QCOMPARE(other.delegate.take(), sent(1, delayRow) << "removeEventAtIndex(3, 1)"
                                                      << "getMacroDetailsForMacroAtIndex(1)");
    QVERIFY(other.alert() == nullptr);
  }
};

SKARN_QTEST(MouseMacrosControllerDelayInPlaceTest)
#include "MouseMacrosController_delay_in_place_test.moc"
