// A macro is tried in a field of the window's own.
#include "macros/MacroPlaySheet.h"

#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>

#include "macros/SequenceFixture.h"
#include "model/TypedText.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
namespace tags = macroDetailsMenuTags;

namespace {

constexpr int leftControl = 224, backspace = 42, leftArrow = 80, escapeKey = 41, aMinute = 60'000;

struct PlayFixture : SequenceFixture {
  explicit PlayFixture(std::vector<PropertyList> events) : SequenceFixture(std::move(events)) {
    choose(tags::Play);
    sheet = window.findChild<MacroPlaySheet*>(QStringLiteral("mMacroPlayWindow"));
  }
  QString typed() { return find<QPlainTextEdit>("mPlayField")->toPlainText(); }
  QString progress() { return find<QLabel>("mPlayProgress")->text(); }
  QString title() { return find<QPushButton>("mPlayStart")->text(); }

  QPointer<MacroPlaySheet> sheet;
};

}  // namespace

class MacroPlaySheetTest : public QObject {
  Q_OBJECT

 private slots:
  void whatTheMacroTypesAppearsInTheField() {
    PlayFixture fixture(vorn::typedText("Hello,\nWorld 1!", 0).events);
    QVERIFY(fixture.sheet != nullptr);
    QTRY_VERIFY(!fixture.sheet->isPlaying());
    QCOMPARE(fixture.typed(), QStringLiteral("Hello,\nWorld 1!"));
    QCOMPARE(fixture.progress(), QStringLiteral("Played to the end: 36 events"));
    QCOMPARE(fixture.delegate.take(), QStringList{"reloadMacros()"});
    // Once more.
    QCOMPARE(fixture.title(), QStringLiteral("Play"));
    QTest::keyClick(fixture.sheet, Qt::Key_Return);
    QTRY_VERIFY(!fixture.sheet->isPlaying());
    QCOMPARE(fixture.typed(), QStringLiteral("Hello,\nWorld 1!"));
  }

  void keysThatEditDoSo() {
    std::vector<PropertyList> events = vorn::typedText("abc", 0).events;
    for (const int key : {backspace, leftArrow}) {
      events.push_back(keyEvent(true, 0, key));
      events.push_back(keyEvent(false, 0, key));
    }
    const auto more = vorn::typedText("x", 0).events;
    events.insert(events.end(), more.begin(), more.end());
    PlayFixture fixture(events);
    QTRY_VERIFY(!fixture.sheet->isPlaying());
    QCOMPARE(fixture.typed(), QStringLiteral("axb"));
  }

  void shortcutsAndClicksReachNothing() {
    QApplication::clipboard()->setText(QStringLiteral("kept"));
    PlayFixture fixture({keyEvent(true, 0, keyOfA), keyEvent(false, 0, keyOfA), keyEvent(true, 0, leftControl),
                         keyEvent(true, 0, keyOfA), keyEvent(false, 0, keyOfA), keyEvent(true, 0, keyOfC),
                         keyEvent(false, 0, keyOfC), keyEvent(false, 0, leftControl), keyEvent(true, 0, escapeKey),
                         keyEvent(false, 0, escapeKey), buttonEvent(true, 0, leftButton),
                         buttonEvent(false, 0, leftButton)});
    QTRY_VERIFY(fixture.sheet && !fixture.sheet->isPlaying());
    QCOMPARE(fixture.typed(), QStringLiteral("a"));
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("kept"));
    QCOMPARE(fixture.progress(), QStringLiteral("Played to the end: 12 events"));
  }

  void itWaitsForTheDelaysAndStopEndsThem() {
    PlayFixture fixture({keyEvent(true, 0, keyOfA), keyEvent(false, aMinute, keyOfA)});
    QTRY_COMPARE(fixture.progress(), QStringLiteral("1 of 2: Key Press A"));
    QVERIFY(fixture.sheet->isPlaying());
    QCOMPARE(fixture.title(), QStringLiteral("Stop"));
    fixture.click("mPlayStart");
    QVERIFY(!fixture.sheet->isPlaying());
    QCOMPARE(fixture.progress(), QStringLiteral("Stopped after 1 of 2 events"));
    QVERIFY(fixture.sheet->isVisible());
  }

  void escapeEndsItAndClosesTheSheet() {
    PlayFixture fixture({keyEvent(true, aMinute, keyOfA)});
    QVERIFY(fixture.sheet->isPlaying());
    QTest::keyClick(fixture.sheet, Qt::Key_Escape);
    QTRY_VERIFY(fixture.sheet.isNull());
  }
};

SKARN_QTEST(MacroPlaySheetTest)
#include "MacroPlaySheet_test.moc"
