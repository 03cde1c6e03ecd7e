// The sheet for an event, which catches a key.
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "macros/EditingFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QString updated(int line, const PropertyList& event) {
  return QStringLiteral("updateSequenceInfo(0, %1, %2)").arg(line).arg(RecordingMacros::text(event));
}

}  // namespace

class MouseMacrosControllerEventSheetTest : public QObject {
  Q_OBJECT

 private slots:
  void anEventIsEditedInASheetWhileAKeyIsCaptured() {
    EditingFixture fixture(2);
    QStringList seen;
    fixture.delegate.onCall = [&](const QString& call) {
      seen << call << (fixture.isShown("mEditEventWindow") ? "open" : "closed");
    };
    fixture.edit();
    QCOMPARE(seen, (QStringList{"getSequenceDetails(0, 2)", "open", "startEditHID()", "open"}));
    QVERIFY(!fixture.isShown("mEditDelayWindow"));
    QCOMPARE(fixture.find("mEditEventWindow")->windowModality(), Qt::WindowModal);
    QCOMPARE(fixture.key(), QString());
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Stop"));
    QVERIFY(fixture.tab->mRecordMacroDetails()->isChecked());
    QVERIFY(!fixture.tab->mIsRecording());
    QCOMPARE(fixture.enabled(), (QStringList{"mMacroDetailsTableView", "mRecordMacroDetails"}));
  }

  void okPutsTheCaughtKeyInPlaceOfTheOld_data() {
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifier");
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a press") << 1 << 7 << 4 << 0 << 4 << "A";
    QTest::newRow("a release") << 0 << 7 << 40 << 0 << 40 << "Return";
    QTest::newRow("a mouse button becomes a key") << 1 << 9 << 30 << 0 << 30 << "1";
    QTest::newRow("a modifier alone") << 1 << 7 << 0 << 225 << 225 << "Left Shift";
    QTest::newRow("a key with a modifier") << 1 << 7 << 5 << 225 << 5 << "B";
    QTest::newRow("only the low 8 bits") << 1 << 7 << 0x104 << 0 << 4 << "A";
    QTest::newRow("a key without a name") << 1 << 7 << 50 << 0 << 50 << "";
  }
  void okPutsTheCaughtKeyInPlaceOfTheOld() {
    QFETCH(int, command);
    QFETCH(int, page);
    QFETCH(int, key);
    QFETCH(int, modifier);
    QFETCH(int, stored);
    QFETCH(QString, shown);
    EditingFixture fixture(2);
    fixture.delegate.sequence = eventOf(command, page, 1);
    fixture.edit();
    fixture.delegate.take();
    fixture.press(key, modifier);
    QCOMPARE(fixture.key(), shown);
    QCOMPARE(fixture.delegate.take(), QStringList());
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 2)",
                          updated(2, eventOf(command, 7, stored)), "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(!fixture.isShown("mEditEventWindow"));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), 2);
  }

  void theLastOfSeveralKeysCounts() {
    EditingFixture fixture(0);
    fixture.edit();
    fixture.press(4);
    fixture.press(6);
    QCOMPARE(fixture.key(), QStringLiteral("C"));
    fixture.delegate.take();
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take().at(2), updated(0, eventOf(1, 7, 6)));
  }

  void theEventIsReadAfreshWhenItIsStored() {
    EditingFixture fixture(0);
    fixture.edit();
    fixture.press(4);
    fixture.delegate.sequence = eventOf(0, 7, 20);
    fixture.delegate.take();
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take().at(2), updated(0, eventOf(0, 7, 4)));
  }

  void okWithoutAKeyOrWithoutTheEventChangesNothing_data() {
    QTest::addColumn<bool>("hasKey");
    QTest::addColumn<bool>("hasEvent");
    QTest::newRow("no key was caught") << false << true;
    QTest::newRow("the event is gone") << true << false;
  }
  void okWithoutAKeyOrWithoutTheEventChangesNothing() {
    QFETCH(bool, hasKey);
    QFETCH(bool, hasEvent);
    EditingFixture fixture(2);
    // A key of an earlier sheet does not count.
    fixture.press(4);
    fixture.edit();
    if (hasKey) fixture.press(5);
    if (!hasEvent) fixture.delegate.sequence = PropertyList::dictionary();
    fixture.delegate.take();
    fixture.tab->clickMacroEventOK();
    QCOMPARE(fixture.delegate.take(), (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 2)"}));
    QVERIFY(!fixture.isShown("mEditEventWindow"));
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
  }

  void okOfTheEventSheetIsOfferedFromTheStart() {
    EditingFixture fixture(2);
    for (int time = 0; time < 2; ++time) {
      fixture.edit();
      QVERIFY(fixture.find<QPushButton>("mMacroEventEditOK")->isEnabled());
      QVERIFY(fixture.field().isListening());
      QCOMPARE(fixture.field().placeholderText(), QStringLiteral("Press a key…"));
      fixture.delegate.take();
      fixture.click("mMacroEventEditOK");
      // Without a key the event stays as it is.
      QCOMPARE(fixture.delegate.take(), (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 2)"}));
      QVERIFY(!fixture.isShown("mEditEventWindow"));
    }
  }

  void aReportWithoutAKeyForgetsTheKey_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("no key and no modifier") << 0;
    QTest::newRow("nothing in the low 8 bits") << 0x100;
  }
  void aReportWithoutAKeyForgetsTheKey() {
    QFETCH(int, key);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.press(4);
    fixture.press(key);
    QCOMPARE(fixture.key(), QString());
    QVERIFY(fixture.field().isListening());
    QVERIFY(fixture.isShown("mEditEventWindow"));
  }

  void anyKeyIsCaughtAndConfirmedByReturn_data() {
    QTest::addColumn<int>("usage");
    QTest::addColumn<QString>("shown");
    QTest::newRow("A") << 4 << "A";
    QTest::newRow("Return") << 40 << "Return";
    QTest::newRow("Escape") << 41 << "Escape";
    QTest::newRow("Tab") << 43 << "Tab";
    QTest::newRow("Space") << 44 << "Space";
    QTest::newRow("a key without a name") << 50 << "";
  }
  void anyKeyIsCaughtAndConfirmedByReturn() {
    QFETCH(int, usage);
    QFETCH(QString, shown);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.delegate.take();
    fixture.press(usage);
    fixture.field().noteTyped(false, true);
    QVERIFY(fixture.isShown("mEditEventWindow") && !fixture.field().isListening());
    QCOMPARE(fixture.key(), shown);
    QCOMPARE(fixture.field().placeholderText(), QStringLiteral("A key without a name"));
    QCOMPARE(fixture.delegate.take(), QStringList());
    QTest::keyClick(fixture.find("mEditEventWindow")->focusWidget(), Qt::Key_Return);
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 2)", updated(2, eventOf(1, 7, usage)),
                          "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(!fixture.isShown("mEditEventWindow"));
  }

  void aKeyCanBeChosenFromTheListOfAll() {
    EditingFixture fixture(2);
    fixture.edit();
    fixture.delegate.take();
    fixture.click("mMacroEventChoose");
    QVERIFY(!fixture.field().isListening());
    fixture.find<QLineEdit>("mKeySearch")->setText(QStringLiteral("Right Command"));
    fixture.click("mKeyChooserOK");
    QCOMPARE(fixture.key(), QStringLiteral("Right Command"));
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take().at(2), updated(2, eventOf(1, 7, 231)));
  }

  void escapeCancelsWhateverWasReported_data() {
    QTest::addColumn<bool>("isReported");
    QTest::newRow("reported") << true;
    QTest::newRow("not reported") << false;
  }
  void escapeCancelsWhateverWasReported() {
    QFETCH(bool, isReported);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.delegate.take();
    if (isReported) fixture.press(41);
    fixture.field().stopListening();
    QTest::keyClick(fixture.find("mEditEventWindow"), Qt::Key_Escape);
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"});
    QVERIFY(!fixture.isShown("mEditEventWindow"));
  }

  void whatIsReportedIsTakenListeningOrNot() {
    EditingFixture fixture(2);
    fixture.edit();
    fixture.press(4);
    fixture.field().noteTyped(false, true);
    fixture.press(7);
    QCOMPARE(fixture.key(), QStringLiteral("D"));
    fixture.click("mMacroEventAgain");
    fixture.press(44);
    QCOMPARE(fixture.key(), QStringLiteral("Space"));
    fixture.delegate.take();
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take().at(2), updated(2, eventOf(1, 7, 44)));
  }

  void cancellingTheEventSheetStopsTheCapture_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("the desktop's close button") << 2;
  }
  void cancellingTheEventSheetStopsTheCapture() {
    QFETCH(int, way);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.press(4);
    fixture.delegate.take();
    if (way == 0) fixture.click("mMacroEventEditCancel");
    if (way == 1) QTest::keyClick(fixture.find("mEditEventWindow"), Qt::Key_Escape);
    if (way == 2) fixture.find("mEditEventWindow")->close();
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"});
    QVERIFY(!fixture.isShown("mEditEventWindow"));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    // Nothing is left to stop.
    fixture.tab->stopAllMacroRecording();
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void aLostMouseEndsTheCaptureAndClosesTheSheet() {
    EditingFixture fixture(2);
    fixture.edit();
    fixture.delegate.take();
    fixture.tab->stopAllMacroRecording();
    fixture.tab->enableControlsState(false);
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"});
    QVERIFY(!fixture.isShown("mEditEventWindow"));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    fixture.tab->enableControlsState(true);
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    // The next recording is an ordinary one.
    fixture.click("mRecordMacroDetails");
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take().mid(0, 2), (QStringList{"startMacroRecording(NO, 0)", "stopMacroRecording()"}));
  }

  void aKeyCaughtWithoutTheSheetIsStoredAtOnceAndKeepsThePage() {
    EditingFixture fixture(2);
    fixture.delegate.sequence = eventOf(1, 9, 1);
    fixture.edit();
    fixture.find("mEditEventWindow")->hide();
    fixture.delegate.take();
    fixture.press(5);
    QCOMPARE(fixture.delegate.take(), (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 2)",
                                                   updated(2, eventOf(1, 9, 5)), "getMacroDetailsForMacroAtIndex(0)"}));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    fixture.press(6);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void aKeyCaughtWithoutTheSheetIsDroppedWhenItsRowIsGone() {
    EditingFixture fixture(4);
    fixture.edit();
    fixture.find("mEditEventWindow")->hide();
    fixture.tab->updateSelectedMacroWithMacroDetails(linesOfEvents(1));
    fixture.delegate.take();
    fixture.press(5);
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"});
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
  }

  void aKeyCaughtForNobodySendsNothing() {
    EditingFixture fixture(2);
    fixture.press(4);
    fixture.click("mRecordMacroDetails");
    fixture.press(4);
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(NO, 0)"});
  }

  void aReloadWhileTheSheetIsOpenLeavesItOpen() {
    EditingFixture fixture(2);
    fixture.edit();
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"Fireball", "Greeting"}));
    fixture.tab->refreshTableDisplay();
    QVERIFY(fixture.isShown("mEditEventWindow"));
    QCOMPARE(fixture.enabled(), (QStringList{"mMacroDetailsTableView", "mRecordMacroDetails"}));
    fixture.press(4);
    fixture.delegate.take();
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take().size(), 4);
  }
};

SKARN_QTEST(MouseMacrosControllerEventSheetTest)
#include "MouseMacrosController_event_sheet_test.moc"
