// The sheet for a delay.
#include <QClipboard>
#include <QLabel>
#include <QTest>

#include "macros/EditingFixture.h"
#include "macros/NumberOnlyTextField.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class MouseMacrosControllerDelaySheetTest : public QObject {
  Q_OBJECT

 private slots:
  void aDelayIsEditedInASheetThatBeginsEmpty() {
    EditingFixture fixture(1);
    fixture.edit();
    QVERIFY(fixture.isShown("mEditDelayWindow"));
    QVERIFY(!fixture.isShown("mEditEventWindow"));
    QCOMPARE(fixture.find("mEditDelayWindow")->windowModality(), Qt::WindowModal);
    QTest::keyClicks(&fixture.delay(), "1500");
    fixture.click("mMacroDelayOK");
    QVERIFY(!fixture.isShown("mEditDelayWindow"));
    QCOMPARE(fixture.delegate.take(), (QStringList{"setNewDelay(1500, 1, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
    fixture.edit();
    QCOMPARE(fixture.delay().text(), QString());
  }

  void theSheetIsClosedBeforeTheDelayIsSent() {
    EditingFixture fixture(1);
    fixture.edit();
    bool wasOpen = true;
    fixture.delegate.onCall = [&](const QString&) { wasOpen = fixture.isShown("mEditDelayWindow"); };
    QTest::keyClicks(&fixture.delay(), "0");
    QTest::keyClick(&fixture.delay(), Qt::Key_Return);
    QVERIFY(!wasOpen);
    QCOMPARE(fixture.delegate.take().constFirst(), QStringLiteral("setNewDelay(0, 1, 0)"));
  }

  void theSheetTellsTheDelayAsItIsNow() {
    EditingFixture fixture(1);
    fixture.edit();
    QCOMPARE(fixture.find<QLabel>("mMacroDelayNow")->text(), QStringLiteral("Now: 0.020 seconds delay"));
    QCOMPARE(fixture.delay().placeholderText(), QStringLiteral("20"));
    QCOMPARE(fixture.delay().text(), QString());
  }

  void withoutAnEntryTheDelayStaysAsItIs() {
    EditingFixture fixture(1);
    fixture.edit();
    const auto* ok = fixture.find<QPushButton>("mMacroDelayOK");
    QVERIFY(!ok->isEnabled());
    QCOMPARE(ok->toolTip(), QStringLiteral("Enter the delay first"));
    QTest::keyClick(&fixture.delay(), Qt::Key_Return);
    QTest::keyClicks(&fixture.delay(), "7");
    QVERIFY(ok->isEnabled());
    QCOMPARE(ok->toolTip(), QString());
    QTest::keyClick(&fixture.delay(), Qt::Key_Escape);
    QVERIFY(!fixture.isShown("mEditDelayWindow"));
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  // The sheet's button is what keeps an empty input from being confirmed.
  void okSendsTheNumberOfTheInputWhateverItIs() {
    EditingFixture fixture(1);
    fixture.edit();
    fixture.tab->clickMacroDelayOK();
    QVERIFY(!fixture.isShown("mEditDelayWindow"));
    QCOMPARE(fixture.delegate.take(), (QStringList{"setNewDelay(0, 1, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void cancellingTheDelaySheetSendsNothing() {
    EditingFixture fixture(3);
    const QList<std::function<void()>> ways = {
        [&] { fixture.click("mMacroDelayCancel"); },
        [&] { QTest::keyClick(&fixture.delay(), Qt::Key_Escape); },
        [&] { fixture.find("mEditDelayWindow")->close(); },
    };
    for (const auto& cancel : ways) {
      fixture.edit();
      QTest::keyClicks(&fixture.delay(), "7");
      cancel();
      QVERIFY(!fixture.isShown("mEditDelayWindow"));
    }
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void theDelayOfAnyRowIsSentAsItIs() {
    MacrosFixture fixture;
    fixture.delegate.lines[0] = linesOfEvents(200);
    fixture.selectMacro(0);
    fixture.clickRow(fixture.lines(), 301);
    fixture.chooseFromGear("mSettingsMacroDetails", 2);
    QTest::keyClicks(fixture.find("mInputMacroDelay"), "999999");
    fixture.click("mMacroDelayOK");
    QCOMPARE(fixture.delegate.take().constFirst(), QStringLiteral("setNewDelay(999999, 301, 0)"));
  }

  void theDelayInputTakesSixDigits_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("beeps");
    QTest::newRow("digits") << "" << 0 << "0123"
                            << "0123" << 0;
    QTest::newRow("the sixth character") << "12345" << 5 << "6"
                                         << "123456" << 0;
    QTest::newRow("the seventh character") << "123456" << 6 << "7"
                                           << "123456" << 1;
    QTest::newRow("one more in front") << "123456" << 0 << "7"
                                       << "123456" << 1;
    QTest::newRow("a point") << "12" << 2 << "."
                             << "12" << 1;
    QTest::newRow("letters") << "12" << 2 << "ab"
                             << "12" << 2;
    QTest::newRow("a sign") << "" << 0 << "-1"
                            << "1" << 1;
    QTest::newRow("a blank") << "1" << 1 << " "
                             << "1" << 1;
    QTest::newRow("digits of another script") << "1" << 1 << QString(QChar(0x0663)) << "1" << 1;
  }
  void theDelayInputTakesSixDigits() {
    QFETCH(QString, before);
    QFETCH(int, cursor);
    QFETCH(QString, typed);
    QFETCH(QString, after);
    QFETCH(int, beeps);
    EditingFixture fixture(1);
    fixture.edit();
    fixture.delay().setText(before);
    fixture.delay().setCursorPosition(cursor);
    for (const QChar character : typed) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
      QApplication::sendEvent(&fixture.delay(), &press);
    }
    QCOMPARE(fixture.delay().text(), after);
    QCOMPARE(fixture.beeps, beeps);
  }

  void whatIsPastedIsTakenWholeOrNotAtAll_data() {
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("after");
    QTest::newRow("a number") << "250"
                              << "250";
    QTest::newRow("six digits") << "999999"
                                << "999999";
    QTest::newRow("seven digits") << "1234567"
                                  << "";
    QTest::newRow("a fraction") << "1.5"
                                << "";
    QTest::newRow("words") << "12 ms"
                           << "";
  }
  void whatIsPastedIsTakenWholeOrNotAtAll() {
    QFETCH(QString, pasted);
    QFETCH(QString, after);
    NumberOnlyTextField field;
    int refused = 0;
    connect(&field, &NumberOnlyTextField::editRefused, &field, [&] { ++refused; });
    QApplication::clipboard()->setText(pasted);
    field.paste();
    QCOMPARE(field.text(), after);
    QCOMPARE(refused, after.isEmpty() ? 1 : 0);
    QCOMPARE(field.integerValue(), after.toInt());
  }

  void aPureDeletionIsAlwaysTaken() {
    EditingFixture fixture(1);
    fixture.edit();
    QTest::keyClicks(&fixture.delay(), "123456");
    QTest::keyClick(&fixture.delay(), Qt::Key_Backspace);
    QCOMPARE(fixture.delay().text(), QStringLiteral("12345"));
    fixture.delay().selectAll();
    QTest::keyClick(&fixture.delay(), Qt::Key_Delete);
    QCOMPARE(fixture.delay().text(), QString());
    QCOMPARE(fixture.beeps, 0);
  }
};

SKARN_QTEST(MouseMacrosControllerDelaySheetTest)
#include "MouseMacrosController_delay_sheet_test.moc"
