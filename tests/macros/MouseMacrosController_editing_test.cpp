// The lines of a macro: deleting them, delays and the delay sheet, events and the event sheet.
#include <QClipboard>
#include <QDialog>

#include "macros/MacrosFixture.h"
#include "macros/NumberOnlyTextField.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

PropertyList eventOf(int command, int page, int argument) {
  return PropertyList::dictionary(
      {{"command", command}, {"delay", 20}, {"page", page}, {"argument", argument}, {"note", "kept"}});
}

QString updated(int line, const PropertyList& event) {
  return QStringLiteral("updateSequenceInfo(0, %1, %2)").arg(line).arg(RecordingMacros::text(event));
}

// A fixture whose first macro and a line of it are selected, with the sheet for that line.
struct EditingFixture : MacrosFixture {
  explicit EditingFixture(int line) {
    delegate.sequence = eventOf(1, 7, 9);
    selectMacro(0);
    clickRow(lines(), line);
  }
  void edit() { chooseFromGear("mSettingsMacroDetails", 2); }
  bool isShown(const char* sheet) { return find(sheet)->isVisible(); }
  QLineEdit& delay() { return *find<QLineEdit>("mInputMacroDelay"); }
  QLineEdit& field() { return *find<QLineEdit>("mInputMacroEvent"); }
  QString key() { return field().text(); }
};

}  // namespace

class MacrosEditingTest : public QObject {
  Q_OBJECT

 private slots:
  // --- Deleting

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
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"removeAllEventsForMacroAtIndex(0)", "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array());
    QVERIFY(!fixture.find("mDeleteMacroDetails")->isEnabled());
  }

  // --- All delays

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

  // --- The delay sheet

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
    QTest::keyClick(&fixture.delay(), Qt::Key_Return);
    QVERIFY(!wasOpen);
    QCOMPARE(fixture.delegate.take().constFirst(), QStringLiteral("setNewDelay(0, 1, 0)"));
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

  // --- The event sheet

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

  void okOfTheEventSheetWaitsForAKey() {
    EditingFixture fixture(2);
    for (int time = 0; time < 2; ++time) {
      fixture.edit();
      auto* ok = fixture.find<QPushButton>("mMacroEventEditOK");
      QVERIFY(!ok->isEnabled());
      QCOMPARE(ok->toolTip(), QStringLiteral("No key has been pressed yet"));
      QCOMPARE(fixture.field().placeholderText(), QStringLiteral("Waiting for a key…"));
      fixture.delegate.take();
      QTest::keyClick(fixture.find("mEditEventWindow"), Qt::Key_Return);
      fixture.click("mMacroEventEditOK");
      QVERIFY(fixture.isShown("mEditEventWindow"));
      QCOMPARE(fixture.delegate.take(), QStringList());
      fixture.press(0, 225);
      QVERIFY(ok->isEnabled());
      QCOMPARE(ok->toolTip(), QString());
      fixture.click("mMacroEventEditCancel");
    }
  }

  void aReportWithoutAKeyIsNothingToConfirm_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("no key and no modifier") << 0;
    QTest::newRow("nothing in the low 8 bits") << 0x100;
  }
  void aReportWithoutAKeyIsNothingToConfirm() {
    QFETCH(int, key);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.press(4);
    fixture.press(key);
    QCOMPARE(fixture.key(), QString());
    QVERIFY(!fixture.find("mMacroEventEditOK")->isEnabled());
    QVERIFY(fixture.isShown("mEditEventWindow"));
  }

  void anyKeyButEscapeIsCaughtAndConfirmedByReturn_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("usage");
    QTest::addColumn<QString>("shown");
    QTest::newRow("A") << int(Qt::Key_A) << 4 << "A";
    QTest::newRow("Return") << int(Qt::Key_Return) << 40 << "Return";
    QTest::newRow("Enter") << int(Qt::Key_Enter) << 88 << "Numpad Enter";
    QTest::newRow("Tab") << int(Qt::Key_Tab) << 43 << "Tab";
    QTest::newRow("Space") << int(Qt::Key_Space) << 44 << "Space";
    QTest::newRow("a key without a name") << int(Qt::Key_Less) << 50 << "";
  }
  void anyKeyButEscapeIsCaughtAndConfirmedByReturn() {
    QFETCH(int, key);
    QFETCH(int, usage);
    QFETCH(QString, shown);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.delegate.take();
    auto* ok = fixture.find<QPushButton>("mMacroEventEditOK");
    const QWidget* sheet = fixture.find("mEditEventWindow");
    // The Return that chose the entry is let go here; it is none of the sheet's.
    QTest::keyRelease(&fixture.field(), Qt::Key_Return);
    fixture.press(usage);
    QCOMPARE(sheet->focusWidget(), &fixture.field());
    QTest::keyClick(&fixture.field(), static_cast<Qt::Key>(key));
    QVERIFY(fixture.isShown("mEditEventWindow"));
    QCOMPARE(fixture.key(), shown);
    QCOMPARE(fixture.field().placeholderText(), QStringLiteral("A key without a name"));
    QCOMPARE(sheet->focusWidget(), ok);
    // Now Return confirms, and is not taken for the key although it is reported too.
    fixture.press(40);
    QCOMPARE(fixture.key(), shown);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QTest::keyClick(ok, Qt::Key_Return);
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"stopSingleKeyRecording()", "getSequenceDetails(0, 2)", updated(2, eventOf(1, 7, usage)),
                          "getMacroDetailsForMacroAtIndex(0)"}));
    QVERIFY(!fixture.isShown("mEditEventWindow"));
  }

  void escapeInTheKeyFieldCancelsWhetherReportedOrNot_data() {
    QTest::addColumn<bool>("isReported");
    QTest::newRow("reported") << true;
    QTest::newRow("not reported") << false;
  }
  void escapeInTheKeyFieldCancelsWhetherReportedOrNot() {
    QFETCH(bool, isReported);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.delegate.take();
    if (isReported) fixture.press(41);
    QTest::keyClick(&fixture.field(), Qt::Key_Escape);
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"});
    QVERIFY(!fixture.isShown("mEditEventWindow"));
  }

  void onAButtonTheKeysThatWorkItAreIgnored_data() {
    QTest::addColumn<QString>("button");
    QTest::newRow("OK") << "mMacroEventEditOK";
    QTest::newRow("Cancel") << "mMacroEventEditCancel";
  }
  void onAButtonTheKeysThatWorkItAreIgnored() {
    QFETCH(QString, button);
    EditingFixture fixture(2);
    fixture.edit();
    fixture.press(4);
    fixture.find(qPrintable(button))->setFocus();
    for (const int usage : {40, 41, 43, 44, 79, 80, 81, 82, 88}) {
      fixture.press(0, 225);
      fixture.press(usage, 2);
      QCOMPARE(fixture.key(), QStringLiteral("A"));
    }
    fixture.press(7);
    QCOMPARE(fixture.key(), QStringLiteral("D"));
    // Back in the field every key counts again.
    fixture.field().setFocus();
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

  void returnAndADoubleClickEditALine() {
    EditingFixture fixture(1);
    QTest::keyClick(fixture.lines(), Qt::Key_Return);
    QVERIFY(fixture.isShown("mEditDelayWindow"));
    fixture.click("mMacroDelayCancel");
    const QPoint place = fixture.placeOf(fixture.lines(), 2);
    QTest::mouseClick(fixture.lines()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(fixture.lines()->viewport(), Qt::LeftButton, {}, place);
    QVERIFY(fixture.isShown("mEditEventWindow"));
  }

  void duringARecordingReturnEditsNothing() {
    EditingFixture fixture(1);
    fixture.click("mAddMacroDetails");
    fixture.clickRow(fixture.lines(), 1);
    QTest::keyClick(fixture.lines(), Qt::Key_Return);
    QVERIFY(!fixture.isShown("mEditDelayWindow"));
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(YES, 0)"});
  }

  void withoutADelegateNoSheetIsOpened() {
    for (const int line : {1, 2}) {
      EditingFixture fixture(line);
      fixture.tab->setMMacroDelegate(nullptr);
      QTest::keyClick(fixture.lines(), Qt::Key_Return);
      QVERIFY(!fixture.isShown("mEditDelayWindow"));
      QVERIFY(!fixture.isShown("mEditEventWindow"));
    }
  }

  void noLineSelectedOpensNoSheet() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->clickMacroDetailsSettingsMenuItem(2);
    QVERIFY(!fixture.find("mEditDelayWindow")->isVisible());
    QVERIFY(!fixture.find("mEditEventWindow")->isVisible());
    QCOMPARE(fixture.delegate.take(), QStringList());
  }
};

SKARN_QTEST(MacrosEditingTest)
#include "MouseMacrosController_editing_test.moc"
