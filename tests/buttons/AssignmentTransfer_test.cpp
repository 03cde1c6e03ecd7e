// Assignments on their way from one control to another, and from one keymap or profile to another.
#include "buttons/AssignmentTransfer.h"

#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const ControlDescriptor& control(int number) {
  return ButtonsDriver::control(number);
}

PropertyList factoryGroups() {
  return PropertyList::dictionary({{keys::Keys, factoryGroup(1)}, {keys::Buttons, factoryGroup(2)}});
}

PropertyList factoryProfile() {
  return defaultSettings()[keys::Profiles].at(0);
}

// The groups with these assignments, by the numbers of the controls.
PropertyList groupsWith(std::initializer_list<std::pair<int, PropertyList>> records) {
  PropertyList groups = factoryGroups();
  for (const auto& [number, record] : records) {
    const ControlDescriptor& changed = control(number);
    groups = groups.with(changed.group, groups[changed.group].with(changed.identifier, record));
  }
  return groups;
}

Lists sampleLists(int activeProfile = 1) {
  return {macros(), profiles(), activeProfile};
}

}  // namespace

Q_DECLARE_METATYPE(TransferProblem)

class AssignmentTransferTest : public QObject {
  Q_OBJECT

 private slots:
  void what_a_control_does_goes_to_another_one_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<int>("to");
    QTest::addColumn<PropertyList>("expected");
    const auto row = [](const char* name, int from, const PropertyList& record, int to, const PropertyList& expected) {
      QTest::newRow(name) << from << record << to << expected;
    };
    row("a key", 1, assignment(16, 5, 3), 9, assignment(16, 5, 3));
    row("a macro and its repeat mode", 1, assignment(10, 2, 255), 17, assignment(10, 2, 255));
    row("a counted macro, to the wheel's direction", 1, assignment(10, 2, 4), 18, assignment(10, 2, 4));
    row("a keymap, to the wheel's direction", 1, assignment(50, 3), 19, assignment(50, 3));
    row("a default is spelled out", 2, assignment(45, 20), 3, assignment(16, 20));
    row("so is none at all", 2, PropertyList(), 3, assignment(16, 20));
    row("a modifier is told by its bit", 11, assignment(45, 225), 3, assignment(16, 0, 2));
    row("the default of the wheel", 18, assignment(18), 3, assignment(18));
    row("an arrow of the direction pad", 20, assignment(45, 82), 3, assignment(16, 82));
    row("a key comes home", 3, assignment(16, 20), 2, assignment(45, 20));
    row("a modifier comes home", 3, assignment(16, 0, 2), 11, assignment(45, 225));
    row("scrolling comes home", 3, assignment(18), 18, assignment(18));
    row("disabled, to a direction", 1, assignment(20), 20, assignment(20, 82));
    row("disabled, from a direction", 20, assignment(20, 82), 1, assignment(20));
    row("the default of the same control", 21, assignment(45, 233), 21, assignment(45, 233));
    row("what nobody knows", 1, assignment(33, 4, 5), 2, assignment(33, 4, 5));
  }
  void what_a_control_does_goes_to_another_one() {
    QFETCH(int, from);
    QFETCH(PropertyList, record);
    QFETCH(int, to);
    QFETCH(PropertyList, expected);
    const Transfer transfer = transferred(record, control(from), control(to), factoryProfile());
    QVERIFY(transfer.assignment.has_value());
    QVERIFY(*transfer.assignment == assignmentOf(expected));
    QVERIFY(transfer.problem == TransferProblem::None);
  }

  void a_program_keeps_its_path() {
    const PropertyList program =
        PropertyList::dictionary({{keys::Command, 46}, {keys::Param1, "/Applications/Paint.app"}, {keys::Param2, ""}});
    const Transfer transfer = transferred(program, control(1), control(21), factoryProfile());
    COMPARE_LISTS(withAssignment(factoryGroup(1), "233", *transfer.assignment)["233"], program);
  }

  void what_the_other_control_cannot_do_is_told_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<int>("to");
    QTest::addColumn<TransferProblem>("problem");
    QTest::newRow("a diagonal") << 21 << assignment(45, 233) << 20 << TransferProblem::Diagonal;
    QTest::newRow("repeat until released") << 1 << assignment(10, 0, 255) << 18 << TransferProblem::NeverHeld;
    QTest::newRow("repeat until pressed") << 1 << assignment(10, 0, 254) << 19 << TransferProblem::NeverHeld;
    QTest::newRow("switch back") << 1 << assignment(50, 2, 1) << 18 << TransferProblem::NeverHeld;
  }
  void what_the_other_control_cannot_do_is_told() {
    QFETCH(int, from);
    QFETCH(PropertyList, record);
    QFETCH(int, to);
    QFETCH(TransferProblem, problem);
    const Transfer transfer = transferred(record, control(from), control(to), factoryProfile());
    QVERIFY(!transfer.assignment);
    QVERIFY(transfer.problem == problem);
  }

  void macros_and_profiles_are_found_where_they_stand_now() {
    const Lists now{PropertyList::array({macros().at(2), macros().at(0)}), profiles().removing(0), 0};
    QVERIFY(*retargeted({10, 0, 5}, sampleLists(), now).assignment == (Assignment{10, 1, 5}));
    QVERIFY(*retargeted({10, 2, 1}, sampleLists(), now).assignment == (Assignment{10, 0, 1}));
    QVERIFY(*retargeted({17, 3}, sampleLists(), now).assignment == (Assignment{17, 2}));
    QVERIFY(*retargeted({16, 1, 1}, sampleLists(), now).assignment == (Assignment{16, 1, 1}));
    const Transfer gone = retargeted({10, 1, 1}, sampleLists(), now);
    QVERIFY(!gone.assignment && gone.problem == TransferProblem::Gone);
    QCOMPARE(gone.gone, macros().at(1)[keys::MacroName].toString());
    QVERIFY(retargeted({17, 0}, sampleLists(), now).problem == TransferProblem::Gone);
    QVERIFY(retargeted({17, 1}, sampleLists(), now).problem == TransferProblem::OwnProfile);
  }

  void two_controls_swap_what_they_do_and_back_data() {
    QTest::addColumn<PropertyList>("before");
    QTest::addColumn<int>("one");
    QTest::addColumn<int>("other");
    QTest::addColumn<PropertyList>("after");
    const auto row = [](const char* name, const PropertyList& before, int one, int other, const PropertyList& after) {
      QTest::newRow(name) << before << one << other << after;
    };
    row("two keys", groupsWith({{1, assignment(16, 5, 1)}, {2, assignment(10, 1, 255)}}), 1, 2,
        groupsWith({{1, assignment(10, 1, 255)}, {2, assignment(16, 5, 1)}}));
    row("two groups", groupsWith({{1, assignment(16, 5, 1)}}), 1, 17,
        groupsWith({{1, assignment(3)}, {17, assignment(16, 5, 1)}}));
    row("two defaults", factoryGroups(), 2, 11, groupsWith({{2, assignment(16, 0, 2)}, {11, assignment(16, 20)}}));
    row("the left click among the first five", groupsWith({{2, assignment(1)}}), 2, 5,
        groupsWith({{2, assignment(16, 21)}, {5, assignment(1)}}));
    row("disabled directions", groupsWith({{20, assignment(20, 82)}, {1, assignment(16, 9)}}), 1, 20,
        groupsWith({{20, assignment(16, 9)}, {1, assignment(20)}}));
  }
  void two_controls_swap_what_they_do_and_back() {
    QFETCH(PropertyList, before);
    QFETCH(int, one);
    QFETCH(int, other);
    QFETCH(PropertyList, after);
    const GroupsChange change = swapped(before, control(one), control(other), factoryProfile());
    QVERIFY(change.problem == TransferProblem::None);
    COMPARE_LISTS(change.groups, after);
    COMPARE_LISTS(swapped(after, control(other), control(one), factoryProfile()).groups, before);
  }

  void what_cannot_be_swapped_stays_data() {
    QTest::addColumn<PropertyList>("before");
    QTest::addColumn<int>("one");
    QTest::addColumn<int>("other");
    QTest::addColumn<TransferProblem>("problem");
    QTest::newRow("the last left click") << groupsWith({{2, assignment(1)}}) << 2 << 6
                                         << TransferProblem::LastLeftClick;
    QTest::newRow("the last left click, from the other side")
        << groupsWith({{2, assignment(1)}}) << 6 << 2 << TransferProblem::LastLeftClick;
    QTest::newRow("a diagonal") << factoryGroups() << 1 << 21 << TransferProblem::Diagonal;
    QTest::newRow("what needs a release")
        << groupsWith({{1, assignment(10, 0, 255)}}) << 18 << 1 << TransferProblem::NeverHeld;
    QTest::newRow("a cycle") << groupsWith({{1, assignment(50, 255)}}) << 1 << 2 << TransferProblem::Cycle;
    QTest::newRow("a cycle, from the other side")
        << groupsWith({{1, assignment(50, 255)}}) << 2 << 1 << TransferProblem::Cycle;
    QTest::newRow("the same") << groupsWith({{1, assignment(16, 4)}, {2, assignment(16, 4)}}) << 1 << 2
                              << TransferProblem::NoChange;
  }
  void what_cannot_be_swapped_stays() {
    QFETCH(PropertyList, before);
    QFETCH(int, one);
    QFETCH(int, other);
    QFETCH(TransferProblem, problem);
    const GroupsChange change = swapped(before, control(one), control(other), factoryProfile());
    QVERIFY(change.problem == problem);
    COMPARE_LISTS(change.groups, before);
  }

  void further_keys_of_a_record_stay_with_their_control() {
    const PropertyList noted = assignment(16, 5, 1).with("note", "mine");
    const PropertyList after =
        swapped(groupsWith({{1, noted}, {2, assignment(18)}}), control(1), control(2), factoryProfile()).groups;
    COMPARE_LISTS(after, groupsWith({{1, assignment(18).with("note", "mine")}, {2, assignment(16, 5, 1)}}));
  }

  void a_cleared_keymap_does_what_it_does_out_of_the_box() {
    const PropertyList before =
        groupsWith({{1, assignment(16, 5, 1)}, {18, assignment(10, 0, 1)}, {21, assignment(20, 233)}});
    const GroupsChange change = cleared(before, factoryProfile());
    QVERIFY(change.problem == TransferProblem::None);
    COMPARE_LISTS(change.groups, factoryGroups());
    QVERIFY(cleared(factoryGroups(), factoryProfile()).problem == TransferProblem::NoChange);
  }

  void a_cleared_keymap_keeps_one_left_click() {
    const PropertyList before = groupsWith({{3, assignment(1)}, {4, assignment(1)}, {9, assignment(1)}});
    const GroupsChange change = cleared(before, factoryProfile());
    COMPARE_LISTS(change.groups, groupsWith({{3, assignment(1)}}));
    QVERIFY(cleared(change.groups, factoryProfile()).problem == TransferProblem::NoChange);
  }

  void a_pasted_keymap_does_what_the_copy_did() {
    const PropertyList copy =
        groupsWith({{1, assignment(16, 5, 1)}, {3, assignment(10, 0, 3)}, {4, assignment(17, 3)}, {17, assignment(9)}});
    const PropertyList before = groupsWith({{2, assignment(18)}, {3, assignment(16, 9).with("note", 3)}});
    const Lists now{macros().removing(1), profiles().removing(0), 0};
    const GroupsChange change = pasted(before, copy, sampleLists(), now, factoryProfile());
    QVERIFY(change.problem == TransferProblem::None);
    COMPARE_LISTS(change.groups, groupsWith({{1, assignment(16, 5, 1)},
                                             {3, assignment(10, 0, 3).with("note", 3)},
                                             {4, assignment(17, 2)},
                                             {17, assignment(9)}}));
  }

  void what_a_pasted_keymap_can_no_longer_do_is_the_default() {
    const PropertyList copy =
        groupsWith({{1, assignment(10, 1, 3)}, {2, assignment(17, 0)}, {3, assignment(17, 1)}, {4, assignment(18)}});
    const Lists now{macros().removing(1), profiles().removing(0), 0};
    const GroupsChange change =
        pasted(groupsWith({{3, assignment(16, 9)}}), copy, sampleLists(), now, factoryProfile());
    COMPARE_LISTS(change.groups, groupsWith({{4, assignment(18)}}));
    QCOMPARE(change.leftOut.size(), std::size_t(3));
    QCOMPARE(change.leftOut[0].control->number, 1);
    QVERIFY(change.leftOut[0].problem == TransferProblem::Gone);
    QCOMPARE(change.leftOut[0].gone, macros().at(1)[keys::MacroName].toString());
    QCOMPARE(change.leftOut[1].control->number, 2);
    QVERIFY(change.leftOut[1].problem == TransferProblem::Gone);
    QCOMPARE(change.leftOut[1].gone, std::string("Default"));
    QCOMPARE(change.leftOut[2].control->number, 3);
    QVERIFY(change.leftOut[2].problem == TransferProblem::OwnProfile);
  }

  void what_cycles_the_keymaps_outlasts_a_paste_and_a_clearing() {
    const PropertyList before = groupsWith({{2, assignment(50, 255)}, {3, assignment(16, 9)}});
    const GroupsChange clear = cleared(before, factoryProfile());
    COMPARE_LISTS(clear.groups, groupsWith({{2, assignment(50, 255)}}));
    QCOMPARE(clear.leftOut.size(), std::size_t(1));
    QCOMPARE(clear.leftOut[0].control->number, 2);
    QVERIFY(clear.leftOut[0].problem == TransferProblem::Cycle);
    QVERIFY(cleared(clear.groups, factoryProfile()).problem == TransferProblem::NoChange);
    const PropertyList copy = groupsWith({{2, assignment(16, 5)}, {4, assignment(18)}});
    const GroupsChange paste = pasted(before, copy, sampleLists(), sampleLists(), factoryProfile());
    COMPARE_LISTS(paste.groups, groupsWith({{2, assignment(50, 255)}, {4, assignment(18)}}));
    QCOMPARE(paste.leftOut.size(), std::size_t(1));
    QCOMPARE(paste.leftOut[0].control->number, 2);
    QVERIFY(paste.leftOut[0].problem == TransferProblem::Cycle);
    const GroupsChange same = pasted(before, before, sampleLists(), sampleLists(), factoryProfile());
    QVERIFY(same.problem == TransferProblem::NoChange);
    QVERIFY(same.leftOut.empty());
  }

  void what_begins_to_cycle_the_keymaps_is_told_from_what_did_so() {
    const PropertyList before = groupsWith({{2, assignment(50, 255)}});
    const PropertyList after = groupsWith({{2, assignment(50, 255)}, {5, assignment(50, 255)}, {6, assignment(50, 3)}});
    QVERIFY(newCycles(before, after) == std::vector<const ControlDescriptor*>{&control(5)});
    QVERIFY(newCycles(after, before).empty());
  }

  void a_keymap_is_not_pasted_over_the_last_left_click() {
    const PropertyList before = groupsWith({{2, assignment(1)}});
    const PropertyList copy = groupsWith({{7, assignment(18)}});
    const GroupsChange refused = pasted(before, copy, sampleLists(), sampleLists(), factoryProfile());
    QVERIFY(refused.problem == TransferProblem::LastLeftClick);
    COMPARE_LISTS(refused.groups, before);
    const GroupsChange other =
        pasted(before, groupsWith({{5, assignment(1)}}), sampleLists(), sampleLists(), factoryProfile());
    QVERIFY(other.problem == TransferProblem::None);
    QVERIFY(pasted(before, before, sampleLists(), sampleLists(), factoryProfile()).problem ==
            TransferProblem::NoChange);
  }
};

SKARN_QTEST(AssignmentTransferTest)
#include "AssignmentTransfer_test.moc"
