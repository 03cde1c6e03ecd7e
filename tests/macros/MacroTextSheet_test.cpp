// The sheet for a text that a macro is to type.
#include "macros/MacroTextSheet.h"

#include <QLabel>

#include "macros/SequenceFixture.h"
#include "model/MacroEvents.h"
#include "model/TypedText.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
namespace tags = macroDetailsMenuTags;

namespace {

struct TextFixture : SequenceFixture {
  TextFixture() {
    select({2});
    choose(tags::TypeText);
  }
  QLineEdit* text() { return find<QLineEdit>("mTypedText"); }
  QPushButton* ok() { return find<QPushButton>("mTypedTextOK"); }
  bool isOpen() { return window.findChild<QDialog*>(QStringLiteral("mMacroTextWindow")) != nullptr; }
};

}  // namespace

class MacroTextSheetTest : public QObject {
  Q_OBJECT

 private slots:
  void theEventsOfTheTextAreInsertedBehindTheSelectedLine() {
    TextFixture fixture;
    QTest::keyClicks(fixture.text(), QStringLiteral("Ok!"));
    QCOMPARE(fixture.find<QLabel>("mTypedTextNote")->text(), QStringLiteral("Events: 10"));
    QTest::keyClick(fixture.text(), Qt::Key_Return);
    QTRY_VERIFY(!fixture.isOpen());
    std::vector<PropertyList> expected = SequenceFixture::nested();
    const auto typed = vorn::typedText("Ok!", 15).events;
    expected.insert(expected.begin() + 2, typed.begin(), typed.end());
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(expected));
  }

  void anEmptyMacroOffersToTypeAText() {
    SequenceFixture fixture;
    const auto* button = fixture.find<QPushButton>("mTypeText");
    QVERIFY(!button->isVisible());
    fixture.selectMacro(1);
    QVERIFY(button->isVisible());
    QVERIFY(button->isEnabled());
    // The hint does not lie under it.
    QVERIFY(!fixture.find("mNoEventsLabel")->geometry().intersects(button->geometry()));
    fixture.click("mRecordMacroDetails");
    QVERIFY(!button->isVisible());
    fixture.click("mRecordMacroDetails");
    QVERIFY(button->isVisible());
    fixture.delegate.take();
    fixture.click("mTypeText");
    QTest::keyClicks(fixture.find("mTypedText"), QStringLiteral("a"));
    fixture.click("mTypedTextOK");
    QCOMPARE(fixture.delegate.take(),
             SequenceFixture::edited({keyEvent(true, 15, keyOfA), keyEvent(false, 15, keyOfA)}, 1, "Greeting"));
  }

  void theDelayIsTheOneThatIsEntered() {
    TextFixture fixture;
    auto* delay = fixture.find<QLineEdit>("mTypedDelay");
    QCOMPARE(delay->text(), QStringLiteral("15"));
    QTest::keyClicks(fixture.text(), QStringLiteral("a"));
    delay->setText(QStringLiteral("40"));
    fixture.click("mTypedTextOK");
    std::vector<PropertyList> expected = SequenceFixture::nested();
    expected.insert(expected.begin() + 2, {keyEvent(true, 40, keyOfA), keyEvent(false, 40, keyOfA)});
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(expected));
  }

  void whatCannotBeTypedIsNamedAndNothingIsInserted() {
    TextFixture fixture;
    fixture.text()->setText(QStringLiteral("Grüße, über 5 €"));
    QVERIFY(!fixture.ok()->isEnabled());
    QCOMPARE(fixture.ok()->toolTip(), QStringLiteral("No key of a US keyboard types: ü ß €"));
    QCOMPARE(fixture.find<QLabel>("mTypedTextNote")->text(), fixture.ok()->toolTip());
    QTest::keyClick(fixture.text(), Qt::Key_Return);
    QVERIFY(fixture.isOpen());
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void anEmptyFieldSaysWhatIsMissing() {
    TextFixture fixture;
    QVERIFY(!fixture.ok()->isEnabled());
    QCOMPARE(fixture.ok()->toolTip(), QStringLiteral("Enter the text first"));
    QTest::keyClicks(fixture.text(), QStringLiteral("a"));
    QVERIFY(fixture.ok()->isEnabled());
    QCOMPARE(fixture.ok()->toolTip(), QString());
    fixture.find<QLineEdit>("mTypedDelay")->clear();
    QCOMPARE(fixture.ok()->toolTip(), QStringLiteral("Enter the delay first"));
  }

  void aTextOfMoreEventsThanAMacroHasIsNotInserted() {
    TextFixture fixture;
    fixture.text()->setText(QString(static_cast<qsizetype>(vorn::maximumMacroEvents / 2 + 1), QLatin1Char('a')));
    QVERIFY(!fixture.ok()->isEnabled());
    QCOMPARE(fixture.ok()->toolTip(), QStringLiteral("A macro has at most 15,000 events"));
  }

  void escapeInsertsNothing() {
    TextFixture fixture;
    QTest::keyClicks(fixture.text(), QStringLiteral("a"));
    QTest::keyClick(fixture.text(), Qt::Key_Escape);
    QTRY_VERIFY(!fixture.isOpen());
    QCOMPARE(fixture.delegate.take(), QStringList());
  }
};

SKARN_QTEST(MacroTextSheetTest)
#include "MacroTextSheet_test.moc"
