// The menu of a keymap: its name, copy, paste and clear, and what of it is sent.
#include <QContextMenuEvent>
#include <QLineEdit>

#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"
#include "widgets/Notice.h"
#include "widgets/PullDownButton.h"

using namespace skarn;
using namespace skarn::test;

namespace {

constexpr int nameItem = 1;
constexpr int copyItem = 2;
constexpr int pasteItem = 3;
constexpr int clearItem = 4;
constexpr int inForce = 2;

const ControlDescriptor& control(int number) {
  return ButtonsDriver::control(number);
}

// The keymaps with this key cycling them in each.
PropertyList cycling(const ControlDescriptor& key, PropertyList all) {
  for (int keymap = 0; keymap < 8; ++keymap) {
    const PropertyList& one = all.at(keymap);
    const PropertyList group = one[keys::Keys].with(key.identifier, assignment(50, 255));
    all = all.replacing(keymap, one.with(keys::Keys, group));
  }
  return all;
}

PropertyList groupsOf(const PropertyList& holder) {
  return PropertyList::dictionary({{keys::Keys, holder[keys::Keys]}, {keys::Buttons, holder[keys::Buttons]}});
}

// The tab on keymap 2, which it holds as the others are held; there control 4 does something else.
struct KeymapMenuFixture : ButtonsFixture {
  KeymapMenuFixture() {
    const PropertyList changed = factoryGroup(1).with(fourth().identifier, assignment(16, 6, 3));
    const PropertyList keymap = PropertyList::dictionary({{keys::Keys, changed}, {keys::Buttons, factoryGroup(2)}});
    show(sample()
             .with(keys::Keys, changed)
             .with(keys::Buttons, factoryGroup(2))
             .with(keys::Keymap, keymaps().replacing(inForce, keymap)));
  }
  static const ControlDescriptor& fourth() { return control(4); }
  SegmentedControl& segments() { return *find<SegmentedControl>("mKeymapSegment"); }
  PullDownButton& button() { return *find<PullDownButton>("mKeymapMenuButton"); }

  void ask(int keymap, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
    const QPoint place = segments().segmentRect(keymap).center();
    QContextMenuEvent event(reason, place, segments().mapToGlobal(place));
    QApplication::sendEvent(&segments(), &event);
  }
  QMenu* openMenu() {
    deleteReplaced();
    for (QMenu* menu : tab.findChildren<QMenu*>(QStringLiteral("mKeymapMenu"))) {
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
  void choose(int keymap, int tag) {
    ask(keymap);
    QMenu* menu = openMenu();
    QVERIFY(menu != nullptr);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(itemOf(*menu, tag)).center());
    // It stays open after a click on an item that is off.
    if (menu->isVisible()) menu->close();
    deleteReplaced();
  }
  QString reasonAgainst(int keymap, int tag) {
    ask(keymap);
    QMenu* menu = openMenu();
    const QAction* item = itemOf(*menu, tag);
    const QString reason = item->isEnabled() ? QString() : item->toolTip();
    menu->close();
    deleteReplaced();
    return reason;
  }
  void name(int keymap, const QString& name) {
    choose(keymap, nameItem);
    find<QLineEdit>("mKeymapNameField")->setText(name);
    press("mKeymapNameOK");
  }
  Notice& notice() { return *find<Notice>("mButtonNotice"); }
  // What the notice says; empty when it says nothing.
  QString told() { return notice().isVisible() ? notice().text() : QString(); }
  PropertyList requestForKeymaps(const PropertyList& changed) const {
    return call({"updateButtonAssignmentWithSettings", PropertyList::dictionary({{keys::Keymap, changed}}), 1});
  }
};

}  // namespace

class MouseButtonControllerKeymapMenuTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void the_menu_opens_on_each_number_by_pointer_and_keyboard_and_from_its_button() {
    KeymapMenuFixture fixture;
    for (int keymap = 0; keymap < 8; ++keymap) {
      fixture.ask(keymap);
      QVERIFY(fixture.openMenu() != nullptr);
      QCOMPARE(fixture.openMenu()->accessibleName(), QStringLiteral("Keymap %1").arg(keymap + 1));
      fixture.openMenu()->close();
    }
    fixture.segments().setFocus();
    QTest::keyClick(&fixture.segments(), Qt::Key_End);
    fixture.ask(0, QContextMenuEvent::Keyboard);
    QCOMPARE(fixture.openMenu()->accessibleName(), QStringLiteral("Keymap 8"));
    fixture.openMenu()->close();
    fixture.button().openMenu();
    QCOMPARE(fixture.button().menu()->accessibleName(), QStringLiteral("Keymap 3"));
    QStringList titles;
    for (const QAction* item : fixture.button().menu()->actions()) {
      if (!item->isSeparator()) titles << titleOf(*item);
    }
    QCOMPARE(titles, QStringList({"Name…", "Copy Keymap", "Paste Keymap", "Clear Keymap"}));
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void a_keymap_is_named_in_one_request() {
    KeymapMenuFixture fixture;
    fixture.name(5, QStringLiteral("  Build  base "));
    const PropertyList names = PropertyList::array({"", "", "", "", "", "Build base", "", ""});
    COMPARE_CALLS(fixture.delegate.calls, call({"updateButtonAssignmentWithSettings",
                                                PropertyList::dictionary({{keys::KeymapNames, names}}), 1}));
  }

  void a_name_is_shown_wherever_the_keymap_is_named_and_the_labels_stay() {
    KeymapMenuFixture fixture;
    fixture.show(fixture.current.with(keys::KeymapNames, PropertyList::array({"", "", "Build & base"})));
    fixture.give(ButtonsFixture::control(9), assignment(50, 2));
    QCOMPARE(fixture.segments().segmentName(2), QStringLiteral("Keymap 3 – Build & base"));
    QCOMPARE(fixture.segments().segmentName(3), QStringLiteral("Keymap 4"));
    const QMenu* submenu = fixture.openSubmenu(ButtonsFixture::control(1), AssignmentCategory::Keymap);
    QCOMPARE(titleOf(*submenu->actions().at(3)), QStringLiteral("Keymap 3 – Build & base"));
    fixture.popUp(1).menu()->close();
    QCOMPARE(fixture.popUp(9).shownTitle(), QStringLiteral("Keymap: Keymap 3"));
    QVERIFY(fixture.popUp(9).indexOfSelectedItem() >= 0);
    fixture.openKeymapSheet(ButtonsFixture::control(9));
    QCOMPARE(fixture.find<QComboBox>("mKeymapValuePopUp")->currentText(), QStringLiteral("Keymap 3 – Build & base"));
    QCOMPARE(fixture.find<QLabel>("mKeymapControl")->text(),
             QStringLiteral("Button 9, D key · Work, Keymap 3 – Build & base"));
    fixture.press("mKeymapCancel");
    QTest::keyClicks(fixture.find<QLineEdit>("mControlSearch"), QStringLiteral("build"));
    QCOMPARE(fixture.find<QLabel>("mControlsFound")->text(), QStringLiteral("1 found"));
  }

  void the_name_sheet_offers_the_present_name_and_waits_for_another() {
    KeymapMenuFixture fixture;
    fixture.show(fixture.current.with(keys::KeymapNames, PropertyList::array({"", "Build"})));
    fixture.choose(1, nameItem);
    auto* field = fixture.find<QLineEdit>("mKeymapNameField");
    auto* ok = fixture.find<QPushButton>("mKeymapNameOK");
    QCOMPARE(fixture.find<QLabel>("mKeymapNameSubject")->text(), QStringLiteral("Work · Keymap 2 – Build"));
    QCOMPARE(field->selectedText(), QStringLiteral("Build"));
    QVERIFY(!ok->isEnabled());
    QVERIFY(!ok->toolTip().isEmpty());
    QTest::keyClick(field, Qt::Key_Return);
    QVERIFY(fixture.isOpen("mKeymapNameWindow"));
    field->clear();
    QVERIFY(ok->isEnabled());
    QTest::keyClick(field, Qt::Key_Return);
    QVERIFY(!fixture.isOpen("mKeymapNameWindow"));
    const PropertyList names = PropertyList::array({"", "", "", "", "", "", "", ""});
    COMPARE_CALLS(fixture.delegate.calls, call({"updateButtonAssignmentWithSettings",
                                                PropertyList::dictionary({{keys::KeymapNames, names}}), 1}));
    fixture.choose(1, nameItem);
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(!fixture.isOpen("mKeymapNameWindow"));
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(1));
  }

  void a_name_goes_to_the_profile_that_the_sheet_was_opened_for() {
    KeymapMenuFixture fixture;
    fixture.choose(1, nameItem);
    fixture.hand(fixture.tab.mAllProfiles().replacing(0, fixture.current.with(keys::ProfileName, "Home")), 0);
    fixture.find<QLineEdit>("mKeymapNameField")->setText(QStringLiteral("Build"));
    fixture.press("mKeymapNameOK");
    QCOMPARE(fixture.delegate.calls.at(0).at(2).toInt(), 1);
    fixture.choose(1, nameItem);
    fixture.find<QLineEdit>("mKeymapNameField")->setText(QStringLiteral("Build"));
    fixture.hand(fixture.tab.mAllProfiles().removing(0), 0);
    fixture.press("mKeymapNameOK");
    QVERIFY(fixture.isOpen("alert"));
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(1));
  }

  void a_keymap_is_copied_into_another_one_in_one_request() {
    KeymapMenuFixture fixture;
    QCOMPARE(fixture.reasonAgainst(6, pasteItem), QStringLiteral("Copy a keymap first"));
    fixture.choose(inForce, copyItem);
    QCOMPARE(fixture.reasonAgainst(inForce, pasteItem), QStringLiteral("It does that already"));
    COMPARE_CALLS(fixture.delegate.calls);
    fixture.choose(6, pasteItem);
    const PropertyList& before = fixture.current[keys::Keymap].at(6);
    const PropertyList group = before[keys::Keys]
                                   .with("43", assignment(45, 43))
                                   .with(KeymapMenuFixture::fourth().identifier, assignment(16, 6, 3));
    COMPARE_CALLS(fixture.delegate.calls, fixture.requestForKeymaps(fixture.current[keys::Keymap].replacing(
                                              6, before.with(keys::Keys, group))));
  }

  void a_keymap_is_pasted_over_the_one_in_force_in_one_request() {
    KeymapMenuFixture fixture;
    fixture.choose(6, copyItem);
    fixture.choose(inForce, pasteItem);
    const PropertyList group = fixture.current[keys::Keys]
                                   .with("43", assignment(16, 36))
                                   .with(KeymapMenuFixture::fourth().identifier, assignment(45, 8));
    COMPARE_CALLS(fixture.delegate.calls,
                  call({"updateButtonAssignmentWithSettings",
                        PropertyList::dictionary({{keys::Keys, group}, {keys::KeymapID, inForce}})}));
  }

  void a_keymap_goes_to_another_profile() {
    KeymapMenuFixture fixture;
    fixture.choose(inForce, copyItem);
    const PropertyList home = fixture.current.with(keys::ProfileName, "Home")
                                  .with(keys::KeymapID, 0)
                                  .with(keys::Keys, factoryGroup(1))
                                  .with(keys::Keymap, keymaps().replacing(0, groupsOf(profile("Home"))));
    fixture.hand(fixture.tab.mAllProfiles().replacing(0, home), 0);
    fixture.choose(0, pasteItem);
    const PropertyList group = factoryGroup(1).with(KeymapMenuFixture::fourth().identifier, assignment(16, 6, 3));
    COMPARE_CALLS(fixture.delegate.calls, call({"updateButtonAssignmentWithSettings",
                                                PropertyList::dictionary({{keys::Keys, group}, {keys::KeymapID, 0}})}));
  }

  void what_a_pasted_keymap_can_no_longer_do_is_told_and_the_rest_is_pasted() {
    KeymapMenuFixture fixture;
    fixture.give(control(5), assignment(10, 0, 1));
    fixture.give(control(6), assignment(10, 0, 3));
    fixture.give(control(7), assignment(17, 0));
    fixture.give(control(9), assignment(10, 2, 1));
    fixture.choose(inForce, copyItem);
    fixture.hand(fixture.tab.mAllProfiles().replacing(0, fixture.current.with(keys::ProfileName, "Home")), 1,
                 macros().removing(0));
    const PropertyList& before = fixture.current[keys::Keymap].at(6);
    fixture.choose(6, pasteItem);
    const PropertyList group = before[keys::Keys]
                                   .with("43", assignment(45, 43))
                                   .with(KeymapMenuFixture::fourth().identifier, assignment(16, 6, 3))
                                   .with(control(9).identifier, assignment(10, 1, 1));
    COMPARE_CALLS(fixture.delegate.calls, fixture.requestForKeymaps(fixture.current[keys::Keymap].replacing(
                                              6, before.with(keys::Keys, group))));
    QCOMPARE(fixture.told(), QStringLiteral("Left out: buttons 5, 6 – “Fireball” is no longer there; "
                                            "button 7 – “Default” is no longer there"));
    fixture.choose(5, clearItem);
    QCOMPARE(fixture.told(), QString());
  }

  void a_pasted_keymap_does_not_switch_to_its_own_profile_and_says_so() {
    KeymapMenuFixture fixture;
    fixture.give(control(7), assignment(17, 0));
    fixture.choose(inForce, copyItem);
    fixture.hand(fixture.tab.mAllProfiles(), 0);
    fixture.hand(
        fixture.tab.mAllProfiles().replacing(0, fixture.current.with(keys::KeymapID, 0).with(keys::Keymap, keymaps())),
        0);
    fixture.choose(1, pasteItem);
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(1));
    QCOMPARE(fixture.told(), QStringLiteral("Left out: button 7 – It would switch to the profile that it belongs to"));
    fixture.tab.enableControlsState(false);
    QCOMPARE(fixture.told(), QString());
  }

  void a_keymap_of_which_nothing_is_left_to_paste_says_why() {
    KeymapMenuFixture fixture;
    fixture.show(fixture.current.with(keys::Keys, factoryGroup(1).with(control(7).identifier, assignment(10, 0, 1))));
    fixture.choose(inForce, copyItem);
    fixture.choose(6, clearItem);
    fixture.hand(
        fixture.tab.mAllProfiles().replacing(
            1, fixture.current.with(
                   keys::Keymap, keymaps().replacing(6, PropertyList::dictionary({{keys::Keys, factoryGroup(1)},
                                                                                  {keys::Buttons, factoryGroup(2)}})))),
        1, macros().removing(0));
    fixture.delegate.calls.clear();
    QCOMPARE(fixture.reasonAgainst(6, pasteItem), QStringLiteral("Left out: button 7 – “Fireball” is no longer there"));
    fixture.choose(6, pasteItem);
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void a_pasted_cycle_is_written_into_every_keymap() {
    KeymapMenuFixture fixture;
    fixture.give(control(9), assignment(50, 255));
    fixture.choose(inForce, copyItem);
    fixture.choose(6, pasteItem);
    PropertyList changed = fixture.current[keys::Keymap];
    const PropertyList target = changed.at(6)[keys::Keys]
                                    .with("43", assignment(45, 43))
                                    .with(KeymapMenuFixture::fourth().identifier, assignment(16, 6, 3));
    changed = changed.replacing(6, changed.at(6).with(keys::Keys, target));
    changed = cycling(control(9), changed);
    COMPARE_CALLS(fixture.delegate.calls, fixture.requestForKeymaps(changed));
    QCOMPARE(fixture.told(), QString());
  }

  void a_cycle_that_is_pasted_over_the_keymap_in_force_is_written_into_every_keymap() {
    KeymapMenuFixture fixture;
    const PropertyList& sixth = fixture.current[keys::Keymap].at(6);
    const PropertyList source =
        sixth.with(keys::Keys, sixth[keys::Keys].with(control(9).identifier, assignment(50, 255)));
    fixture.show(fixture.current.with(keys::Keymap, fixture.current[keys::Keymap].replacing(6, source)));
    fixture.choose(6, copyItem);
    fixture.choose(inForce, pasteItem);
    const PropertyList group = fixture.current[keys::Keys]
                                   .with("43", assignment(16, 36))
                                   .with(KeymapMenuFixture::fourth().identifier, assignment(45, 8))
                                   .with(control(9).identifier, assignment(50, 255));
    PropertyList changed = fixture.current[keys::Keymap];
    changed = changed.replacing(inForce, changed.at(inForce).with(keys::Keys, group));
    changed = cycling(control(9), changed);
    COMPARE_CALLS(
        fixture.delegate.calls,
        call({"updateButtonAssignmentWithSettings",
              PropertyList::dictionary({{keys::Keymap, changed}, {keys::Keys, group}, {keys::KeymapID, inForce}})}));
  }

  void a_cycle_stays_in_a_keymap_that_is_cleared_or_pasted_over_and_that_is_told() {
    KeymapMenuFixture fixture;
    fixture.give(control(9), assignment(50, 255));
    fixture.choose(inForce, clearItem);
    const PropertyList group = factoryGroup(1).with(control(9).identifier, assignment(50, 255));
    COMPARE_CALLS(fixture.delegate.calls,
                  call({"updateButtonAssignmentWithSettings",
                        PropertyList::dictionary({{keys::Keys, group}, {keys::KeymapID, inForce}})}));
    const QString words = QStringLiteral("button 9 – it cycles the keymaps, which needs it in every one");
    QCOMPARE(fixture.told(), QStringLiteral("Left as it is: ") + words);
    fixture.choose(6, copyItem);
    fixture.choose(inForce, pasteItem);
    QCOMPARE(fixture.told(), QStringLiteral("Left out: ") + words);
    QCOMPARE(fixture.delegate.calls.at(1).at(1)[keys::Keys][control(9).identifier].description(),
             assignment(50, 255).description());
  }

  void a_keymap_is_cleared_in_one_request() {
    KeymapMenuFixture fixture;
    fixture.choose(inForce, clearItem);
    COMPARE_CALLS(fixture.delegate.calls,
                  call({"updateButtonAssignmentWithSettings",
                        PropertyList::dictionary({{keys::Keys, factoryGroup(1)}, {keys::KeymapID, inForce}})}));
    fixture.delegate.calls.clear();
    fixture.choose(6, clearItem);
    const PropertyList& before = fixture.current[keys::Keymap].at(6);
    COMPARE_CALLS(fixture.delegate.calls,
                  fixture.requestForKeymaps(fixture.current[keys::Keymap].replacing(
                      6, before.with(keys::Keys, before[keys::Keys].with("43", assignment(45, 43))))));
  }

  void what_is_clear_is_not_cleared_and_a_left_click_stays() {
    KeymapMenuFixture fixture;
    fixture.show(fixture.current.with(keys::Keys, factoryGroup(1).with("43", assignment(1))));
    QVERIFY(fixture.reasonAgainst(inForce, clearItem).contains(QStringLiteral("left click")));
    fixture.choose(inForce, clearItem);
    fixture.choose(6, copyItem);
    QVERIFY(fixture.reasonAgainst(inForce, pasteItem).startsWith(QStringLiteral("One of the controls 1 to 5 has")));
    fixture.choose(inForce, pasteItem);
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void a_keymap_that_the_profile_lacks_has_no_menu_entries() {
    KeymapMenuFixture fixture;
    fixture.show(fixture.current.without(keys::Keymap));
    for (const int item : {nameItem, copyItem, pasteItem, clearItem})
      QCOMPARE(fixture.reasonAgainst(6, item), QStringLiteral("This profile has no such keymap"));
    QCOMPARE(fixture.reasonAgainst(inForce, clearItem), QString());
  }

  void without_the_mouse_the_menu_is_off() {
    KeymapMenuFixture fixture;
    fixture.tab.enableControlsState(false);
    QVERIFY(!fixture.button().isEnabled());
    QCOMPARE(fixture.button().toolTip(), QStringLiteral("No mouse connected"));
    fixture.tab.enableControlsState(true);
    QVERIFY(fixture.button().isEnabled());
    QCOMPARE(fixture.button().toolTip(), QStringLiteral("More for this keymap"));
  }
};

SKARN_QTEST(MouseButtonControllerKeymapMenuTest)
#include "MouseButtonController_keymap_menu_test.moc"
