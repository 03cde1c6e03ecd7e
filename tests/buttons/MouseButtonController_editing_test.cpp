// The right-click menu of a control: reset, copy, paste and swap, and what of it is sent.
#include <QContextMenuEvent>

#include "buttons/ButtonsFixture.h"
#include "buttons/MouseView.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

constexpr int resetItem = 1;
constexpr int copyItem = 2;
constexpr int pasteItem = 3;
constexpr int swapItem = 4;

struct EditingFixture : ButtonsFixture {
  // As the desktop asks for it: by the right button, or by the Menu key.
  static void askForMenu(QWidget& widget, QContextMenuEvent::Reason reason, const QPoint& position) {
    QContextMenuEvent event(reason, position, widget.mapToGlobal(position));
    QApplication::sendEvent(&widget, &event);
  }
  QMenu* menuOf(const ControlDescriptor& control) {
    askForMenu(popUp(control), QContextMenuEvent::Mouse, QPoint(5, 5));
    return openMenu();
  }
  QMenu* openMenu() {
    deleteReplaced();
    for (QMenu* menu : tab.findChildren<QMenu*>(QStringLiteral("mControlMenu"))) {
      if (menu->isVisible()) return menu;
    }
    return nullptr;
  }
  static QAction* itemOf(const QMenu& menu, int tag) {
    for (QAction* item : menu.actions()) {
      if (!item->isSeparator() && tagOf(*item) == tag) return item;
    }
    return nullptr;
  }
  void choose(const ControlDescriptor& control, int tag) {
    QMenu* menu = menuOf(control);
    QVERIFY(menu != nullptr);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(itemOf(*menu, tag)).center());
    // It stays open after a click on an item that is off.
    if (menu->isVisible()) menu->close();
    deleteReplaced();
  }
  // Why the item is off; empty when it is on.
  QString reasonAgainst(const ControlDescriptor& control, int tag) {
    QMenu* menu = menuOf(control);
    const QAction* item = itemOf(*menu, tag);
    const QString reason = item->isEnabled() ? QString() : item->toolTip();
    if (!item->isEnabled() && reason.isEmpty()) return QStringLiteral("(no reason)");
    menu->close();
    deleteReplaced();
    return reason;
  }
  void swapWith(const ControlDescriptor& control, const ControlDescriptor& other) {
    choose(control, swapItem);
    QVERIFY(isOpen("mSwapWindow"));
    select(other);
    press("mSwapOK");
  }
  void select(const ControlDescriptor& other) {
    auto* list = find<QComboBox>("mSwapPopUp");
    const int wanted = list->findData(other.number);
    QVERIFY(wanted >= 0);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    for (int step = 0; step < wanted; ++step) QTest::keyClick(list, Qt::Key_Down);
  }
};

const ControlDescriptor& control(int number) {
  return ButtonsDriver::control(number);
}

}  // namespace

class MouseButtonControllerEditingTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void the_menu_opens_wherever_a_row_or_its_place_in_the_picture_is_right_clicked_data() { addControlRows(); }
  void the_menu_opens_wherever_a_row_or_its_place_in_the_picture_is_right_clicked() {
    QFETCH(int, ordinal);
    EditingFixture fixture;
    const ControlDescriptor& asked = control(ordinal);
    fixture.give(asked, assignment(10, 0));
    ControlRow& row = fixture.row(asked);
    auto* label = fixture.find<QLabel>(qPrintable(QLatin1String(asked.fieldName) + QStringLiteral("Label")));
    auto* picture = fixture.find<MouseView>("mMainSkarn");
    const QPoint place = picture->placeOf(asked).toPoint();
    for (const auto& [widget, position] : std::initializer_list<std::pair<QWidget*, QPoint>>{
             {&row, {2, 2}}, {label, {2, 2}}, {row.popUp(), {9, 9}}, {row.repeatButton(), {2, 2}}, {picture, place}}) {
      fixture.askForMenu(*widget, QContextMenuEvent::Mouse, position);
      QMenu* menu = fixture.openMenu();
      QVERIFY(menu != nullptr);
      QCOMPARE(menu->accessibleName(), spokenName(asked));
      QVERIFY(row.isHighlighted());
      menu->close();
      QVERIFY(!row.isHighlighted());
    }
    fixture.askForMenu(*row.popUp(), QContextMenuEvent::Keyboard, QPoint());
    QVERIFY(fixture.openMenu() != nullptr);
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void beside_the_controls_of_the_picture_there_is_no_menu() {
    EditingFixture fixture;
    fixture.askForMenu(*fixture.find<MouseView>("mMainSkarn"), QContextMenuEvent::Mouse, QPoint(1, 1));
    QVERIFY(fixture.openMenu() == nullptr);
  }

  void reset_writes_the_default_of_every_control_data() { addControlRows(); }
  void reset_writes_the_default_of_every_control() {
    QFETCH(int, ordinal);
    EditingFixture fixture;
    const ControlDescriptor& changed = control(ordinal);
    const PropertyList factory = factoryGroup(changed.groupType())[changed.identifier];
    QCOMPARE(fixture.reasonAgainst(changed, resetItem), QStringLiteral("It does what it does out of the box"));
    fixture.give(changed, assignment(10, 0, 3));
    fixture.choose(changed, resetItem);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(changed, factory));
  }

  void what_was_copied_is_pasted_in_one_request_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<int>("to");
    QTest::addColumn<PropertyList>("expected");
    QTest::newRow("a chord") << 4 << assignment(16, 6, 3) << 9 << assignment(16, 6, 3);
    QTest::newRow("a macro with its repeat mode") << 4 << assignment(10, 2, 255) << 17 << assignment(10, 2, 255);
    QTest::newRow("a default") << 2 << assignment(45, 20) << 9 << assignment(16, 20);
    QTest::newRow("a keymap with switch back") << 17 << assignment(50, 4, 1) << 20 << assignment(50, 4, 1);
    QTest::newRow("a profile") << 2 << assignment(17, 3) << 9 << assignment(17, 3);
  }
  void what_was_copied_is_pasted_in_one_request() {
    QFETCH(int, from);
    QFETCH(PropertyList, record);
    QFETCH(int, to);
    QFETCH(PropertyList, expected);
    EditingFixture fixture;
    fixture.give(control(from), record);
    QCOMPARE(fixture.reasonAgainst(control(to), pasteItem), QStringLiteral("Copy what another control does first"));
    fixture.choose(control(from), copyItem);
    COMPARE_CALLS(fixture.delegate.calls);
    fixture.choose(control(to), pasteItem);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control(to), expected));
  }

  void a_pasted_cycle_is_in_every_keymap() {
    EditingFixture fixture;
    fixture.give(control(4), assignment(50, 255));
    fixture.choose(control(4), copyItem);
    fixture.choose(control(9), pasteItem);
    PropertyList changed = fixture.current[keys::Keymap];
    for (int keymap = 0; keymap < 8; ++keymap) {
      const PropertyList& before = changed.at(keymap);
      changed = changed.replacing(
          keymap, before.with(keys::Keys, before[keys::Keys].with(control(9).identifier, assignment(50, 255))));
    }
    const PropertyList group = fixture.current[keys::Keys].with(control(9).identifier, assignment(50, 255));
    COMPARE_CALLS(
        fixture.delegate.calls,
        call({"updateButtonAssignmentWithSettings",
              PropertyList::dictionary({{keys::Keymap, changed}, {keys::Keys, group}, {keys::KeymapID, 2}})}));
  }

  void what_was_copied_goes_to_another_keymap_and_profile_and_finds_its_macro_there() {
    EditingFixture fixture;
    fixture.give(control(4), assignment(10, 2, 5));
    fixture.choose(control(4), copyItem);
    fixture.hand(fixture.tab.mAllProfiles().replacing(
                     0, fixture.current.with(keys::ProfileName, "Home").with(keys::KeymapID, 6)),
                 0, macros().removing(0));
    fixture.choose(control(9), pasteItem);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control(9), assignment(10, 1, 5)));
    QCOMPARE(fixture.delegate.calls.at(0).at(1)[keys::KeymapID].toInt(), 6);
  }

  void what_cannot_be_pasted_says_why_and_sends_nothing_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a diagonal") << 21 << assignment(45, 233) << 4
                                << "What a diagonal of the direction pad does out of the box, no other control can do";
    QTest::newRow("until released, on the wheel")
        << 4 << assignment(10, 0, 255) << 18
        << "The wheel’s directions are never held: they have no switch back, and no repeat until something ends";
    QTest::newRow("the same") << 4 << assignment(10, 0, 255) << 4 << "It does that already";
    QTest::newRow("its own default") << 4 << assignment(45, 8) << 4 << "It does that already";
  }
  void what_cannot_be_pasted_says_why_and_sends_nothing() {
    QFETCH(int, from);
    QFETCH(PropertyList, record);
    QFETCH(int, to);
    QFETCH(QString, reason);
    EditingFixture fixture;
    fixture.give(control(from), record);
    fixture.choose(control(from), copyItem);
    QCOMPARE(fixture.reasonAgainst(control(to), pasteItem), reason);
    fixture.choose(control(to), pasteItem);
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void a_profile_is_not_pasted_into_itself_nor_a_macro_that_is_gone() {
    EditingFixture fixture;
    fixture.give(control(4), assignment(17, 3));
    fixture.choose(control(4), copyItem);
    fixture.hand(fixture.tab.mAllProfiles(), 3);
    QCOMPARE(fixture.reasonAgainst(control(9), pasteItem),
             QStringLiteral("It would switch to the profile that it belongs to"));
    fixture.hand(fixture.tab.mAllProfiles(), 1);
    fixture.give(control(4), assignment(10, 2));
    fixture.choose(control(4), copyItem);
    fixture.hand(fixture.tab.mAllProfiles(), 1, macros().removing(2));
    QCOMPARE(fixture.reasonAgainst(control(9), pasteItem), QStringLiteral("“Greeting” is no longer there"));
  }

  void the_last_left_click_is_neither_reset_nor_pasted_over() {
    EditingFixture fixture;
    fixture.give(control(3), assignment(1));
    fixture.give(control(9), assignment(16, 4));
    QVERIFY(!fixture.popUp(3).isEnabled());
    fixture.choose(control(9), copyItem);
    for (const int item : {resetItem, pasteItem}) {
      QVERIFY(fixture.reasonAgainst(control(3), item).startsWith(QStringLiteral("One of the controls 1 to 5 has")));
      fixture.choose(control(3), item);
    }
    COMPARE_CALLS(fixture.delegate.calls);
    fixture.give(control(4), assignment(1));
    fixture.choose(control(3), pasteItem);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control(3), assignment(16, 4)));
  }

  void two_controls_of_a_group_are_swapped_in_one_request() {
    EditingFixture fixture;
    fixture.give(control(4), assignment(16, 6, 3));
    fixture.give(control(9), assignment(10, 2, 255));
    fixture.swapWith(control(4), control(9));
    QVERIFY(!fixture.isOpen("mSwapWindow"));
    const PropertyList group = fixture.current[keys::Keys]
                                   .with(control(4).identifier, assignment(10, 2, 255))
                                   .with(control(9).identifier, assignment(16, 6, 3));
    COMPARE_CALLS(fixture.delegate.calls, call({"updateButtonAssignmentWithSettings",
                                                PropertyList::dictionary({{keys::Keys, group}, {keys::KeymapID, 2}})}));
  }

  void two_controls_of_different_groups_are_swapped_in_one_request() {
    EditingFixture fixture;
    fixture.give(control(4), assignment(16, 6, 3));
    fixture.swapWith(control(17), control(4));
    const PropertyList keysGroup = fixture.current[keys::Keys].with(control(4).identifier, assignment(3));
    const PropertyList buttonsGroup = fixture.current[keys::Buttons].with(control(17).identifier, assignment(16, 6, 3));
    COMPARE_CALLS(fixture.delegate.calls,
                  call({"updateButtonAssignmentWithSettings",
                        PropertyList::dictionary(
                            {{keys::Keys, keysGroup}, {keys::Buttons, buttonsGroup}, {keys::KeymapID, 2}})}));
  }

  void the_swap_sheet_says_what_it_swaps_and_why_it_cannot() {
    EditingFixture fixture;
    fixture.give(control(3), assignment(1));
    fixture.choose(control(3), swapItem);
    QCOMPARE(fixture.find<QLabel>("mSwapSubject")->text(), QStringLiteral("Button 3, W key · Work, Keymap 3"));
    auto* list = fixture.find<QComboBox>("mSwapPopUp");
    QCOMPARE(list->count(), 26);
    // The first one that it can be swapped with.
    QCOMPARE(list->currentText(), QStringLiteral("Button 1, Tab key – Tab (Default)"));
    auto* ok = fixture.find<QPushButton>("mSwapOK");
    QVERIFY(ok->isEnabled());
    fixture.select(control(6));
    QVERIFY(!ok->isEnabled());
    QVERIFY(ok->toolTip().startsWith(QStringLiteral("One of the controls 1 to 5 has")));
    QCOMPARE(fixture.find<QLabel>("mSwapProblem")->text(), ok->toolTip());
    fixture.select(control(5));
    QVERIFY(ok->isEnabled());
    QCOMPARE(ok->toolTip(), QString());
    QTest::keyClick(list, Qt::Key_Escape);
    QVERIFY(!fixture.isOpen("mSwapWindow"));
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void the_swap_sheet_belongs_to_the_keymap_that_it_was_opened_for() {
    EditingFixture fixture;
    fixture.give(control(4), assignment(16, 6, 3));
    const PropertyList elsewhere =
        fixture.current.with(keys::KeymapID, 5)
            .with(keys::Keys, factoryGroup(1))
            .with(keys::Keymap, fixture.current[keys::Keymap].replacing(
                                    2, PropertyList::dictionary({{keys::Keys, fixture.current[keys::Keys]},
                                                                 {keys::Buttons, fixture.current[keys::Buttons]}})));
    fixture.choose(control(4), swapItem);
    fixture.select(control(17));
    fixture.hand(fixture.tab.mAllProfiles().replacing(1, elsewhere), 1);
    fixture.press("mSwapOK");
    const PropertyList& keymap = elsewhere[keys::Keymap].at(2);
    const PropertyList changed = elsewhere[keys::Keymap].replacing(
        2, keymap.with(keys::Keys, keymap[keys::Keys].with(control(4).identifier, assignment(3)))
               .with(keys::Buttons, keymap[keys::Buttons].with(control(17).identifier, assignment(16, 6, 3))));
    COMPARE_CALLS(fixture.delegate.calls,
                  call({"updateButtonAssignmentWithSettings", PropertyList::dictionary({{keys::Keymap, changed}}), 1}));
  }

  void an_open_swap_sheet_says_what_its_controls_do_by_now_and_keeps_the_chosen_one() {
    EditingFixture fixture;
    fixture.give(control(5), assignment(16, 4, 1));
    fixture.choose(control(4), swapItem);
    fixture.select(control(5));
    auto* list = fixture.find<QComboBox>("mSwapPopUp");
    QCOMPARE(list->currentText(), QStringLiteral("Button 5, R key – Single Key : Left Control + A"));
    fixture.give(control(5), assignment(10, 0, 1));
    QVERIFY(fixture.isOpen("mSwapWindow"));
    QCOMPARE(list->currentText(), QStringLiteral("Button 5, R key – Macro : Fireball"));
    QCOMPARE(list->count(), 26);
    // Another keymap comes, in which the control does something else.
    const PropertyList there = PropertyList::dictionary(
        {{keys::Keys, fixture.current[keys::Keys]}, {keys::Buttons, fixture.current[keys::Buttons]}});
    const PropertyList names = PropertyList::array({"", "", "Build", "", "", "", "", ""});
    fixture.show(fixture.current.with(keys::KeymapID, 5)
                     .with(keys::Keys, factoryGroup(1))
                     .with(keys::KeymapNames, names)
                     .with(keys::Keymap, fixture.current[keys::Keymap].replacing(2, there)));
    QCOMPARE(list->currentText(), QStringLiteral("Button 5, R key – Macro “Fireball”"));
    QCOMPARE(fixture.find<QLabel>("mSwapSubject")->text(), QStringLiteral("Button 4, E key · Work, Keymap 3 – Build"));
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void the_swap_sheet_says_that_its_profile_is_gone() {
    EditingFixture fixture;
    fixture.choose(control(4), swapItem);
    fixture.hand(fixture.tab.mAllProfiles().removing(1), 0);
    fixture.press("mSwapOK");
    QVERIFY(!fixture.isOpen("mSwapWindow"));
    QVERIFY(fixture.isOpen("alert"));
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void a_change_meanwhile_turns_the_swap_off() {
    EditingFixture fixture;
    fixture.give(control(4), assignment(16, 6, 3));
    fixture.choose(control(4), swapItem);
    fixture.select(control(18));
    fixture.give(control(4), assignment(10, 0, 255));
    QVERIFY(!fixture.find<QPushButton>("mSwapOK")->isEnabled());
    fixture.tab.window()->findChild<QDialog*>(QStringLiteral("mSwapWindow"))->accept();
    QVERIFY(fixture.isOpen("mSwapWindow"));
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void without_the_mouse_the_menu_says_so() {
    EditingFixture fixture;
    fixture.choose(control(4), copyItem);
    fixture.tab.enableControlsState(false);
    fixture.askForMenu(fixture.row(control(4)), QContextMenuEvent::Mouse, QPoint(5, 5));
    const QMenu* menu = fixture.openMenu();
    for (const int item : {resetItem, copyItem, pasteItem, swapItem}) {
      QVERIFY(!EditingFixture::itemOf(*menu, item)->isEnabled());
      QCOMPARE(EditingFixture::itemOf(*menu, item)->toolTip(), QStringLiteral("No mouse connected"));
    }
  }
};

SKARN_QTEST(MouseButtonControllerEditingTest)
#include "MouseButtonController_editing_test.moc"
