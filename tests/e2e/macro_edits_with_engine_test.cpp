// Each edit of a macro's events, by a person in the real window, as the real engine has it afterwards.
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>

#include "e2e/EditedMacro.h"
#include "macros/MacroPlaySheet.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;
namespace tags = macroDetailsMenuTags;

class MacroEditsWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }
  void init() {
    mEngine.begin();
    OtherClient other;
    add(other, "Combo", twoStrokes());
    add(other, "Other", {});
  }
  void cleanup() {
    QApplication::clipboard()->clear();
    mEngine.end();
  }

  void several_lines_are_deleted() {
    EditedMacro open;
    open.select({2, 3, 4});
    open.press(Qt::Key_Delete);
    QVERIFY(open.has({key(true, 0, keyA), key(false, 60, keyB)}));
    QCOMPARE(open.find<QLabel>("mPressedAtEndLabel")->isVisible(), true);
  }

  void a_pair_is_deleted() {
    EditedMacro open;
    open.select({0});
    open.press(Qt::Key_Delete, Qt::ShiftModifier);
    QVERIFY(open.has({key(true, 100, keyB), key(false, 60, keyB)}));
  }

  void events_are_cut_and_pasted_into_another_macro() {
    EditedMacro open;
    open.select({0, 2});
    open.press(Qt::Key_X, Qt::ControlModifier);
    QVERIFY(open.has({key(true, 100, keyB), key(false, 60, keyB)}));
    open.find<QTableView>("mMacroTableView")->selectRow(1);
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 0, deadline);
    open.press(Qt::Key_V, Qt::ControlModifier);
    QVERIFY(open.has({key(true, 0, keyA), key(false, 50, keyA)}, 1));
  }

  void events_are_copied_and_duplicated() {
    EditedMacro open;
    open.select({4, 6});
    open.press(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(open.has(twoStrokes()));
    open.select({0, 2});
    open.press(Qt::Key_V, Qt::ControlModifier);
    Events expected = twoStrokes();
    expected.insert(expected.begin() + 2, {key(true, 100, keyB), key(false, 60, keyB)});
    QVERIFY(open.has(expected));
    open.select({0, 2});
    open.press(Qt::Key_D, Qt::ControlModifier);
    expected.insert(expected.begin() + 2, {key(true, 0, keyA), key(false, 50, keyA)});
    QVERIFY(open.has(expected));
  }

  void a_pair_moves_up_and_down() {
    EditedMacro open;
    open.select({4});
    open.press(Qt::Key_Up, Qt::AltModifier);
    open.press(Qt::Key_Up, Qt::AltModifier);
    QVERIFY(open.has({key(true, 0, keyB), key(false, 60, keyB), key(true, 50, keyA), key(false, 100, keyA)}));
    open.press(Qt::Key_Down, Qt::AltModifier);
    open.press(Qt::Key_Down, Qt::AltModifier);
    QVERIFY(open.has(twoStrokes()));
  }

  void keys_clicks_and_delays_are_inserted() {
    EditedMacro open;
    Events expected = twoStrokes();
    open.select({4});
    open.choose(tags::insertBefore + tags::RightClick);
    expected.insert(expected.begin() + 2, {click(true, 20, 2), click(false, 20, 2)});
    QVERIFY(open.has(expected));
    open.select({10});
    open.press(Qt::Key_Insert);
    open.click("mMacroEventChoose");
    QTest::keyClicks(open.find("mKeySearch"), QStringLiteral("Return"));
    QTest::keyClick(open.find("mKeySearch"), Qt::Key_Return);
    open.click("mMacroEventEditOK");
    expected.insert(expected.end(), {key(true, 20, 40), key(false, 20, 40)});
    QVERIFY(open.has(expected));
    // Or by pressing it.
    open.select({0});
    open.choose(tags::insertBefore + tags::Key);
    QVERIFY(open.hasSheet("mEditEventWindow"));
    QVERIFY(VirtualMouse::type(keyboardPage, keyZ));
    QTRY_COMPARE_WITH_TIMEOUT(open.find<QLineEdit>("mInputMacroEvent")->text(), QStringLiteral("Z"), deadline);
    open.click("mMacroEventEditOK");
    expected.insert(expected.begin(), {key(true, 20, keyZ), key(false, 20, keyZ)});
    QVERIFY(open.has(expected));
    open.select({0, 2});
    open.press(Qt::Key_Delete);
    expected.erase(expected.begin(), expected.begin() + 2);
    QVERIFY(open.has(expected));
    open.select({2});
    open.choose(tags::insertBefore + tags::Delay);
    QTest::keyClicks(open.find("mInputMacroDelay"), QStringLiteral("500"));
    QTest::keyClick(open.find("mInputMacroDelay"), Qt::Key_Return);
    expected[1] = key(false, 550, keyA);
    QVERIFY(open.has(expected));
  }

  void a_delay_is_edited_in_place_and_several_on_their_sheet() {
    EditedMacro open;
    open.select({1});
    open.press(Qt::Key_F2);
    auto* field = open.table()->viewport()->findChild<QLineEdit*>();
    QVERIFY(field != nullptr);
    QTest::keyClicks(field, QStringLiteral("75"));
    QTest::keyClick(field, Qt::Key_Return);
    Events expected = twoStrokes();
    expected[1] = key(false, 75, keyA);
    QTRY_COMPARE_WITH_TIMEOUT(open.lines().at(1), QStringLiteral("0.075 seconds delay\n"), deadline);
    QVERIFY(open.has(expected));
    open.select({3, 5});
    open.choose(tags::Edit);
    QTest::keyClicks(open.find("mInputMacroDelay"), QStringLiteral("5"));
    QTest::keyClick(open.find("mInputMacroDelay"), Qt::Key_Return);
    expected[2] = key(true, 5, keyB);
    expected[3] = key(false, 5, keyB);
    QVERIFY(open.has(expected));
  }

  void a_text_is_typed() {
    EditedMacro open;
    open.find<QTableView>("mMacroTableView")->selectRow(1);
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 0, deadline);
    open.choose(tags::TypeText);
    QTest::keyClicks(open.find("mTypedText"), QStringLiteral("aB"));
    QTest::keyClick(open.find("mTypedText"), Qt::Key_Return);
    QVERIFY(open.has({key(true, 20, keyA), key(false, 20, keyA), key(true, 20, 225), key(true, 20, keyB),
                      key(false, 20, keyB), key(false, 20, 225)},
                     1));
    open.choose(tags::Play);
    const auto* sheet = open.window().findChild<MacroPlaySheet*>();
    QVERIFY(sheet != nullptr);
    QTRY_VERIFY_WITH_TIMEOUT(!sheet->isPlaying(), deadline);
    QCOMPARE(open.find<QPlainTextEdit>("mPlayField")->toPlainText(), QStringLiteral("aB"));
  }

  void a_text_of_another_program_is_pasted_as_its_keys() {
    EditedMacro open;
    QApplication::clipboard()->setText(QStringLiteral("z"));
    open.select({0});
    open.press(Qt::Key_V, Qt::ControlModifier);
    QVERIFY(open.hasSheet("mMacroTextWindow"));
    QTest::keyClick(open.find("mTypedText"), Qt::Key_Return);
    Events expected = twoStrokes();
    expected.insert(expected.begin() + 1, {key(true, 20, keyZ), key(false, 20, keyZ)});
    QVERIFY(open.has(expected));
  }

  void an_event_beyond_row_255_is_edited() {
    Events expected;
    for (int count = 0; count < 100; ++count) {
      expected.push_back(key(true, 10, keyA));
      expected.push_back(key(false, 10, keyA));
    }
    {
      OtherClient other;
      add(other, "Long", expected);
    }
    EditedMacro open;
    open.find<QTableView>("mMacroTableView")->selectRow(2);
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 399, deadline);
    open.select({300});
    open.press(Qt::Key_Return);
    QVERIFY(open.hasSheet("mEditEventWindow"));
    QVERIFY(VirtualMouse::type(keyboardPage, keyZ));
    QTRY_COMPARE_WITH_TIMEOUT(open.find<QLineEdit>("mInputMacroEvent")->text(), QStringLiteral("Z"), deadline);
    open.click("mMacroEventEditOK");
    expected[150] = key(true, 10, keyZ);
    expected[151] = key(false, 10, keyZ);
    QVERIFY(open.has(expected, 2));
  }

  void an_edit_never_meets_a_macro_that_another_program_has_changed() {
    EditedMacro open;
    open.select({0, 2});
    const Events changed{key(true, 0, keyC)};
    open.other.ask(
        vorn::MessageID::ReplaceMacroSequence,
        PropertyList::dictionary(
            {{vorn::requestKeys::MacroContents,
              PropertyList::dictionary(
                  {{keys::MacroID, 0},
                   {keys::MacroName, "Combo"},
                   {keys::Sequence, PropertyList::dictionary({{keys::Events, PropertyList::array(changed)}})}})}}));
    open.press(Qt::Key_Delete);
    QTRY_VERIFY_WITH_TIMEOUT(open.has(changed), deadline);
  }

  // The other program comes between the window's last look at the macro and its edit.
  void an_edit_that_was_forestalled_is_outdated_and_changes_nothing() {
    EditedMacro open;
    const auto stored = [&open] { return open.other.bundle()[keys::Macros].at(0); };
    const PropertyList seen = stored();
    const PropertyList others = PropertyList::dictionary({{keys::Events, PropertyList::array({key(true, 0, keyC)})}});
    QCOMPARE(open.hub().replaceSequence(others, 0, seen), vorn::ReturnStatus::Done);
    const PropertyList none = PropertyList::dictionary({{keys::Events, PropertyList::array()}});
    QCOMPARE(open.hub().replaceSequence(none, 0, seen), vorn::ReturnStatus::Outdated);
    QVERIFY(stored()[keys::Sequence] == others);
    QCOMPARE(open.hub().replaceSequence(none, 0, stored()), vorn::ReturnStatus::Done);
    QVERIFY(stored()[keys::Sequence] == none);
  }

  void a_macro_is_duplicated() {
    EditedMacro open;
    QTest::keyClick(open.find("mMacroTableView"), Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(open.names(), (QStringList{"Combo", "Other", "Combo(2)"}));
    QVERIFY(open.has(twoStrokes(), 2));
  }

  void a_discarded_recording_leaves_the_macro_as_it_was() {
    EditedMacro open;
    open.click("mRecordMacroDetails");
    QVERIFY(VirtualMouse::type(keyboardPage, keyC));
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 3, deadline);
    QVERIFY(open.find<QLabel>("mRecordingProgress")->text().startsWith(QStringLiteral("Events: 2, ")));
    open.click("mDiscardRecording");
    QCOMPARE(open.recordTitle(), QStringLiteral("Record"));
    QVERIFY(open.has(twoStrokes()));
    // It can be had after all.
    open.click("mUndoDiscard");
    QCOMPARE(open.lineCount(), 3);
    QCOMPARE(open.macro()[keys::Sequence][keys::Events].size(), std::size_t{2});
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(MacroEditsWithEngineTest)
#include "macro_edits_with_engine_test.moc"
