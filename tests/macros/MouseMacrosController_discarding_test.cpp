// While it records, the tab tells how much and how long, and the recording can be thrown away.
#include <QLabel>
#include <QRegularExpression>

#include "macros/SequenceFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QString progress(MacrosFixture& fixture) {
  return fixture.find<QLabel>("mRecordingProgress")->text();
}

}  // namespace

class MouseMacrosControllerDiscardingTest : public QObject {
  Q_OBJECT

 private:
  static void discardRecording(SequenceFixture& fixture) {
    fixture.click("mRecordMacroDetails");
    fixture.record(PropertyList::array({"Key Press Z"}));
    fixture.click("mDiscardRecording");
    fixture.delegate.take();
  }

 private slots:
  void aRecordingTellsItsEventsAndItsTime() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    QVERIFY(!fixture.find("mRecordingProgress")->isVisible());
    fixture.click("mRecordMacroDetails");
    QVERIFY(fixture.find("mRecordingProgress")->isVisible());
    QVERIFY(progress(fixture).startsWith(QStringLiteral("Events: 0, 0:")));
    fixture.record(linesOfEvents(3));
    QVERIFY(progress(fixture).startsWith(QStringLiteral("Events: 3, 0:")));
    QTRY_VERIFY(!progress(fixture).endsWith(QStringLiteral("0:00")));
    fixture.click("mRecordMacroDetails");
    QVERIFY(!fixture.find("mRecordingProgress")->isVisible());
  }

  void anAppendCountsWhatIsNew() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mAddMacroDetails");
    QVERIFY(progress(fixture).startsWith(QStringLiteral("Events: 0, 0:")));
    fixture.record(PropertyList::array({"0.010 seconds delay\n", "Key Press Z"}));
    QVERIFY(progress(fixture).startsWith(QStringLiteral("Events: 1, 0:")));
  }

  void whatWasUnderWayAtADiscardIsNotShown() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    const auto lines = fixture.tab->mMacroDetailsArray();
    fixture.click("mRecordMacroDetails");
    fixture.click("mDiscardRecording");
    for (const char* late : {"Key Press Left Shift", "Key Release Left Shift"})
      fixture.record(PropertyList::array({late}));
    QCOMPARE(fixture.tab->mMacroDetailsArray(), lines);
    // The next recording is shown again.
    fixture.click("mRecordMacroDetails");
    fixture.record(linesOfEvents(2));
    QCOMPARE(fixture.tab->mMacroDetailsArray(), linesOfEvents(2));
  }

  void discardEndsTheRecordingWithoutSavingIt_data() {
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("a new one") << QByteArray("mRecordMacroDetails");
    QTest::newRow("an appended one") << QByteArray("mAddMacroDetails");
  }
  void discardEndsTheRecordingWithoutSavingIt() {
    QFETCH(QByteArray, button);
    MacrosFixture fixture;
    fixture.selectMacro(0);
    QVERIFY(!fixture.find("mDiscardRecording")->isVisible());
    fixture.click(button.constData());
    fixture.record(PropertyList::array({"0.010 seconds delay\n", "Key Press Z"}));
    fixture.delegate.take();
    fixture.click("mDiscardRecording");
    QCOMPARE(fixture.delegate.take(), (QStringList{"stopMacroRecording()", "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(fixture.alert() == nullptr);
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QVERIFY(!fixture.tab->mIsRecording());
    QVERIFY(!fixture.find("mDiscardRecording")->isVisible());
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(3));
    // The last batch, that follows the stop, is not shown.
    fixture.record(PropertyList::array({"0.010 seconds delay\n", "Key Release Z"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(3));
    // The next recording is a new one.
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(NO, 0)"});
  }

  void aDiscardedRecordingCanBeSavedAfterAll_data() {
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("saved");
    QTest::newRow("a new one") << QByteArray("mRecordMacroDetails") << "saveRecordedEventsForMacroAtIndex(0, NO)";
    QTest::newRow("an appended one") << QByteArray("mAddMacroDetails") << "saveRecordedEventsForMacroAtIndex(0, YES)";
  }
  void aDiscardedRecordingCanBeSavedAfterAll() {
    QFETCH(QByteArray, button);
    QFETCH(QString, saved);
    SequenceFixture fixture;
    QVERIFY(!fixture.find("mUndoDiscard")->isVisible());
    fixture.click(button.constData());
    fixture.record(PropertyList::array({"0.010 seconds delay\n", "Key Press Z"}));
    fixture.click("mDiscardRecording");
    fixture.delegate.take();
    QVERIFY(fixture.find("mUndoDiscard")->isVisible());
    QCOMPARE(progress(fixture), QStringLiteral("Recording discarded"));
    fixture.click("mUndoDiscard");
    QCOMPARE(fixture.delegate.take(), (QStringList{"reloadMacros()", saved, "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(!fixture.find("mUndoDiscard")->isVisible());
  }

  void aDiscardedRecordingIsNotOfferedForAMacroThatHasOtherEventsByNow() {
    SequenceFixture fixture;
    discardRecording(fixture);
    QVERIFY(fixture.find("mUndoDiscard")->isVisible());
    fixture.take(0, {keyEvent(true, 0, keyOfC)});
    fixture.serve({});
    fixture.reload(fixture.engine);
    QCOMPARE(fixture.delegate.take(), QStringList{"getMacroDetailsForMacroAtIndex(0)"});
    QVERIFY(!fixture.find("mUndoDiscard")->isVisible());
    QVERIFY(!fixture.find("mRecordingProgress")->isVisible());
    // Until it is again as it was, as an undo makes it.
    fixture.take(0, SequenceFixture::nested());
    fixture.serve({});
    fixture.reload(fixture.engine);
    QVERIFY(fixture.find("mUndoDiscard")->isVisible());
  }

  void aDiscardedRecordingIsNeverSavedOverANewerChange() {
    SequenceFixture fixture;
    discardRecording(fixture);
    // Another program's, of which the news has not come yet.
    fixture.take(0, {keyEvent(true, 0, keyOfC)});
    fixture.click("mUndoDiscard");
    const QStringList calls = fixture.delegate.take();
    QCOMPARE(calls.first(), QStringLiteral("reloadMacros()"));
    QVERIFY(calls.filter(QStringLiteral("save")).isEmpty());
    QVERIFY(fixture.alert() != nullptr);
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOf(fixture.engine.at(0)));
    QVERIFY(!fixture.find("mUndoDiscard")->isVisible());
  }

  void aDiscardCanNoLongerBeUndoneWhenAnotherRecordingHasBegunOrItsMacroIsNotTheSelectedOne() {
    SequenceFixture fixture;
    const auto discard = [&](bool hasEvents) {
      fixture.click("mRecordMacroDetails");
      if (hasEvents) fixture.record(linesOfEvents(1));
      fixture.click("mDiscardRecording");
    };
    discard(false);
    QVERIFY(!fixture.find("mUndoDiscard")->isVisible());
    discard(true);
    QVERIFY(fixture.find("mUndoDiscard")->isVisible());
    fixture.selectMacro(1);
    QVERIFY(!fixture.find("mUndoDiscard")->isVisible());
    fixture.selectMacro(0);
    QVERIFY(fixture.find("mUndoDiscard")->isVisible());
    discard(false);
    QVERIFY(!fixture.find("mUndoDiscard")->isVisible());
  }

  void withoutTheMouseADiscardedRecordingIsNotSaved() {
    SequenceFixture fixture;
    discardRecording(fixture);
    const auto* undo = fixture.find("mUndoDiscard");
    QCOMPARE(undo->toolTip(), QStringLiteral("Save the discarded recording after all"));
    fixture.tab->enableControlsState(false);
    QVERIFY(undo->isVisible());
    QVERIFY(!undo->isEnabled());
    QCOMPARE(undo->toolTip(), localized("lkeyNoMouseConnected"));
    fixture.click("mUndoDiscard");
    QCOMPARE(fixture.delegate.take(), QStringList());
    fixture.tab->enableControlsState(true);
    QVERIFY(undo->isEnabled());
    QCOMPARE(undo->toolTip(), QStringLiteral("Save the discarded recording after all"));
  }

  void withoutARecordingThereIsNothingToDiscard() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->clickDiscardRecording();
    QCOMPARE(fixture.delegate.take(), QStringList());
  }
};

SKARN_QTEST(MouseMacrosControllerDiscardingTest)
#include "MouseMacrosController_discarding_test.moc"
