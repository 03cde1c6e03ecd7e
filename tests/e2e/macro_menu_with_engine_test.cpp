// What the entries of the menus of the Macros tab and its further controls do, as the real engine has it afterwards.
#include "e2e/EditedMacro.h"
#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;
namespace tags = macroDetailsMenuTags;

namespace {

constexpr int leftButton = 1, rightButton = 2, middleButton = 3;

Events twoStrokesWith(int place, const Events& inserted) {
  Events events = twoStrokes();
  events.insert(events.begin() + place, inserted.begin(), inserted.end());
  return events;
}
Events clickAt(int place, int button) {
  return twoStrokesWith(place, {click(true, 20, button), click(false, 20, button)});
}

}  // namespace

class MacroMenuWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }
  void init() {
    mEngine.begin();
    OtherClient other;
    add(other, "Combo", twoStrokes());
    add(other, "Other", {});
  }
  void cleanup() { mEngine.end(); }

  void an_entry_changes_the_selected_lines_in_the_engine_data() {
    QTest::addColumn<std::vector<int>>("rows");
    QTest::addColumn<int>("tag");
    QTest::addColumn<Events>("expected");
    using Rows = std::vector<int>;
    QTest::newRow("a left click before") << Rows{4} << tags::insertBefore + tags::LeftClick << clickAt(2, leftButton);
    QTest::newRow("a middle click before")
        << Rows{4} << tags::insertBefore + tags::MiddleClick << clickAt(2, middleButton);
    QTest::newRow("a left click behind") << Rows{4} << tags::insertAfter + tags::LeftClick << clickAt(3, leftButton);
    QTest::newRow("a right click behind") << Rows{4} << tags::insertAfter + tags::RightClick << clickAt(3, rightButton);
    QTest::newRow("a middle click behind a delay")
        << Rows{3} << tags::insertAfter + tags::MiddleClick << clickAt(2, middleButton);
    QTest::newRow("one event is duplicated")
        << Rows{4} << static_cast<int>(tags::DuplicateEvents) << twoStrokesWith(3, {key(true, 100, keyB)});
    QTest::newRow("several delays are taken away")
        << Rows{1, 3} << static_cast<int>(tags::DeleteEvent)
        << Events{key(true, 0, keyA), key(false, 0, keyA), key(true, 0, keyB), key(false, 60, keyB)};
  }
  void an_entry_changes_the_selected_lines_in_the_engine() {
    QFETCH(std::vector<int>, rows);
    QFETCH(int, tag);
    QFETCH(Events, expected);
    EditedMacro open;
    open.select(rows);
    open.choose(tag);
    QVERIFY(open.has(expected));
    QCOMPARE(open.requests(MessageID::ReplaceMacroSequence), 1);
  }

  void a_delay_behind_an_event_is_added_by_the_request_for_one_delay() {
    EditedMacro open;
    open.select({2});
    open.choose(tags::insertAfter + tags::Delay);
    QTest::keyClicks(open.find("mInputMacroDelay"), QStringLiteral("500"));
    QTest::keyClick(open.find("mInputMacroDelay"), Qt::Key_Return);
    Events expected = twoStrokes();
    expected[2] = key(true, 600, keyB);
    QVERIFY(open.has(expected));
    QCOMPARE(open.requests(MessageID::SetEventDelay), 1);
    QCOMPARE(open.requests(MessageID::ReplaceMacroSequence), 0);
  }

  void an_event_moves_without_its_pair_where_that_is_chosen() {
    EditedMacro open;
    open.choose(tags::KeepPairs);
    open.select({2});
    open.choose(tags::MoveDown);
    QVERIFY(open.has({key(true, 0, keyA), key(true, 50, keyB), key(false, 100, keyA), key(false, 60, keyB)}));
    open.choose(tags::MoveUp);
    QVERIFY(open.has(twoStrokes()));
  }

  void a_discarded_append_leaves_the_macro_as_it_was_and_can_be_had_after_all() {
    EditedMacro open;
    open.click("mAddMacroDetails");
    QVERIFY(VirtualMouse::type(keyboardPage, keyC));
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 11, deadline);
    open.click("mDiscardRecording");
    QVERIFY(open.has(twoStrokes()));
    open.click("mUndoDiscard");
    QCOMPARE(open.lineCount(), 11);
    const PropertyList events = open.other.bundle()[keys::Macros].at(0)[keys::Sequence][keys::Events];
    QCOMPARE(events.size(), std::size_t{6});
    QCOMPARE(events.at(4)[keys::Argument].toInt(), keyC);
  }

  void the_list_says_what_plays_a_macro_and_finds_one_by_its_name() {
    EditedMacro open;
    open.other.assign("8", 10, 0);
    QTRY_COMPARE_WITH_TIMEOUT(open.text("mMacroAssignmentLabel"),
                              localized("lkeyPlayedBy").arg(QStringLiteral("4 of “Default”")), deadline);
    QTest::keyClicks(open.find("mMacroSearch"), QStringLiteral("oth"));
    auto* table = open.find<QTableView>("mMacroTableView");
    QVERIFY(table->isRowHidden(0));
    QVERIFY(!table->isRowHidden(1));
    QTest::keyClick(open.find("mMacroSearch"), Qt::Key_Return);
    QCOMPARE(open.lineCount(), 0);
    QCOMPARE(open.text("mMacroAssignmentLabel"), localized("lkeyMacroAssignment"));
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(MacroMenuWithEngineTest)
#include "macro_menu_with_engine_test.moc"
