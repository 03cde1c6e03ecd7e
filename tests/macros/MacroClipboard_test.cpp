// Events on the clipboard: what is put there, what is taken from it, and what the tab sends for it.
#include "macros/MacroClipboard.h"

#include <QClipboard>
#include <QLabel>
#include <QMimeData>

#include "macros/SequenceFixture.h"
#include "model/PropertyListCodec.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
namespace tags = macroDetailsMenuTags;

using Events = std::vector<PropertyList>;
using macroClipboard::Held;

namespace {

void putBytes(const QByteArray& bytes) {
  auto* data = new QMimeData;
  data->setData(QLatin1String(macroClipboard::mimeType), bytes);
  QApplication::clipboard()->setMimeData(data);
}

void putList(const PropertyList& list) {
  const auto bytes = vorn::encodeBinaryPropertyList(list).value();
  putBytes(QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())));
}

}  // namespace

class MacroClipboardTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { QApplication::clipboard()->clear(); }
  void cleanup() { QApplication::clipboard()->clear(); }

  void whatIsPutThereComesBackAndReadsAsLinesElsewhere() {
    const Events events{keyEvent(true, 5, keyOfA), buttonEvent(false, 20, leftButton)};
    macroClipboard::put(events);
    QCOMPARE(macroClipboard::held(), Held::Events);
    QCOMPARE(macroClipboard::foreignText(), QString());
    QVERIFY(macroClipboard::events() == events);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Key Press A\n0.020 seconds delay\nLeft Button up\n"));
  }

  void whatIsNoListOfEventsIsNotTaken() {
    QCOMPARE(macroClipboard::held(), Held::Nothing);
    QVERIFY(!macroClipboard::events());
    QApplication::clipboard()->setText(QStringLiteral("Key Press A"));
    QCOMPARE(macroClipboard::held(), Held::Text);
    QVERIFY(!macroClipboard::events());
    putBytes("bplist00 and nothing of the kind");
    QVERIFY(!macroClipboard::events());
    putList(PropertyList::array());
    QVERIFY(!macroClipboard::events());
    putList(keyEvent(true, 5, keyOfA));
    QVERIFY(!macroClipboard::events());
    putList(PropertyList::array({keyEvent(true, 5, keyOfA), buttonEvent(true, 5, 10)}));
    QVERIFY(!macroClipboard::events());
    putList(PropertyList::array({keyEvent(true, 5, keyOfA)}));
    QVERIFY(macroClipboard::events() == Events{keyEvent(true, 5, keyOfA)});
  }

  void copyingChangesNothing() {
    SequenceFixture fixture;
    fixture.select({2, 3, 4});
    QTest::keyClick(fixture.lines(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(fixture.delegate.take(), QStringList{"reloadMacros()"});
    QVERIFY(macroClipboard::events() == (Events{keyEvent(true, 100, keyOfB), keyEvent(false, 50, keyOfB)}));
    QVERIFY(fixture.selected() == (std::vector<int>{2, 3, 4}));
  }

  void cuttingCopiesAndDeletes() {
    SequenceFixture fixture;
    fixture.select({2, 4});
    QTest::keyClick(fixture.lines(), Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(fixture.delegate.take(),
             QStringList{"reloadMacros()"} +
                 SequenceFixture::edited({keyEvent(true, 0, keyOfA), keyEvent(false, 200, keyOfA)}));
    QVERIFY(macroClipboard::events() == (Events{keyEvent(true, 100, keyOfB), keyEvent(false, 50, keyOfB)}));
  }

  void pastedEventsStandBehindTheSelectedOnesAndAreSelected() {
    SequenceFixture fixture;
    macroClipboard::put({keyEvent(true, 7, keyOfC), keyEvent(false, 8, keyOfC)});
    fixture.select({2});
    Events expected = SequenceFixture::nested();
    expected.insert(expected.begin() + 2, {keyEvent(true, 7, keyOfC), keyEvent(false, 8, keyOfC)});
    fixture.delegate.onCall = [&](const QString& call) {
      if (call.startsWith(QLatin1String("replaceSequence"))) fixture.take(0, expected);
      fixture.serve(call);
    };
    QTest::keyClick(fixture.lines(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(expected));
    QVERIFY(fixture.selected() == (std::vector<int>{4, 6}));
  }

  void eventsArePastedIntoAnotherMacroOfAnotherWindow() {
    SequenceFixture one;
    one.select({2, 4});
    QTest::keyClick(one.lines(), Qt::Key_C, Qt::ControlModifier);
    SequenceFixture other;
    other.selectMacro(1);
    QTest::keyClick(other.lines(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(other.delegate.take(),
             SequenceFixture::edited({keyEvent(true, 100, keyOfB), keyEvent(false, 50, keyOfB)}, 1, "Greeting"));
  }

  void aTextOfAnotherProgramIsOfferedToBeTyped() {
    SequenceFixture fixture;
    fixture.select({2});
    QApplication::clipboard()->setText(QStringLiteral("a\nb"));
    QTest::keyClick(fixture.lines(), Qt::Key_V, Qt::ControlModifier);
    auto* text = fixture.find<QLineEdit>("mTypedText");
    QVERIFY(text->isVisible());
    QCOMPARE(text->text(), QStringLiteral("a\nb"));
    QCOMPARE(fixture.find<QLabel>("mTypedTextNote")->text(),
             QStringLiteral("Events: 6. Line breaks are typed as Return."));
    QCOMPARE(fixture.delegate.take(), QStringList());
    QTest::keyClick(text, Qt::Key_Return);
    Events expected = SequenceFixture::nested();
    constexpr int returnKey = 40;
    expected.insert(expected.begin() + 2,
                    {keyEvent(true, 15, keyOfA), keyEvent(false, 15, keyOfA), keyEvent(true, 15, returnKey),
                     keyEvent(false, 15, returnKey), keyEvent(true, 15, keyOfB), keyEvent(false, 15, keyOfB)});
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(expected));
    QCOMPARE(fixture.beeps, 0);
  }

  void anEmptyTextIsNothingToPaste() {
    SequenceFixture fixture;
    QApplication::clipboard()->setText(QString());
    QTest::keyClick(fixture.lines(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.beeps, 1);
  }

  void withoutCopiedEventsPastingSendsNothingAndSaysWhy() {
    SequenceFixture fixture;
    QTest::keyClick(fixture.lines(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.beeps, 1);
    QMenu menu;
    fixture.tab->fillMacroDetailsMenu(menu);
    QCOMPARE(MacrosFixture::itemOf(menu, tags::Paste)->toolTip(),
             QStringLiteral("Copy or cut events first, or a text in another program"));
    // Of the right type, and damaged.
    putBytes("nothing of the kind");
    QTest::keyClick(fixture.lines(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.beeps, 2);
  }
};

SKARN_QTEST(MacroClipboardTest)
#include "MacroClipboard_test.moc"
