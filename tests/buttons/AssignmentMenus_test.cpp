// The menus of the 27 controls: items, submenus, names, what is hidden, and their use by keyboard.
#include <QSet>

#include "buttons/ButtonsFixture.h"
#include "platform/Images.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// A submenu's items as "tag title", a separator as "-".
QStringList itemsOf(const QMenu& menu) {
  QStringList items;
  for (const QAction* action : menu.actions()) {
    if (action->isSeparator()) {
      items << QStringLiteral("-");
    } else {
      items << QString::number(tagOf(*action)) + QLatin1Char(' ') + titleOf(*action);
    }
  }
  return items;
}

}  // namespace

class AssignmentMenusTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void every_item_calls_the_operation_of_its_control_data() { addControlRows(); }

  void every_item_calls_the_operation_of_its_control() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    const QString action = QLatin1String(control.actionName);
    QVERIFY(action.startsWith(QStringLiteral("selectButton")) && action.endsWith(QStringLiteral("Value")));
    QCOMPARE(fixture.popUp(control).numberOfItems(), control.directionPicture ? 9 : 8);
    for (int index = 0; index < fixture.popUp(control).numberOfItems(); ++index)
      QCOMPARE(fixture.popUp(control).itemAt(index)->objectName(), action);
    const QString stem = QLatin1String(control.submenuStem);
    const QString profileStem = QLatin1String(control.profileActionStem);
    const std::pair<AssignmentCategory, QString> submenus[] = {
        {AssignmentCategory::MouseButton, stem + QStringLiteral("MouseButtonMenuSelector")},
        {AssignmentCategory::Keymap, stem + QStringLiteral("KeymapMenuSelector")},
        {AssignmentCategory::Macro, stem + QStringLiteral("MacroMenuSelector")},
        {AssignmentCategory::Profile, profileStem + QStringLiteral("ProfileMenuSelector")}};
    for (const auto& [category, operation] : submenus) {
      const QMenu* submenu = fixture.openSubmenu(control, category);
      QVERIFY(submenu != nullptr);
      QVERIFY(submenu->actions().size() > 1);
      for (const QAction* item : submenu->actions()) {
        if (!item->isSeparator()) QCOMPARE(item->objectName(), tagOf(*item) == categoryTag ? action : operation);
      }
      // Screen readers hear whose menu it is.
      QVERIFY(submenu->accessibleName().startsWith(fixture.popUp(control).accessibleName()));
    }
    QVERIFY(!fixture.popUp(control).accessibleName().isEmpty());
    QVERIFY(fixture.delegate.calls.empty());
  }

  void every_operation_belongs_to_one_control() {
    QSet<QString> operations;
    for (const ControlDescriptor& control : controlTable) {
      operations << QLatin1String(control.actionName);
      for (const char* suffix : {"MouseButtonMenuSelector", "KeymapMenuSelector", "MacroMenuSelector"})
        operations << QLatin1String(control.submenuStem) + QLatin1String(suffix);
      operations << QLatin1String(control.profileActionStem) + QStringLiteral("ProfileMenuSelector");
    }
    QCOMPARE(operations.size(), 27 * 5);
    QVERIFY(operations.contains(QStringLiteral("buttonThirtenProfileMenuSelector")));
    QVERIFY(operations.contains(QStringLiteral("buttonThirteenMacroMenuSelector")));
    QVERIFY(operations.contains(QStringLiteral("buttonFourtenProfileMenuSelector")));
    QVERIFY(operations.contains(QStringLiteral("ThumbGridThirteenMouseButtonMenuSelector")));
  }

  void only_four_categories_have_a_submenu() {
    ButtonsFixture fixture;
    fixture.popUp(20).openMenu();
    QList<bool> haveSubmenu;
    for (int index = 0; index < 9; ++index) haveSubmenu << (fixture.popUp(20).itemAt(index)->menu() != nullptr);
    QCOMPARE(haveSubmenu, QList<bool>({false, false, false, true, true, true, true, false, false}));
  }

  void submenus_hold_their_items() {
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(18);
    const auto items = [&](AssignmentCategory category) { return itemsOf(*fixture.openSubmenu(control, category)); };
    QCOMPARE(items(AssignmentCategory::MouseButton),
             QStringList({"0 Left Click", "1 Right Click", "2 Button 3", "3 Button 4", "4 Button 5", "5 Double Click",
                          "6 Scroll Up", "7 Scroll Down"}));
    QCOMPARE(items(AssignmentCategory::Keymap),
             QStringList({"0 Cycle Keymaps", "1 Keymap 1", "2 Keymap 2", "3 Keymap 3", "4 Keymap 4", "5 Keymap 5",
                          "6 Keymap 6", "7 Keymap 7", "8 Keymap 8", "-", "-1 Switch Back When Let Go…"}));
    QCOMPARE(items(AssignmentCategory::Macro),
             QStringList({"0 Manage Macros…", "-", "1 Fireball", "2 Build order, first two minutes, second base",
                          "3 Greeting"}));
    QCOMPARE(items(AssignmentCategory::Profile),
             QStringList({"0 Manage Profiles…", "-", "1 Default", "2 Work",
                          "3 Raid: Molten Depths, healer set-up for the second boss", "4 Racing"}));
  }

  void the_submenu_of_a_macro_ends_with_its_repeat_modes_data() {
    QTest::addColumn<int>("ordinal");
    QTest::addColumn<int>("modes");
    QTest::newRow("a key") << 4 << 12;
    QTest::newRow("the wheel's button") << 17 << 12;
    QTest::newRow("a direction of the wheel") << 18 << 10;
  }
  void the_submenu_of_a_macro_ends_with_its_repeat_modes() {
    QFETCH(int, ordinal);
    QFETCH(int, modes);
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    fixture.give(control, assignment(10, 2, 5));
    const auto repeatMenu = [&] {
      const QMenu* submenu = fixture.openSubmenu(control, AssignmentCategory::Macro);
      QMenu* menu = submenu->actions().constLast()->menu();
      fixture.popUp(control).menu()->close();
      return menu;
    };
    QMenu* menu = repeatMenu();
    QVERIFY(menu != nullptr);
    QCOMPARE(menu->actions().size(), modes);
    QAction* longest = menu->actions().constLast();
    for (QAction* item : menu->actions()) {
      QCOMPARE(item->isChecked(), tagOf(*item) == 5);
      if (item->isChecked()) item->trigger();
    }
    QVERIFY(fixture.delegate.calls.empty());
    longest->trigger();
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(10, 2, 10)));
    // Opening it again makes it anew, once.
    repeatMenu();
    QCOMPARE(fixture.item(control, AssignmentCategory::Macro)->menu()->findChildren<QMenu*>().size(), 1);
  }

  void only_a_macro_has_repeat_modes() {
    ButtonsFixture fixture;
    const QMenu* submenu = fixture.openSubmenu(ButtonsFixture::control(4), AssignmentCategory::Macro);
    for (const QAction* item : submenu->actions()) QVERIFY(item->menu() == nullptr);
  }

  void a_mode_is_not_written_over_what_the_control_does_meanwhile() {
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(4);
    fixture.give(control, assignment(10, 2, 5));
    const QMenu* submenu = fixture.openSubmenu(control, AssignmentCategory::Macro);
    QAction* mode = submenu->actions().constLast()->menu()->actions().constFirst();
    fixture.show(fixture.current.with(keys::Keys, factoryGroup(1)));
    mode->trigger();
    QVERIFY(fixture.delegate.calls.empty());
  }

  void the_submenu_of_a_keymap_ends_with_its_switch_back() {
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(4);
    for (const bool isOn : {false, true}) {
      fixture.give(control, assignment(50, 3, isOn ? 1 : 0));
      fixture.delegate.calls.clear();
      QCOMPARE(itemsOf(*fixture.openSubmenu(control, AssignmentCategory::Keymap)).mid(9),
               QStringList({"-", "-2 Switch Back When Let Go", "-1 Keymap and Switch Back…"}));
      const QAction* item = fixture.item(control, AssignmentCategory::Keymap)->menu()->actions().at(10);
      QCOMPARE(item->isChecked(), isOn);
      fixture.popUp(control).menu()->close();
      fixture.chooseInSubmenu(control, AssignmentCategory::Keymap, switchBackTag);
      COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(50, 3, isOn ? 0 : 1)));
    }
  }

  void a_switch_back_that_cannot_be_says_why_data() {
    QTest::addColumn<int>("ordinal");
    QTest::addColumn<int>("keymap");
    QTest::addColumn<QString>("reason");
    QTest::newRow("cycle") << 4 << 255 << localized("lkeyNoSwitchBackCycle");
    QTest::newRow("wheel") << 18 << 3 << localized("lkeyNoSwitchBackWheel");
  }
  void a_switch_back_that_cannot_be_says_why() {
    QFETCH(int, ordinal);
    QFETCH(int, keymap);
    QFETCH(QString, reason);
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    fixture.give(control, assignment(50, keymap));
    const QMenu* submenu = fixture.openSubmenu(control, AssignmentCategory::Keymap);
    const QAction* item = submenu->actions().at(10);
    QVERIFY(submenu->toolTipsVisible());
    QVERIFY(!item->isEnabled() && !item->isChecked());
    QCOMPARE(item->toolTip(), reason);
  }

  void a_submenu_shows_the_lists_as_they_are_when_it_opens() {
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(1);
    fixture.tab.setMAllMacros(PropertyList::array());
    QCOMPARE(itemsOf(*fixture.openSubmenu(control, AssignmentCategory::Macro)), QStringList({"0 Manage Macros…", "-"}));
    fixture.popUp(control).menu()->close();
    fixture.tab.setMAllMacros(PropertyList::array({macro("New", {}), "no macro"}));
    QCOMPARE(itemsOf(*fixture.openSubmenu(control, AssignmentCategory::Macro)),
             QStringList({"0 Manage Macros…", "-", "1 New", "2 "}));
  }

  void a_direction_has_an_item_with_its_picture_and_the_default_item_data() { addControlRows(); }

  void a_direction_has_an_item_with_its_picture_and_the_default_item() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    const QAction* first = fixture.popUp(control).itemAt(0);
    QCOMPARE(!first->icon().isNull(), control.family == ControlFamily::DirectionPad);
    if (control.family != ControlFamily::DirectionPad) return;
    QCOMPARE(titleOf(*first), QStringLiteral("(Default)"));
    QCOMPARE(titleOf(*fixture.popUp(control).itemAt(1)), QStringLiteral("(Default)(Default)"));
    const QColor color = fixture.popUp(control).palette().color(QPalette::Active, QPalette::Text);
    QCOMPARE(first->icon().pixmap(16).toImage(),
             tintedIcon(QLatin1String(control.directionPicture), color).pixmap(16).toImage());
    // Its default is the picture's.
    QCOMPARE(fixture.popUp(control).indexOfSelectedItem(), 0);
  }

  void the_active_profile_is_in_no_submenu_data() { addControlRows(); }

  void the_active_profile_is_in_no_submenu() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    const QMenu* submenu = fixture.openSubmenu(control, AssignmentCategory::Profile);
    for (const QAction* item : submenu->actions()) {
      const bool isActive = !item->isSeparator() && titleOf(*item) == QStringLiteral("Work");
      QCOMPARE(item->isVisible(), !isActive);
      if (!item->isSeparator()) QCOMPARE(item->isEnabled(), !isActive);
    }
    QCOMPARE(fixture.find<QComboBox>("mProfileListPopUp")->itemText(1), QStringLiteral("Work"));
  }

  void any_item_called_like_the_active_profile_is_hidden() {
    ButtonsFixture fixture;
    fixture.tab.setMAllMacros(PropertyList::array({macro("Work", {}), macro("Play", {})}));
    const QMenu* submenu = fixture.openSubmenu(fixture.control(3), AssignmentCategory::Macro);
    QVERIFY(!submenu->actions().at(2)->isVisible());
    QVERIFY(!submenu->actions().at(2)->isEnabled());
    QVERIFY(submenu->actions().at(3)->isVisible());
    // Once another profile is active, it is there again.
    fixture.popUp(3).menu()->close();
    fixture.tab.setMDeviceSettingsDict(deviceSettings().with(keys::ActiveProfile, 0));
    submenu = fixture.openSubmenu(fixture.control(3), AssignmentCategory::Macro);
    QVERIFY(submenu->actions().at(2)->isVisible() && submenu->actions().at(2)->isEnabled());
  }

  void missing_profiles_are_taken_from_the_settings() {
    ButtonsFixture fixture;
    fixture.tab.setMAllProfiles(PropertyList::array());
    fixture.tab.setMDeviceSettingsDict(deviceSettings().with("AllProfiles", profiles()));
    QAction work(QStringLiteral("Work"), nullptr);
    QVERIFY(!fixture.tab.validateMenuItem(work));
    QCOMPARE(fixture.tab.mAllProfiles().size(), std::size_t(4));
  }

  void without_an_active_profile_nothing_is_hidden() {
    ButtonsFixture fixture;
    QAction nameless(QString(), nullptr);
    for (const int active : {-1, 4, 1000}) {
      fixture.tab.setMDeviceSettingsDict(deviceSettings().with(keys::ActiveProfile, active));
      QVERIFY(fixture.tab.validateMenuItem(nameless));
    }
  }

  void a_submenu_is_entered_and_an_entry_chosen_by_keyboard() {
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(4);
    fixture.give(control, assignment(20));
    PopUpButton& popUp = fixture.popUp(control);
    popUp.setFocus();
    QTest::keyClick(&popUp, Qt::Key_Space);
    QTRY_VERIFY(popUp.menu()->isVisible());
    // From "Disable", which is selected, up to the mouse buttons; Return goes into the submenu.
    for (int step = 0; step < 3; ++step) QTest::keyClick(popUp.menu(), Qt::Key_Up);
    QTest::keyClick(popUp.menu(), Qt::Key_Return);
    QMenu* submenu = fixture.item(control, AssignmentCategory::MouseButton)->menu();
    QTRY_VERIFY(submenu->isVisible());
    QVERIFY(fixture.delegate.calls.empty());
    QTest::keyClick(submenu, Qt::Key_Up);
    QTest::keyClick(submenu, Qt::Key_Return);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(19)));
  }

  void the_last_entry_of_the_keymaps_opens_their_sheet_data() { addControlRows(); }

  void the_last_entry_of_the_keymaps_opens_their_sheet() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    fixture.openKeymapSheet(control);
    QVERIFY(fixture.isOpen("mKeymapWindow"));
    QVERIFY(!fixture.popUp(control).menu()->isVisible());
    fixture.press("mKeymapCancel");
    QVERIFY(fixture.delegate.calls.empty());
    QVERIFY(fixture.popUp(control).indexOfSelectedItem() >= 0);
  }

  void an_item_whose_target_has_another_name_by_now_changes_nothing() {
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(7);
    fixture.give(control, assignment(10, 0, 1));
    fixture.tab.setMAllMacros(PropertyList::array({macro("Frost", {})}));
    fixture.perform(control, AssignmentCategory::Macro);
    QVERIFY(fixture.delegate.calls.empty());
    QCOMPARE(fixture.popUp(control).titleOfSelectedItem(), QStringLiteral("Macro : Frost"));
    // As it is shown now, it is chosen.
    fixture.perform(control, AssignmentCategory::Macro);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(10)));
  }

  void a_menu_that_is_closed_asks_for_nothing() {
    ButtonsFixture fixture;
    fixture.openSubmenu(fixture.control(5), AssignmentCategory::Macro);
    QTest::keyClick(fixture.item(fixture.control(5), AssignmentCategory::Macro)->menu(), Qt::Key_Escape);
    QTest::keyClick(fixture.popUp(5).menu(), Qt::Key_Escape);
    QTRY_VERIFY(!fixture.popUp(5).menu()->isVisible());
    QVERIFY(fixture.delegate.calls.empty());
    QCOMPARE(fixture.popUp(5).shownTitle(), QStringLiteral("R (Default)"));
  }
};

SKARN_QTEST(AssignmentMenusTest)
#include "AssignmentMenus_test.moc"
