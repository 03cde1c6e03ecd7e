// Several lines at once, and what moves, doubles or adds some: what is sent, and what is selected then.
#include <QLabel>

#include "macros/SequenceFixture.h"
#include "support/QtTests.h"
#include "widgets/KeyCaptureField.h"

using namespace skarn;
using namespace skarn::test;
namespace tags = macroDetailsMenuTags;

using Events = std::vector<PropertyList>;
using Rows = std::vector<int>;

class MouseMacrosControllerSequenceTest : public QObject {
  Q_OBJECT

 private slots:
  void severalLinesAreSelectedByShiftControlAndControlA() {
    SequenceFixture fixture;
    fixture.clickRow(fixture.lines(), 1);
    fixture.clickRow(fixture.lines(), 4, Qt::ShiftModifier);
    QVERIFY(fixture.selected() == (Rows{1, 2, 3, 4}));
    fixture.clickRow(fixture.lines(), 6, Qt::ControlModifier);
    QVERIFY(fixture.selected() == (Rows{1, 2, 3, 4, 6}));
    QTest::keyClick(fixture.lines(), Qt::Key_A, Qt::ControlModifier);
    QVERIFY(fixture.selected() == (Rows{0, 1, 2, 3, 4, 5, 6}));
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void aRightClickOnOneOfSeveralSelectedLinesKeepsThemAll() {
    SequenceFixture fixture;
    fixture.select({0, 2});
    QMenu* menu = fixture.rightClick(fixture.lines(), 2);
    QVERIFY(menu != nullptr);
    menu->close();
    QVERIFY(fixture.selected() == (Rows{0, 2}));
  }

  void oneLineIsStillDeletedByItsOwnRequest() {
    SequenceFixture fixture;
    fixture.select({2});
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    QCOMPARE(fixture.delegate.take(), (QStringList{"removeEventAtIndex(2, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void severalLinesAreDeletedAtOnce() {
    SequenceFixture fixture;
    fixture.select({2, 4, 5});
    const Events left{keyEvent(true, 0, keyOfA), keyEvent(false, 0, keyOfA)};
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(left));
  }

  void severalDelaysAreTakenAwayAtOnce() {
    SequenceFixture fixture;
    fixture.select({1, 5});
    fixture.click("mDeleteMacroDetails");
    QCOMPARE(fixture.delegate.take(),
             SequenceFixture::edited({keyEvent(true, 0, keyOfA), keyEvent(true, 0, keyOfB), keyEvent(false, 50, keyOfB),
                                      keyEvent(false, 0, keyOfA)}));
  }

  void aPairIsDeletedWhole() {
    SequenceFixture fixture;
    fixture.select({2});
    QTest::keyClick(fixture.lines(), Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(fixture.delegate.take(),
             SequenceFixture::edited({keyEvent(true, 0, keyOfA), keyEvent(false, 200, keyOfA)}));
  }

  void aPressAndItsReleaseMoveTogetherAndStaySelected() {
    SequenceFixture fixture;
    fixture.select({2});
    const Events moved{keyEvent(true, 0, keyOfB), keyEvent(false, 50, keyOfB), keyEvent(true, 100, keyOfA),
                       keyEvent(false, 200, keyOfA)};
    fixture.delegate.onCall = [&](const QString& call) {
      if (call.startsWith(QLatin1String("replaceSequence"))) fixture.take(0, moved);
      fixture.serve(call);
    };
    QTest::keyClick(fixture.lines(), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(moved));
    QVERIFY(fixture.selected() == (Rows{0, 2}));
    QTRY_VERIFY(fixture.lines()->hasFocus());
    // They are at the top.
    QTest::keyClick(fixture.lines(), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.beeps, 1);
  }

  void anEventMovesAloneWhereThatIsChosen() {
    SequenceFixture fixture;
    fixture.choose(tags::KeepPairs);
    fixture.select({4});
    QTest::keyClick(fixture.lines(), Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(fixture.delegate.take(),
             SequenceFixture::edited({keyEvent(true, 0, keyOfA), keyEvent(true, 100, keyOfB),
                                      keyEvent(false, 50, keyOfA), keyEvent(false, 200, keyOfB)}));
    QMenu menu;
    fixture.tab->fillMacroDetailsMenu(menu);
    QVERIFY(!MacrosFixture::itemOf(menu, tags::KeepPairs)->isChecked());
  }

  void duplicatesStandBehindTheSelectedOnes() {
    SequenceFixture fixture({keyEvent(true, 0, keyOfA), keyEvent(false, 50, keyOfA)});
    fixture.select({0, 1, 2});
    QTest::keyClick(fixture.lines(), Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(fixture.delegate.take(),
             SequenceFixture::edited({keyEvent(true, 0, keyOfA), keyEvent(false, 50, keyOfA), keyEvent(true, 0, keyOfA),
                                      keyEvent(false, 50, keyOfA)}));
  }

  void clicksAreInsertedBeforeAndBehindTheSelectedLines_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("place");
    QTest::newRow("left before") << tags::insertBefore + tags::LeftClick << 1 << 1;
    QTest::newRow("right before") << tags::insertBefore + tags::RightClick << 2 << 1;
    QTest::newRow("middle behind") << tags::insertAfter + tags::MiddleClick << 3 << 3;
  }
  void clicksAreInsertedBeforeAndBehindTheSelectedLines() {
    QFETCH(int, tag);
    QFETCH(int, button);
    QFETCH(int, place);
    SequenceFixture fixture;
    fixture.select({2, 4});
    fixture.choose(tag);
    Events expected = SequenceFixture::nested();
    expected.insert(expected.begin() + place, {buttonEvent(true, 15, button), buttonEvent(false, 15, button)});
    QCOMPARE(fixture.delegate.take(), SequenceFixture::edited(expected));
  }

  void aKeyIsInsertedFromTheListOfAllKeys() {
    SequenceFixture fixture;
    fixture.select({6});
    QTest::keyClick(fixture.lines(), Qt::Key_Insert);
    QCOMPARE(fixture.delegate.take(), QStringList{"startEditHID()"});
    fixture.click("mMacroEventChoose");
    QTest::keyClicks(fixture.find("mKeySearch"), QStringLiteral("C"));
    QTest::keyClick(fixture.find("mKeySearch"), Qt::Key_Return);
    QCOMPARE(fixture.delegate.take(), QStringList());
    QTest::keyClick(fixture.find("mEditEventWindow")->focusWidget(), Qt::Key_Return);
    Events expected = SequenceFixture::nested();
    expected.insert(expected.end(), {keyEvent(true, 15, keyOfC), keyEvent(false, 15, keyOfC)});
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"} + SequenceFixture::edited(expected));
  }

  void aKeyIsInsertedByPressingIt_data() {
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("place");
    QTest::newRow("before") << tags::insertBefore + tags::Key << 1;
    QTest::newRow("behind") << tags::insertAfter + tags::Key << 2;
  }
  void aKeyIsInsertedByPressingIt() {
    QFETCH(int, tag);
    QFETCH(int, place);
    SequenceFixture fixture;
    fixture.select({2});
    fixture.choose(tag);
    const auto* ok = fixture.find<QPushButton>("mMacroEventEditOK");
    auto& field = *fixture.find<KeyCaptureField>("mInputMacroEvent");
    QCOMPARE(fixture.find<QLabel>("mMacroEventTitle")->text(), QStringLiteral("Insert a Key"));
    QCOMPARE(ok->text(), QStringLiteral("Insert"));
    QVERIFY(!fixture.find("mChangesPartner")->isVisible());
    QVERIFY(field.isListening());
    // Without a key there is nothing to insert, and that is said.
    QVERIFY(!ok->isEnabled());
    QCOMPARE(ok->toolTip(), QStringLiteral("No key has been pressed yet"));
    fixture.press(keyOfC);
    field.noteTyped(false, true);
    QVERIFY(ok->isEnabled());
    QCOMPARE(field.text(), QStringLiteral("C"));
    QCOMPARE(fixture.delegate.take(), QStringList{"startEditHID()"});
    QTest::keyClick(fixture.find("mEditEventWindow")->focusWidget(), Qt::Key_Return);
    QVERIFY(!fixture.find("mEditEventWindow")->isVisible());
    Events expected = SequenceFixture::nested();
    expected.insert(expected.begin() + place, {keyEvent(true, 15, keyOfC), keyEvent(false, 15, keyOfC)});
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"} + SequenceFixture::edited(expected));
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(fixture.enabled(), MacrosFixture::allControls());
    // The sheet is again the one for an event where it is opened for one.
    fixture.select({0});
    fixture.choose(tags::Edit);
    QCOMPARE(fixture.find<QLabel>("mMacroEventTitle")->text(), QStringLiteral("Edit Event"));
    QCOMPARE(ok->text(), QStringLiteral("OK"));
    QVERIFY(ok->isEnabled());
    QCOMPARE(ok->toolTip(), QStringLiteral("Without a key, OK changes nothing"));
  }

  void aKeyThatIsNotInsertedChangesNothing_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("cancelled") << 0;
    QTest::newRow("another tab comes to the front") << 1;
  }
  void aKeyThatIsNotInsertedChangesNothing() {
    QFETCH(int, way);
    SequenceFixture fixture;
    fixture.select({2});
    fixture.choose(tags::insertAfter + tags::Key);
    fixture.press(keyOfC);
    fixture.delegate.take();
    if (way == 0) QTest::keyClick(fixture.find("mMacroEventEditCancel"), Qt::Key_Escape);
    if (way == 1) fixture.tab->stopAllMacroRecording();
    QVERIFY(!fixture.find("mEditEventWindow")->isVisible());
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"});
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Record"));
    // The next sheet is for an event, and stores in it.
    fixture.delegate.sequence = keyEvent(true, 100, keyOfB);
    fixture.choose(tags::Edit);
    fixture.press(keyOfA);
    fixture.delegate.take();
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take().at(3),
             QStringLiteral("updateSequenceInfo(0, 2, %1)").arg(RecordingMacros::text(keyEvent(true, 100, keyOfA))));
  }

  void anEmptyMacroGetsItsFirstEventsSo() {
    SequenceFixture fixture;
    fixture.selectMacro(1);
    fixture.choose(tags::insertAfter + tags::LeftClick);
    QCOMPARE(fixture.delegate.take(),
             SequenceFixture::edited({buttonEvent(true, 15, leftButton), buttonEvent(false, 15, leftButton)}, 1,
                                     "Greeting"));
  }

  void anEmptyMacroOffersToInsertAKey() {
    SequenceFixture fixture;
    fixture.selectMacro(1);
    fixture.click("mInsertKey");
    // What stands behind the sheet stays where it is.
    QVERIFY(fixture.find("mInsertKey")->isVisible());
    QVERIFY(!fixture.find("mInsertKey")->isEnabled());
    fixture.press(keyOfC);
    fixture.delegate.take();
    fixture.click("mMacroEventEditOK");
    QCOMPARE(fixture.delegate.take(),
             QStringList{"stopSingleKeyRecording()"} +
                 SequenceFixture::edited({keyEvent(true, 15, keyOfC), keyEvent(false, 15, keyOfC)}, 1, "Greeting"));
  }

  void anInsertedDelayIsAddedToTheOneThatIsThere_data() {
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("sent");
    QTest::newRow("before an event") << 2 << tags::insertBefore + tags::Delay << "setNewDelay(107, 1, 0)";
    QTest::newRow("behind an event") << 2 << tags::insertAfter + tags::Delay << "setNewDelay(57, 3, 0)";
    QTest::newRow("to a delay") << 5 << tags::insertAfter + tags::Delay << "setNewDelay(207, 5, 0)";
  }
  void anInsertedDelayIsAddedToTheOneThatIsThere() {
    QFETCH(int, line);
    QFETCH(int, tag);
    QFETCH(QString, sent);
    SequenceFixture fixture;
    fixture.select({line});
    fixture.choose(tag);
    QCOMPARE(fixture.find<QLabel>("mMacroDelayTitle")->text(), QStringLiteral("Insert a Delay"));
    QTest::keyClicks(fixture.find("mInputMacroDelay"), QStringLiteral("7"));
    QTest::keyClick(fixture.find("mInputMacroDelay"), Qt::Key_Return);
    QVERIFY(!fixture.find("mEditDelayWindow")->isVisible());
    QCOMPARE(fixture.delegate.take(), (QStringList{"reloadMacros()", sent, "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void severalDelaysAreEditedOnOneSheet() {
    SequenceFixture fixture;
    fixture.select({1, 2, 5});
    fixture.choose(tags::Edit);
    QCOMPARE(fixture.find<QLabel>("mMacroDelayTitle")->text(), QStringLiteral("Edit Delays (2)"));
    QTest::keyClicks(fixture.find("mInputMacroDelay"), QStringLiteral("30"));
    QTest::keyClick(fixture.find("mInputMacroDelay"), Qt::Key_Return);
    QCOMPARE(fixture.delegate.take(),
             SequenceFixture::edited({keyEvent(true, 0, keyOfA), keyEvent(true, 30, keyOfB),
                                      keyEvent(false, 50, keyOfB), keyEvent(false, 30, keyOfA)}));
    QVERIFY(fixture.selected() == (Rows{1, 2, 5}));
    // A cancelled sheet leaves nothing for the next one.
    fixture.choose(tags::Edit);
    QTest::keyClick(fixture.find("mInputMacroDelay"), Qt::Key_Escape);
    fixture.select({3});
    fixture.choose(tags::Edit);
    QTest::keyClicks(fixture.find("mInputMacroDelay"), QStringLiteral("8"));
    QTest::keyClick(fixture.find("mInputMacroDelay"), Qt::Key_Return);
    QCOMPARE(fixture.delegate.take(), (QStringList{"setNewDelay(8, 3, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void anEventBeyondTheReachOfASingleRequestIsEditedThroughTheSequence() {
    Events events;
    for (int count = 0; count < 70; ++count) {
      events.push_back(keyEvent(true, 10, keyOfA));
      events.push_back(keyEvent(false, 10, keyOfA));
    }
    SequenceFixture fixture(events);
    fixture.select({256});
    fixture.choose(tags::Edit);
    QCOMPARE(fixture.delegate.take(), QStringList{"startEditHID()"});
    fixture.press(keyOfC);
    fixture.click("mMacroEventEditOK");
    events[128] = keyEvent(true, 10, keyOfC);
    events[129] = keyEvent(false, 10, keyOfC);
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"} + SequenceFixture::edited(events));
    QVERIFY(!fixture.find("mEditEventWindow")->isVisible());
  }

  void aReleaseBeyondTheReachOfASingleRequestChangesThroughTheSequence() {
    Events events{keyEvent(true, 0, keyOfA)};
    for (int count = 0; count < 140; ++count) events.push_back(keyEvent(true, 10, keyOfB));
    events.push_back(keyEvent(false, 10, keyOfA));
    SequenceFixture fixture(events);
    fixture.select({0});
    fixture.choose(tags::Edit);
    QVERIFY(fixture.find("mChangesPartner")->isVisible());
    fixture.press(keyOfC);
    fixture.delegate.take();
    fixture.click("mMacroEventEditOK");
    events.front() = keyEvent(true, 0, keyOfC);
    events.back() = keyEvent(false, 10, keyOfC);
    QCOMPARE(fixture.delegate.take(), QStringList{"stopSingleKeyRecording()"} + SequenceFixture::edited(events));
  }

  void nothingIsSentWhereAnotherProgramHasChangedTheMacro() {
    SequenceFixture fixture;
    fixture.select({0, 2});
    fixture.take(0, {keyEvent(true, 0, keyOfC)});
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    for (const QString& call : fixture.delegate.take()) QVERIFY2(!call.startsWith("replace"), qPrintable(call));
    QCOMPARE(fixture.alert()->text(), QStringLiteral("This line is no longer there"));
    QCOMPARE(MacrosFixture::rowsOf(fixture.lines()), QStringList{"Key Press C"});
  }

  void anEditThatAnotherProgramHasForestalledChangesNothingAndShowsWhatIsThereNow() {
    SequenceFixture fixture;
    fixture.select({0, 2});
    fixture.delegate.answerToReplace = vorn::ReturnStatus::Outdated;
    fixture.delegate.onCall = [&](const QString& call) {
      if (call.startsWith(QLatin1String("replaceSequence"))) fixture.take(0, {keyEvent(true, 0, keyOfC)});
      fixture.serve(call);
    };
    const PropertyList before = fixture.engine.at(0)["sequence"];
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    QVERIFY(fixture.delegate.expectedSequences == std::vector{before});
    const QStringList calls = fixture.delegate.take();
    QCOMPARE(calls.value(2), QStringLiteral("reloadMacros()"));
    QCOMPARE(calls.last(), QStringLiteral("getMacroDetailsForMacroAtIndex(0)"));
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Fireball” was not changed"));
    QCOMPARE(fixture.alert()->informativeText(), localized("lkeyLineGoneDesc").arg(QStringLiteral("Fireball")));
    QCOMPARE(MacrosFixture::rowsOf(fixture.lines()), QStringList{"Key Press C"});
  }

  void nothingIsSentForAMacroThatIsGone() {
    SequenceFixture fixture;
    fixture.select({0, 2});
    fixture.engine = fixture.engine.removing(0);
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    for (const QString& call : fixture.delegate.take()) QVERIFY2(!call.startsWith("replace"), qPrintable(call));
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Fireball” is no longer there"));
  }

  void anEditThatTheEngineRefusesIsTold_data() {
    QTest::addColumn<bool>("answers");
    QTest::newRow("it says why") << true;
    QTest::newRow("it says nothing") << false;
  }
  void anEditThatTheEngineRefusesIsTold() {
    QFETCH(bool, answers);
    SequenceFixture fixture;
    fixture.delegate.answerToReplace = answers ? std::optional(vorn::ReturnStatus::NotSaved) : std::nullopt;
    fixture.select({0, 2});
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Fireball” was not changed"));
    QCOMPARE(fixture.alert()->informativeText(), localized(answers ? "lkeyEngineDidNotSave" : "lkeyEngineSaidNothing"));
    QCOMPARE(fixture.lines()->model()->rowCount(), 7);
  }

  void anEditThatIsUndoneFromElsewhereIsSeen() {
    SequenceFixture fixture;
    fixture.delegate.onCall = [&](const QString& call) {
      if (call.startsWith(QLatin1String("replaceSequence")))
        fixture.take(0, {keyEvent(true, 100, keyOfB), keyEvent(false, 50, keyOfB)});
      fixture.serve(call);
    };
    fixture.select({0, 6});
    QTest::keyClick(fixture.lines(), Qt::Key_Delete);
    QCOMPARE(fixture.lines()->model()->rowCount(), 3);
    fixture.take(0, SequenceFixture::nested());
    fixture.serve({});
    fixture.reload(fixture.engine);
    QCOMPARE(fixture.lines()->model()->rowCount(), 7);
  }

  void duringARecordingNoShortcutChangesAnything() {
    SequenceFixture fixture;
    fixture.click("mAddMacroDetails");
    fixture.delegate.take();
    fixture.lines()->selectAll();
    for (const auto& [key, modifier] :
         std::initializer_list<std::pair<Qt::Key, Qt::KeyboardModifier>>{{Qt::Key_X, Qt::ControlModifier},
                                                                         {Qt::Key_V, Qt::ControlModifier},
                                                                         {Qt::Key_D, Qt::ControlModifier},
                                                                         {Qt::Key_Down, Qt::AltModifier},
                                                                         {Qt::Key_Delete, Qt::ShiftModifier},
                                                                         {Qt::Key_Insert, Qt::NoModifier}}) {
      QTest::keyClick(fixture.lines(), key, modifier);
    }
    QCOMPARE(fixture.delegate.take(), QStringList());
    QCOMPARE(fixture.beeps, 6);
  }

  void theMenuSaysWhyAnEntryIsOffAndWhichKeyItHas() {
    SequenceFixture fixture;
    const auto whyOff = [&](int tag) {
      QMenu menu;
      fixture.tab->fillMacroDetailsMenu(menu);
      const QAction* item = MacrosFixture::itemOf(menu, tag);
      return item->isEnabled() ? QString() : item->toolTip();
    };
    QCOMPARE(whyOff(tags::Cut), QStringLiteral("Select an event first"));
    fixture.select({1});
    QCOMPARE(whyOff(tags::Cut), QStringLiteral("Select an event first"));
    fixture.select({2});
    QCOMPARE(whyOff(tags::Cut), QString());
    QCOMPARE(whyOff(tags::MoveUp), QString());
    fixture.select({0});
    QCOMPARE(whyOff(tags::MoveUp), QStringLiteral("It is the first event already"));
    // Its release is the last one.
    QCOMPARE(whyOff(tags::MoveDown), QStringLiteral("It is the last event already"));
    QCOMPARE(whyOff(tags::insertBefore + tags::Delay), QStringLiteral("A macro begins with its first event"));
    fixture.select({6});
    QCOMPARE(whyOff(tags::insertAfter + tags::Delay), QStringLiteral("A macro ends with its last event"));
    fixture.select({0, 2});
    QCOMPARE(whyOff(tags::Edit), QStringLiteral("Select one event, or delays"));
    fixture.selectMacro(1);
    QCOMPARE(whyOff(tags::Play), QStringLiteral("Record to add events."));
    QMenu menu;
    fixture.tab->fillMacroDetailsMenu(menu);
    QCOMPARE(MacrosFixture::itemOf(menu, tags::MoveUp)->shortcut(), QKeySequence(Qt::ALT | Qt::Key_Up));
  }

  void whatStaysPressedAtTheEndIsToldBelowTheLines() {
    SequenceFixture fixture({keyEvent(true, 0, 225), buttonEvent(true, 5, leftButton), keyEvent(true, 5, keyOfA),
                             keyEvent(false, 5, keyOfA)});
    const auto* note = fixture.find<QLabel>("mPressedAtEndLabel");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(), QStringLiteral("Still pressed at the end: Left Shift, Left Button. The macro lets go of it "
                                          "when it ends."));
    fixture.selectMacro(1);
    QVERIFY(!note->isVisible());
  }

  void aSheetForSeveralLinesClosesWhenItsMacroIsGoneAndThatIsSaid_data() {
    QTest::addColumn<std::vector<int>>("rows");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("sheet");
    QTest::newRow("an added delay") << std::vector<int>{2} << tags::insertAfter + tags::Delay << "mEditDelayWindow";
    QTest::newRow("many delays") << std::vector<int>{1, 3} << static_cast<int>(tags::Edit) << "mEditDelayWindow";
    QTest::newRow("a text") << std::vector<int>{2} << static_cast<int>(tags::TypeText) << "mMacroTextWindow";
    QTest::newRow("a key") << std::vector<int>{2} << tags::insertBefore + tags::Key << "mEditEventWindow";
  }
  void aSheetForSeveralLinesClosesWhenItsMacroIsGoneAndThatIsSaid() {
    QFETCH(std::vector<int>, rows);
    QFETCH(int, tag);
    QFETCH(QString, sheet);
    SequenceFixture fixture;
    fixture.select(rows);
    fixture.choose(tag);
    const auto isOpen = [&] {
      const auto* shown = fixture.window.findChild<QDialog*>(sheet);
      return shown != nullptr && shown->isVisible();
    };
    QVERIFY(isOpen());
    // Other news leave it alone.
    fixture.engine = PropertyList::array({fixture.engine.at(1), fixture.engine.at(0)});
    fixture.serve("reloadMacros()");
    QVERIFY(isOpen());
    QVERIFY(fixture.alert() == nullptr);
    fixture.delegate.take();
    fixture.engine = PropertyList::array({fixture.engine.at(0)});
    fixture.serve("reloadMacros()");
    QVERIFY(!isOpen());
    QVERIFY(fixture.alert() != nullptr);
    QCOMPARE(fixture.alert()->text(), QStringLiteral("“Fireball” is no longer there"));
    const bool caughtKeys = sheet == QLatin1String("mEditEventWindow");
    QCOMPARE(fixture.delegate.take(), caughtKeys ? QStringList{"stopSingleKeyRecording()"} : QStringList());
    QCOMPARE(fixture.window.findChildren<QMessageBox*>(QStringLiteral("alert")).size(), 1);
  }

  void theSheetForOneDelayOutlivesTheMacroOfAnEarlierSheet() {
    SequenceFixture fixture;
    fixture.take(1, SequenceFixture::nested());
    fixture.serve("reloadMacros()");
    fixture.select({1, 3});
    fixture.choose(tags::Edit);
    fixture.click("mMacroDelayCancel");
    fixture.selectMacro(1);
    fixture.select({1});
    fixture.choose(tags::Edit);
    fixture.engine = PropertyList::array({fixture.engine.at(1)});
    fixture.serve("reloadMacros()");
    QVERIFY(fixture.find("mEditDelayWindow")->isVisible());
    QVERIFY(fixture.alert() == nullptr);
  }
};

SKARN_QTEST(MouseMacrosControllerSequenceTest)
#include "MouseMacrosController_sequence_test.moc"
