// The keymaps of a profile: the segments, the sheet of a keymap assignment, and the cycle in every keymap.
#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

struct KeymapFixture : ButtonsFixture {
  QComboBox& list() { return *find<QComboBox>("mKeymapValuePopUp"); }
  QCheckBox& switchBack() { return *find<QCheckBox>("mKeymapSwitchBack"); }
  SegmentedControl& segments() { return *find<SegmentedControl>("mKeymapSegment"); }

  void selectTag(int tag) {
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Home);
    for (int step = 0; step < tag; ++step) QTest::keyClick(&list(), Qt::Key_Down);
    QCOMPARE(list().currentData().toInt(), tag);
  }
  void clickSegment(int segment) {
    QTest::mouseClick(&segments(), Qt::LeftButton, {}, segments().segmentRect(segment).center());
  }

  // Every keymap, and the current group, with this record of the control.
  PropertyList cycleRequest(const ControlDescriptor& control) {
    const char* group = groupKey(control);
    const PropertyList cycle = assignment(50, 255);
    std::vector<PropertyList> changed;
    for (const PropertyList& keymap : current[keys::Keymap].elements())
      changed.push_back(keymap.with(group, keymap[group].with(control.identifier, cycle)));
    return call({"updateButtonAssignmentWithSettings",
                 PropertyList::dictionary({{"Keymap", PropertyList::array(changed)},
                                           {group, current[group].with(control.identifier, cycle)},
                                           {"KeymapID", current[keys::KeymapID]}})});
  }
};

}  // namespace

class MouseButtonControllerKeymapsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  // --- Sheet

  void every_target_of_the_sheet_is_written_data() { addControlRows(); }

  void every_target_of_the_sheet_is_written() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    const bool isWheelDirection = ordinal == 18 || ordinal == 19;
    KeymapFixture fixture;
    for (int tag = 0; tag <= 8; ++tag) {
      fixture.delegate.calls.clear();
      fixture.openKeymapSheet(control);
      QVERIFY(fixture.isOpen("mKeymapWindow"));
      QCOMPARE(fixture.find<QLabel>("mKeymapControl")->text(),
               fixture.popUp(control).accessibleName() + QStringLiteral(" · Work, Keymap 3"));
      fixture.selectTag(tag);
      QCOMPARE(fixture.switchBack().isEnabled(), tag != 0 && !isWheelDirection);
      QCOMPARE(fixture.switchBack().toolTip().isEmpty(), fixture.switchBack().isEnabled());
      const bool switchesBack = tag % 2 == 1 && !isWheelDirection;
      if (switchesBack) {
        fixture.switchBack().setFocus();
        QTest::keyClick(&fixture.switchBack(), Qt::Key_Space);
      }
      QVERIFY(fixture.delegate.calls.empty());
      fixture.press("mKeymapOK");
      QVERIFY(!fixture.isOpen("mKeymapWindow"));
      COMPARE_CALLS(fixture.delegate.calls,
                    tag == 0 ? fixture.cycleRequest(control)
                             : fixture.request(control, assignment(50, tag - 1, switchesBack ? 1 : 0)));
    }
  }

  void a_cancelled_keymap_writes_nothing_and_shows_the_stored_assignment_data() { addControlRows(); }

  void a_cancelled_keymap_writes_nothing_and_shows_the_stored_assignment() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    KeymapFixture fixture;
    const QString before = fixture.popUp(control).shownTitle();
    for (const bool byKey : {false, true}) {
      fixture.openKeymapSheet(control);
      QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Keymap"));
      fixture.selectTag(3);
      if (byKey) {
        QTest::keyClick(fixture.find<QDialog>("mKeymapWindow"), Qt::Key_Escape);
      } else {
        fixture.press("mKeymapCancel");
      }
      QVERIFY(!fixture.isOpen("mKeymapWindow"));
      QVERIFY(fixture.delegate.calls.empty());
      QCOMPARE(fixture.popUp(control).shownTitle(), before);
    }
  }

  void the_sheet_opens_with_the_present_target_data() {
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("isTicked");
    QTest::addColumn<bool>("canSwitchBack");
    QTest::newRow("another command") << assignment(16, 3, 1) << 0 << false << false;
    QTest::newRow("cycle") << assignment(50, 255, 0) << 0 << false << false;
    QTest::newRow("cycle that is said to switch back") << assignment(50, 255, 1) << 0 << true << false;
    // Keymap 0 opens with the cycle selected.
    QTest::newRow("keymap 0") << assignment(50, 0, 1) << 0 << true << false;
    for (int keymap = 1; keymap < 8; ++keymap) {
      QTest::addRow("keymap %d", keymap) << assignment(50, keymap, keymap % 2) << keymap + 1 << (keymap % 2 == 1)
                                         << true;
    }
    QTest::newRow("no keymap") << assignment(50, 8, 0) << 0 << false << false;
    QTest::newRow("largest number") << assignment(50, 2147483647, 0) << 0 << false << false;
    QTest::newRow("below zero") << assignment(50, -5, 0) << 0 << false << false;
  }

  void the_sheet_opens_with_the_present_target() {
    QFETCH(PropertyList, record);
    QFETCH(int, index);
    QFETCH(bool, isTicked);
    QFETCH(bool, canSwitchBack);
    KeymapFixture fixture;
    for (const int ordinal : {1, 17, 18, 19, 25}) {
      const ControlDescriptor& control = ButtonsFixture::control(ordinal);
      fixture.give(control, record);
      fixture.openKeymapSheet(control);
      const bool isWheelDirection = ordinal == 18 || ordinal == 19;
      QCOMPARE(fixture.list().currentIndex(), index);
      QCOMPARE(fixture.switchBack().isChecked(), isTicked);
      QCOMPARE(fixture.switchBack().isEnabled(), canSwitchBack && !isWheelDirection);
      QCOMPARE(fixture.tab.mIsScrollUpDown(), isWheelDirection);
      QCOMPARE(fixture.tab.mKeymapOptionValue(), index == 0 ? 255 : index - 1);
      fixture.press("mKeymapCancel");
      QVERIFY(fixture.delegate.calls.empty());
      QVERIFY(!fixture.tab.mIsScrollUpDown());
      fixture.openKeymapSheet(control);
      QCOMPARE(fixture.tab.mIsScrollUpDown(), isWheelDirection);
      fixture.press("mKeymapOK");
      QVERIFY(!fixture.tab.mIsScrollUpDown());
      fixture.delegate.calls.clear();
    }
  }

  void a_cycle_that_only_this_keymap_has_is_something_to_write() {
    KeymapFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(1);
    fixture.give(control, assignment(50, 255));
    const auto reason = [&] {
      fixture.openKeymapSheet(control);
      const QString words = fixture.find<QPushButton>("mKeymapOK")->toolTip();
      fixture.press("mKeymapCancel");
      return words;
    };
    QCOMPARE(reason(), QString());
    fixture.give(control, assignment(50, 4));
    fixture.openKeymapSheet(control);
    QVERIFY(!fixture.find<QPushButton>("mKeymapOK")->toolTip().isEmpty());
    fixture.press("mKeymapCancel");
    std::vector<PropertyList> keymaps;
    for (const PropertyList& keymap : fixture.current[keys::Keymap].elements())
      keymaps.push_back(keymap.with(keys::Keys, keymap[keys::Keys].with(control.identifier, assignment(50, 255))));
    fixture.current = fixture.current.with(keys::Keymap, PropertyList::array(std::move(keymaps)));
    fixture.give(control, assignment(50, 255));
    QCOMPARE(reason(), localized("lkeyProblemNoChange"));
  }

  void return_in_the_list_presses_ok() {
    KeymapFixture fixture;
    fixture.openKeymapSheet(fixture.control(1));
    fixture.selectTag(5);
    QTest::keyClick(&fixture.list(), Qt::Key_Return);
    QVERIFY(!fixture.isOpen("mKeymapWindow"));
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(fixture.control(1), assignment(50, 4)));
  }

  void the_targets_carry_their_tags() {
    KeymapFixture fixture;
    fixture.openKeymapSheet(fixture.control(1));
    QStringList items;
    for (int index = 0; index < fixture.list().count(); ++index)
      items << QString::number(fixture.list().itemData(index).toInt()) + QLatin1Char(' ') +
                   fixture.list().itemText(index);
    QCOMPARE(items, QStringList({"0 Cycle Keymaps", "1 Keymap 1", "2 Keymap 2", "3 Keymap 3", "4 Keymap 4",
                                 "5 Keymap 5", "6 Keymap 6", "7 Keymap 7", "8 Keymap 8"}));
  }

  void an_unknown_group_or_an_empty_profile_list_has_no_target() {
    KeymapFixture fixture;
    fixture.give(fixture.control(1), assignment(50, 4, 1));
    QCOMPARE(fixture.tab.getIndexValueOfAssignedKeyMapForButton("43", 2), 5);
    QCOMPARE(fixture.tab.mKeymapSwitchOptionValue(), 1);
    QCOMPARE(fixture.tab.getIndexValueOfAssignedKeyMapForButton("43", 1), 0);
    QCOMPARE(fixture.tab.getIndexValueOfAssignedKeyMapForButton("43", 3), 0);
    fixture.tab.setMAllProfiles(PropertyList::array());
    QCOMPARE(fixture.tab.getIndexValueOfAssignedKeyMapForButton("43", 2), 0);
  }

  // --- Use

  void keymaps_in_use_are_marked() {
    KeymapFixture fixture;
    const auto marked = [&fixture] {
      QList<int> keymapsInUse;
      for (int keymap = 0; keymap < 8; ++keymap) {
        if (fixture.segments().isMarked(keymap)) keymapsInUse << keymap;
      }
      return keymapsInUse;
    };
    // In each but the one in force, whose groups count, control 1 is another key.
    QCOMPARE(marked(), QList<int>({0, 1, 3, 4, 5, 6, 7}));
    const PropertyList plain = factoryKeymap();
    const PropertyList used = plain.with(keys::Buttons, plain[keys::Buttons].with("06", assignment(20)));
    fixture.show(fixture.current.with(
        keys::Keymap, PropertyList::array({plain, used, plain, PropertyList::dictionary(), "x", plain, plain, used})));
    QCOMPARE(marked(), QList<int>({1, 7}));
    fixture.give(fixture.control(1), assignment(20));
    QCOMPARE(marked(), QList<int>({1, 2, 7}));
    fixture.show(fixture.current.without(keys::Keymap));
    QCOMPARE(marked(), QList<int>({2}));
  }

  // --- Cycle

  void the_cycle_keeps_further_keys_and_elements_that_are_no_keymaps() {
    KeymapFixture fixture;
    PropertyList odd = keymaps().replacing(3, "no keymap");
    odd = odd.replacing(4, PropertyList::dictionary({{"name", 4}}));
    const PropertyList group = odd.at(2)[keys::Keys];
    odd = odd.replacing(2, odd.at(2).with(keys::Keys, group.with("43", assignment(16, 9).with("note", "mine"))));
    fixture.show(fixture.current.with(keys::Keymap, odd));
    fixture.tab.changeKeymapsKeymapCycleMappingForButton("43", 2);
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(1));
    const PropertyList sent = fixture.delegate.calls[0].at(1);
    const PropertyList cycle = assignment(50, 255);
    QVERIFY(sent[keys::Keymap].at(3) == PropertyList("no keymap"));
    COMPARE_LISTS(sent[keys::Keymap].at(4),
                  PropertyList::dictionary({{"name", 4}, {"Keys", PropertyList::dictionary({{"43", cycle}})}}));
    COMPARE_LISTS(sent[keys::Keymap].at(2)[keys::Keys]["43"], cycle.with("note", "mine"));
    // The current group takes the record of the active keymap.
    COMPARE_LISTS(sent[keys::Keys], fixture.current[keys::Keys].with("43", cycle.with("note", "mine")));
  }

  void without_a_keymap_in_force_only_the_keymaps_change() {
    KeymapFixture fixture;
    fixture.show(fixture.current.with(keys::KeymapID, 11));
    fixture.tab.changeKeymapsKeymapCycleMappingForButton("03", 1);
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(1));
    COMPARE_LISTS(fixture.delegate.calls[0].at(1)[keys::Buttons], fixture.current[keys::Buttons]);
    COMPARE_LISTS(fixture.delegate.calls[0].at(1)[keys::Keymap].at(7)[keys::Buttons]["03"], assignment(50, 255));
  }

  void a_profile_without_keymaps_is_not_given_an_empty_list_of_them() {
    KeymapFixture fixture;
    fixture.show(fixture.current.without(keys::Keymap));
    fixture.tab.changeKeymapsKeymapCycleMappingForButton("43", 2);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(fixture.control(1), assignment(50, 255)));
  }

  void the_cycle_of_an_unknown_group_is_not_sent() {
    KeymapFixture fixture;
    for (const int group : {0, 3, -1}) fixture.tab.changeKeymapsKeymapCycleMappingForButton("43", group);
    QVERIFY(fixture.delegate.calls.empty());
  }

  // --- Segments

  void every_segment_makes_its_keymap_the_current_one_data() {
    QTest::addColumn<int>("segment");
    for (int segment = 0; segment < 8; ++segment) QTest::addRow("%d", segment) << segment;
  }

  void every_segment_makes_its_keymap_the_current_one() {
    QFETCH(int, segment);
    KeymapFixture fixture;
    fixture.clickSegment(segment);
    if (segment == 2) {
      QVERIFY(fixture.delegate.calls.empty());
      return;
    }
    const PropertyList keymap = keymaps().at(segment);
    const PropertyList sent = PropertyList::dictionary(
        {{"KeymapID", segment}, {"Keys", keymap[keys::Keys]}, {"Buttons", keymap[keys::Buttons]}});
    COMPARE_CALLS(fixture.delegate.calls, call({"updateButtonAssignmentWithSettings", sent}));
    // Nothing came back: the keymap is the one that it was.
    QCOMPARE(fixture.segments().selectedSegment(), 2);
    fixture.delegate.onUpdate = [&fixture](const PropertyList& settings) {
      fixture.show(fixture.current.merging(settings));
    };
    fixture.clickSegment(segment);
    QCOMPARE(fixture.segments().selectedSegment(), segment);
    QCOMPARE(fixture.popUp(1).shownTitle(), QStringLiteral("Single Key : %1").arg((segment + 1) % 10));
  }

  void segments_are_chosen_by_keyboard() {
    KeymapFixture fixture;
    fixture.segments().setFocus();
    QTest::keyClick(&fixture.segments(), Qt::Key_End);
    QVERIFY(fixture.delegate.calls.empty());
    QTest::keyClick(&fixture.segments(), Qt::Key_Return);
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(1));
    QCOMPARE(fixture.delegate.calls[0].at(1)[keys::KeymapID].toInt(), 7);
  }

  void a_keymap_that_lacks_a_group_is_not_made_the_current_one_data() {
    QTest::addColumn<PropertyList>("keymap");
    QTest::newRow("none") << PropertyList();
    QTest::newRow("text") << PropertyList("x");
    QTest::newRow("empty") << PropertyList::dictionary();
    QTest::newRow("without keys") << keymaps().at(5).without(keys::Keys);
    QTest::newRow("without buttons") << keymaps().at(5).without(keys::Buttons);
    QTest::newRow("keys of another type") << keymaps().at(5).with(keys::Keys, 3);
  }

  void a_keymap_that_lacks_a_group_is_not_made_the_current_one() {
    QFETCH(PropertyList, keymap);
    KeymapFixture fixture;
    fixture.show(fixture.current.with(
        keys::Keymap, keymap.isNone() ? PropertyList::array({keymaps().at(0)}) : keymaps().replacing(5, keymap)));
    fixture.clickSegment(5);
    QVERIFY(fixture.delegate.calls.empty());
    QCOMPARE(fixture.segments().selectedSegment(), 2);
  }
};

SKARN_QTEST(MouseButtonControllerKeymapsTest)
#include "MouseButtonController_keymaps_test.moc"
