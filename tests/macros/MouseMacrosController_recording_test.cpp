// The Macros tab records, appends and stops.
#include <QLabel>
#include <QMessageBox>

#include "macros/MacrosFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const QStringList whileRecording{"mMacroDetailsTableView", "mRecordMacroDetails"};

}  // namespace

Q_DECLARE_METATYPE(std::function<void(MacrosFixture&)>)

class MouseMacrosControllerRecordingTest : public QObject {
  Q_OBJECT

 private slots:
  void theTwoNotificationsAreObservedOnce() {
    MacrosFixture fixture;
    QVERIFY(fixture.center.observed() == (std::vector<std::string>{"MacroSequence273", "SingleKeyEvent1050"}));
    RecordingNotificationCenter other;
    fixture.tab->setMNotificationCenter(&other);
    QVERIFY(fixture.center.observed().empty());
    QCOMPARE(other.observed().size(), std::size_t{2});
    fixture.tab->setMNotificationCenter(nullptr);
    QVERIFY(other.observed().empty());
  }

  void theButtonSaysStopUntilTheTabIsFirstShown() {
    MouseMacrosController tab;
    QCOMPARE(tab.mRecordMacroDetails()->text(), QStringLiteral("Stop"));
    QVERIFY(tab.mRecordMacroDetails()->isChecked());
    tab.tabViewDidSelectTabViewItem(&tab);
    QCOMPARE(tab.mRecordMacroDetails()->text(), QStringLiteral("Record"));
    QVERIFY(!tab.mRecordMacroDetails()->isChecked());
  }

  void recordStartsANewRecordingOfTheSelectedMacro() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.clickRow(fixture.lines(), 2);
    QStringList seen;
    fixture.delegate.onCall = [&](const QString&) {
      seen << fixture.recordTitle() << QString::number(fixture.lines()->model()->rowCount());
    };
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(NO, 0)"});
    QCOMPARE(seen, (QStringList{"Stop", "0"}));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Stop"));
    QVERIFY(fixture.tab->mRecordMacroDetails()->isChecked());
    QVERIFY(fixture.tab->mIsRecording());
    QCOMPARE(fixture.enabled(), whileRecording);
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array());
  }

  void stopSavesTheRecordingAndFetchesItsLines() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.click("mRecordMacroDetails");
    fixture.delegate.take();
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take(), (QStringList{"stopMacroRecording()", "saveRecordedEventsForMacroAtIndex(1, NO)",
                                                   "getMacroDetailsForMacroAtIndex(1)"}));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QVERIFY(!fixture.tab->mRecordMacroDetails()->isChecked());
    QVERIFY(!fixture.tab->mIsRecording());
    QCOMPARE(fixture.enabled(), MacrosFixture::without(MacrosFixture::allControls(), {"mDeleteMacroDetails"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(1));
  }

  void appendRecordsAtTheEndOfTheMacroAndKeepsItsLines() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.clickRow(fixture.lines(), 1);
    fixture.click("mAddMacroDetails");
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(YES, 0)"});
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Stop"));
    QCOMPARE(fixture.enabled(), whileRecording);
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), -1);
    fixture.record(PropertyList::array({"0.010 seconds delay\n", "Key Press Z"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() ==
            linesOfEvents(3).appending("0.010 seconds delay\n").appending("Key Press Z"));
  }

  void stopAfterAnAppendSendsTheAppendFlag() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mAddMacroDetails");
    fixture.delegate.take();
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take(), (QStringList{"stopMacroRecording()", "saveRecordedEventsForMacroAtIndex(0, YES)",
                                                   "getMacroDetailsForMacroAtIndex(0)"}));
    // The next recording is a new one.
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(NO, 0)"});
  }

  void recordedLinesAreAppendedAsTheyComeAndTheTableFollows() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mRecordMacroDetails");
    fixture.record(linesOfEvents(1));
    for (int batch = 0; batch < 100; ++batch) {
      fixture.record(PropertyList::array({"0.020 seconds delay\n", "Left Button down\n"}));
    }
    QCOMPARE(fixture.lines()->model()->rowCount(), 201);
    QCOMPARE(MacrosFixture::rowsOf(fixture.lines()).mid(0, 3),
             (QStringList{"Key Press 0", "0.020 seconds delay\n", "Left Button down\n"}));
    const QModelIndex last = fixture.lines()->model()->index(200, 0);
    QVERIFY(fixture.lines()->viewport()->rect().contains(fixture.lines()->visualRect(last).center()));
  }

  void theFirstBatchAfterAStopIsSwallowedWhole() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.click("mRecordMacroDetails");
    fixture.click("mRecordMacroDetails");
    fixture.record(PropertyList::array({"Key Press A", "0.020 seconds delay\n", "Key Release A"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(1));
    fixture.record(PropertyList::array({"0.020 seconds delay\n", "Key Press B"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() ==
            linesOfEvents(1).appending("0.020 seconds delay\n").appending("Key Press B"));
  }

  void severalBatchesThatWereUnderWayAtAStopAreShownOnce() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mRecordMacroDetails");
    const PropertyList all = linesOfEvents(3);
    fixture.delegate.lines[0] = all;
    fixture.click("mRecordMacroDetails");
    fixture.record(PropertyList::array({all.at(0)}));
    fixture.record(PropertyList::array({all.at(1), all.at(2)}));
    fixture.record(PropertyList::array({all.at(3), all.at(4)}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == all);
  }

  void aRecordingBegunAfterAStopShowsItsFirstBatch_data() {
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("record") << QByteArray("mRecordMacroDetails");
    QTest::newRow("append") << QByteArray("mAddMacroDetails");
  }
  void aRecordingBegunAfterAStopShowsItsFirstBatch() {
    QFETCH(QByteArray, button);
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.click("mRecordMacroDetails");
    fixture.click("mRecordMacroDetails");
    fixture.click(button.constData());
    fixture.record(PropertyList::array({"Key Press A"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array({"Key Press A"}));
  }

  void linesOfAnotherProgramsRecordingAreNotTakenForThoseOfThisOne() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.click("mRecordMacroDetails");
    const auto tell = [&](const char* client, const char* line) {
      const PropertyList lines = PropertyList::array({line});
      fixture.center.post("MacroSequence273", "",
                          PropertyList::dictionary({{"messagesArray", lines}, {"ResponseMsgPortName", client}}));
    };
    tell("SkarnConfiguratorReplyPort", "Key Press A");
    tell("VornCtlReplyPort7", "Key Press B");
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array({"Key Press A"}));
    // Nor for the last batch after a stop.
    fixture.click("mRecordMacroDetails");
    tell("VornCtlReplyPort7", "Key Press C");
    tell("SkarnConfiguratorReplyPort", "Key Release A");
    QVERIFY(fixture.tab->mMacroDetailsArray() == PropertyList::array({}));
  }

  void aRecordingThatAnotherProgramReplacesEndsAndSaysSo() {
    MacrosFixture fixture({"A", "B", "C"});
    fixture.selectMacro(1);
    fixture.click("mRecordMacroDetails");
    fixture.delegate.take();
    fixture.center.post(
        "MacroSequence273", "",
        PropertyList::dictionary(
            {{"messagesArray", PropertyList::array()}, {"ResponseMsgPortName", "VornCtlReplyPort7"}, {"macroID", 0}}));
    QVERIFY(!fixture.tab->mIsRecording());
    const auto* alert = fixture.window.findChild<QMessageBox*>(QStringLiteral("alert"));
    QVERIFY(alert != nullptr);
    QCOMPARE(alert->text(), localized("lkeyRecordingLostTitle"));
    QCOMPARE(alert->informativeText(), localized("lkeyRecordingTakenDesc").arg(QLatin1String("B")));
    // What the macro holds is shown again; nothing is stopped or saved, as the recording is another's now.
    QCOMPARE(fixture.delegate.take(), QStringList{"getMacroDetailsForMacroAtIndex(1)"});
  }

  void newsOfAnyShapeAreSurvived() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.click("mRecordMacroDetails");
    fixture.center.post("MacroSequence273", "", {});
    fixture.record(PropertyList("text"));
    fixture.record(PropertyList::array({7, PropertyList()}));
    QCOMPARE(MacrosFixture::rowsOf(fixture.lines()), (QStringList{"", ""}));
    fixture.center.post("SingleKeyEvent1050", "", PropertyList::array({1}));
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(NO, 2)"});
  }

  void eventsInPlaceOfLinesBecomeLines() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.tab->updateSelectedMacroWithMacroDetails(PropertyList::array({macroEvent(1, 4), macroEvent(0, 4)}));
    QVERIFY(fixture.tab->mMacroDetailsArray() ==
            PropertyList::array({"Key Press A", "0.020 seconds delay\n", "Key Release A"}));
  }

  void leavingTheTabStopsAndSavesWhateverRuns_data() {
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("saved");
    QTest::newRow("a recording") << QByteArray("mRecordMacroDetails")
                                 << QStringLiteral("saveRecordedEventsForMacroAtIndex(0, NO)");
    QTest::newRow("an appended recording")
        << QByteArray("mAddMacroDetails") << QStringLiteral("saveRecordedEventsForMacroAtIndex(0, YES)");
  }
  void leavingTheTabStopsAndSavesWhateverRuns() {
    QFETCH(QByteArray, button);
    QFETCH(QString, saved);
    const QStringList stop{"stopMacroRecording()", saved, "getMacroDetailsForMacroAtIndex(0)"};
    QWidget otherPage;
    const QList<std::function<void(MacrosFixture&)>> endings = {
        [&](MacrosFixture& fixture) { fixture.tab->tabViewDidSelectTabViewItem(&otherPage); },
        [](MacrosFixture& fixture) { fixture.tab->stopAllMacroRecording(); },
        [](MacrosFixture& fixture) {
          // As the owner does when the application goes to the background or ends.
          QVERIFY(fixture.tab->mIsRecording());
          fixture.tab->setRecordButtonToStop();
          fixture.tab->clickRecordMacroDetails();
        }};
    for (const auto& end : endings) {
      MacrosFixture fixture;
      fixture.selectMacro(0);
      fixture.click(button.constData());
      fixture.delegate.take();
      end(fixture);
      QCOMPARE(fixture.delegate.take(), stop);
      QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
      QVERIFY(!fixture.tab->mIsRecording());
    }
  }

  void withoutARecordingLeavingTheTabSendsNothing() {
    MacrosFixture fixture;
    QWidget otherPage;
    fixture.selectMacro(0);
    fixture.tab->tabViewDidSelectTabViewItem(&otherPage);
    fixture.tab->stopAllMacroRecording();
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
  }

  void comingBackToTheTabOffersDeletionOnlyForASelectedLine() {
    MacrosFixture fixture;
    QWidget otherPage;
    fixture.selectMacro(0);
    QVERIFY(fixture.find("mDeleteMacroDetails")->isEnabled());
    fixture.tab->tabViewDidSelectTabViewItem(&otherPage);
    fixture.tab->tabViewDidSelectTabViewItem(fixture.tab);
    QVERIFY(!fixture.find("mDeleteMacroDetails")->isEnabled());
    fixture.clickRow(fixture.lines(), 0);
    fixture.tab->tabViewDidSelectTabViewItem(fixture.tab);
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    // The batch that belongs to an earlier recording is not shown.
    fixture.record(PropertyList::array({"Key Press A"}));
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(3));
  }

  void withoutAMouseShowingTheTabEnablesNothing() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->enableControlsState(false);
    fixture.tab->tabViewDidSelectTabViewItem(fixture.tab);
    QCOMPARE(fixture.enabled(), QStringList());
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
  }

  void aMouseThatComesDuringARecordingReleasesNoButton() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mRecordMacroDetails");
    fixture.tab->enableControlsState(true);
    QCOMPARE(fixture.enabled(), whileRecording);
  }

  void aReloadWhileTheEngineSavesLeavesTheTabUsable() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mRecordMacroDetails");
    fixture.delegate.onCall = [&](const QString& call) {
      if (!call.startsWith("save")) return;
      fixture.tab->setMMacrosSettingsArray(macrosNamed({"Fireball", "Other"}));
      fixture.tab->refreshTableDisplay();
    };
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.delegate.take(),
             (QStringList{"startMacroRecording(NO, 0)", "stopMacroRecording()",
                          "saveRecordedEventsForMacroAtIndex(0, NO)", "getMacroDetailsForMacroAtIndex(0)"}));
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()), (QStringList{"Fireball", "Other"}));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
  }

  void aRecordingThatHasEndedWithItsMacroIsNotStoppedAgain() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.click("mRecordMacroDetails");
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"Fireball"}));
    fixture.tab->refreshTableDisplay();
    fixture.tab->stopAllMacroRecording();
    QCOMPARE(fixture.delegate.take().last(), QStringLiteral("startMacroRecording(NO, 2)"));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QVERIFY(fixture.macros()->isEnabled());
  }

  void anEngineThatAnswersNothingLeavesTheTabUsable() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mRecordMacroDetails");
    fixture.delegate.answersDetails = false;
    fixture.record(PropertyList::array({"Key Press A"}));
    fixture.click("mRecordMacroDetails");
    QCOMPARE(fixture.enabled(), MacrosFixture::without(MacrosFixture::allControls(), {"mDeleteMacroDetails"}));
    // What was seen of the recording stays.
    QCOMPARE(MacrosFixture::rowsOf(fixture.lines()), QStringList{"Key Press A"});
  }

  void withoutADelegateTheButtonsDoNothing() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->setMMacroDelegate(nullptr);
    for (const char* button : {"mAddMacro", "mDeleteMacro", "mAddMacroDetails", "mRecordMacroDetails"}) {
      fixture.click(button);
    }
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(MacrosFixture::rowsOf(fixture.macros()).size(), 3);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void theKeyboardAloneStartsARecording() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    QWidget* button = fixture.find("mRecordMacroDetails");
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(NO, 0)"});
    // Where the window takes what is typed, the button cannot be reached by it.
    QVERIFY(button->toolTip().contains(QStringLiteral("Pause")));
    const auto* hint = fixture.find<QLabel>("mNoEventsLabel");
    QCOMPARE(hint->text(), QStringLiteral("Type what the macro shall do."));
    fixture.click("mRecordMacroDetails");
    QCOMPARE(hint->text(), QStringLiteral("Press Record and type, or begin with one of these:"));
    QCOMPARE(button->toolTip(), QString());
  }

  void aRecordingFollowsItsMacro() {
    MacrosFixture fixture({"A", "B", "C"});
    fixture.selectMacro(2);
    fixture.find<QAbstractButton>("mRecordMacroDetails")->click();
    fixture.delegate.take();
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"B", "C"}));
    fixture.tab->refreshTableDisplay();
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 1);
    QCOMPARE(fixture.delegate.take(), QStringList());
    // Another name of the same macro is no loss.
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"B", "D"}));
    fixture.tab->refreshTableDisplay();
    QVERIFY(fixture.tab->mIsRecording());
    QVERIFY(fixture.find("mRecordMacroDetails")->isEnabled());
    fixture.find<QAbstractButton>("mRecordMacroDetails")->click();
    QCOMPARE(fixture.delegate.take(), QStringList({"stopMacroRecording()", "saveRecordedEventsForMacroAtIndex(1, NO)",
                                                   "getMacroDetailsForMacroAtIndex(1)"}));
  }

  void aRecordingWhoseMacroIsGoneEndsAndSaysSo() {
    for (const char* button : {"mRecordMacroDetails", "mAddMacroDetails"}) {
      MacrosFixture fixture({"A", "B", "C"});
      fixture.selectMacro(1);
      fixture.find<QAbstractButton>(button)->click();
      fixture.delegate.take();
      fixture.tab->setMMacrosSettingsArray(macrosNamed({"A", "C"}));
      fixture.tab->refreshTableDisplay();
      QVERIFY(!fixture.tab->mIsRecording());
      QCOMPARE(fixture.find<QPushButton>("mRecordMacroDetails")->text(), QStringLiteral("Record"));
      QVERIFY(fixture.find("mAddMacro")->isEnabled());
      QVERIFY(fixture.find("mMacroTableView")->isEnabled());
      // Nothing is stopped or saved, for the engine has dropped the recording; the lines are those of the row.
      QCOMPARE(fixture.delegate.take(), QStringList("getMacroDetailsForMacroAtIndex(1)"));
      const auto* alert = fixture.window.findChild<QMessageBox*>(QStringLiteral("alert"));
      QVERIFY(alert != nullptr);
      QCOMPARE(alert->informativeText(), localized("lkeyRecordingLostDesc").arg(QLatin1String("B")));
    }
  }

  void stopIsOfferedWhileSomethingRecordsAlsoWithoutASelection() {
    MacrosFixture fixture({"A", "B"});
    fixture.selectMacro(1);
    fixture.find<QAbstractButton>("mRecordMacroDetails")->click();
    fixture.macros()->clearSelection();
    QVERIFY(fixture.find("mRecordMacroDetails")->isEnabled());
  }
};

SKARN_QTEST(MouseMacrosControllerRecordingTest)
#include "MouseMacrosController_recording_test.moc"
