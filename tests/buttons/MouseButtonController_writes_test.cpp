// What choosing an item of a menu asks for: exactly one request, and no other.
#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

Q_DECLARE_METATYPE(skarn::AssignmentCategory)

class MouseButtonControllerWritesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void every_item_that_writes_at_once_sends_its_request_data() { addControlRows(); }

  void every_item_that_writes_at_once_sends_its_request() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    fixture.give(control, assignment(16, 4));
    const int number = PropertyList(control.identifier).toInt();
    const bool isDirection = control.family == ControlFamily::DirectionPad;
    const int factoryCommand = ordinal == 17 ? 3 : ordinal;  // the wheel's directions are 18 and 19
    const std::pair<AssignmentCategory, PropertyList> expected[] = {
        {AssignmentCategory::DefaultKey,
         control.groupType() == 1 ? assignment(45, number) : assignment(factoryCommand)},
        {AssignmentCategory::Macro, assignment(10)},
        {AssignmentCategory::MouseButton, assignment(1)},
        {AssignmentCategory::Profile, assignment(17)},
        {AssignmentCategory::Disable, assignment(20, isDirection ? number : 0)}};
    for (const auto& [category, record] : expected) {
      fixture.delegate.calls.clear();
      if (category == AssignmentCategory::DefaultKey || category == AssignmentCategory::Disable) {
        fixture.choose(control, category);
      } else {
        fixture.perform(control, category);
      }
      COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, record));
      // Nothing came back: the control still shows what is stored.
      QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Single Key : A"));
    }
    if (!isDirection) return;
    fixture.delegate.calls.clear();
    fixture.click(control, fixture.popUp(control).itemAt(0));
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(45, number)));
  }

  void every_mouse_button_item_sends_its_request_data() { addControlRows(); }

  void every_mouse_button_item_sends_its_request() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    fixture.give(control, assignment(16, 4));
    const int commands[] = {1, 2, 3, 4, 5, 9, 18, 19};
    for (int tag = 0; tag < 8; ++tag) {
      fixture.delegate.calls.clear();
      fixture.chooseInSubmenu(control, AssignmentCategory::MouseButton, tag);
      COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(commands[tag])));
    }
  }

  void every_keymap_item_sends_its_request_data() { addControlRows(); }

  void every_keymap_item_sends_its_request() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    for (int tag = 0; tag <= 8; ++tag) {
      fixture.delegate.calls.clear();
      fixture.chooseInSubmenu(control, AssignmentCategory::Keymap, tag);
      COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(50, tag == 0 ? 255 : tag - 1)));
      QVERIFY(!fixture.isOpen("mKeymapWindow"));
    }
  }

  void every_macro_and_profile_item_sends_its_request_data() { addControlRows(); }

  void every_macro_and_profile_item_sends_its_request() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    for (const int tag : {1, 2, 3}) {
      fixture.delegate.calls.clear();
      fixture.chooseInSubmenu(control, AssignmentCategory::Macro, tag);
      COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(10, tag - 1, 1)));
    }
    // The second profile is the active one.
    for (const int tag : {1, 3, 4}) {
      fixture.delegate.calls.clear();
      fixture.chooseInSubmenu(control, AssignmentCategory::Profile, tag);
      COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(17, tag - 1)));
    }
    fixture.delegate.calls.clear();
    fixture.chooseInSubmenu(control, AssignmentCategory::Macro, 0);
    fixture.chooseInSubmenu(control, AssignmentCategory::Profile, 0);
    COMPARE_CALLS(fixture.delegate.calls, call({"selectTabAtIndex", 2}), call({"selectTabAtIndex", 1}));
  }

  void the_ticked_entry_changes_nothing_data() {
    QTest::addColumn<AssignmentCategory>("category");
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<int>("tag");
    QTest::newRow("default") << AssignmentCategory::DefaultKey << assignment(45, 20) << categoryTag;
    QTest::newRow("disable") << AssignmentCategory::Disable << assignment(20) << categoryTag;
    const int commands[] = {1, 2, 3, 4, 5, 9, 18, 19};
    for (int tag = 0; tag < 8; ++tag)
      QTest::addRow("mouse button %d", tag) << AssignmentCategory::MouseButton << assignment(commands[tag]) << tag;
    QTest::newRow("cycle") << AssignmentCategory::Keymap << assignment(50, 255) << 0;
    for (int tag = 1; tag <= 8; ++tag)
      QTest::addRow("keymap %d", tag) << AssignmentCategory::Keymap << assignment(50, tag - 1, 1) << tag;
    QTest::newRow("macro") << AssignmentCategory::Macro << assignment(10, 1, 254) << 2;
    QTest::newRow("profile") << AssignmentCategory::Profile << assignment(17, 2) << 3;
  }

  void the_ticked_entry_changes_nothing() {
    QFETCH(AssignmentCategory, category);
    QFETCH(PropertyList, record);
    QFETCH(int, tag);
    ButtonsFixture fixture;
    // Two left clicks: neither is locked.
    fixture.give(fixture.control(1), assignment(1));
    const ControlDescriptor& control = ButtonsFixture::control(2);
    fixture.give(control, record);
    const QString shown = fixture.popUp(control).shownTitle();
    if (tag == categoryTag) {
      fixture.choose(control, category);
    } else {
      const QMenu* submenu = fixture.openSubmenu(control, category);
      QStringList ticked;
      for (const QAction* item : submenu->actions()) {
        // The switch-back is an option of the target and has a tick of its own.
        if (item->isChecked() && tagOf(*item) != switchBackTag) ticked << QString::number(tagOf(*item));
      }
      QCOMPARE(ticked, QStringList{QString::number(tag)});
      fixture.popUp(control).menu()->close();
      fixture.chooseInSubmenu(control, category, tag);
    }
    QVERIFY(fixture.delegate.calls.empty());
    QVERIFY(!fixture.popUp(control).menu()->isVisible());
    QCOMPARE(fixture.popUp(control).shownTitle(), shown);
    QVERIFY(fixture.popUp(control).indexOfSelectedItem() >= 0);
  }

  void looking_into_a_menu_changes_nothing_data() { addControlRows(); }

  void looking_into_a_menu_changes_nothing() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    const QString shown = fixture.popUp(control).shownTitle();
    for (const auto category : {AssignmentCategory::Macro, AssignmentCategory::Keymap, AssignmentCategory::MouseButton,
                                AssignmentCategory::Profile}) {
      // A click on each category, Return on it, and Escape out of it.
      fixture.choose(control, category);
      QTRY_VERIFY(fixture.item(control, category)->menu()->isVisible());
      fixture.popUp(control).menu()->close();
      fixture.popUp(control).openMenu();
      fixture.popUp(control).menu()->setActiveAction(fixture.item(control, category));
      QTest::keyClick(fixture.popUp(control).menu(), Qt::Key_Return);
      QMenu* submenu = fixture.item(control, category)->menu();
      QTRY_VERIFY(submenu->isVisible());
      QTest::keyClick(submenu, Qt::Key_Escape);
      QTest::keyClick(fixture.popUp(control).menu(), Qt::Key_Escape);
      QVERIFY(!fixture.popUp(control).menu()->isVisible());
      QCOMPARE(fixture.popUp(control).shownTitle(), shown);
    }
    QVERIFY(fixture.delegate.calls.empty());
    QVERIFY(!fixture.isOpen("mKeymapWindow"));
  }

  void further_keys_of_a_record_and_of_its_group_stay_data() { addControlRows(); }

  void further_keys_of_a_record_and_of_its_group_stay() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    fixture.show(fixture.current.with(groupKey(control), fixture.current[groupKey(control)].with("note", "mine")));
    fixture.give(control, assignment(16, 4).with("color", PropertyList::array({1, 2})));
    fixture.chooseInSubmenu(control, AssignmentCategory::MouseButton, 1);
    COMPARE_CALLS(fixture.delegate.calls,
                  fixture.request(control, assignment(2).with("color", PropertyList::array({1, 2}))));
  }

  void a_chosen_item_may_rebuild_the_menu_it_belongs_to_data() { addControlRows(); }

  void a_chosen_item_may_rebuild_the_menu_it_belongs_to() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    // As the owner does with the engine's answer.
    fixture.delegate.onUpdate = [&fixture](const PropertyList& settings) {
      fixture.show(fixture.current.merging(settings));
    };
    fixture.choose(control, AssignmentCategory::Disable);
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Disable"));
    fixture.chooseInSubmenu(control, AssignmentCategory::Macro, 3);
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Macro : Greeting"));
    QVERIFY(fixture.row(control).repeatButton()->isVisible());
    fixture.chooseInSubmenu(control, AssignmentCategory::Keymap, 2);
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Keymap: Keymap 2"));
    QVERIFY(!fixture.row(control).repeatButton()->isVisible());
    fixture.perform(control, AssignmentCategory::MouseButton);
    // The last left click among the first five cannot be given away again.
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Mouse Button: Left Click"));
    QCOMPARE(fixture.popUp(control).isEnabled(), ordinal > 5);
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(4));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(fixture.popUp(control).numberOfItems(), control.directionPicture ? 9 : 8);
  }

  void news_of_something_else_leave_an_open_menu_open() {
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(6);
    QMenu* submenu = fixture.openSubmenu(control, AssignmentCategory::Macro);
    QTRY_VERIFY(submenu->isVisible());
    fixture.show(fixture.current.with(keys::DPIX, 1200));
    fixture.deleteReplaced();
    QVERIFY(submenu->isVisible() && fixture.popUp(control).menu()->isVisible());
    QTest::keyClick(submenu, Qt::Key_Down);
    QTest::keyClick(submenu, Qt::Key_Return);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(10, 0, 1)));
  }

  void news_of_what_a_menu_offers_close_it_data() {
    QTest::addColumn<QString>("changed");
    for (const char* changed : {"profile", "keymap", "profiles", "macros", "assignment"})
      QTest::newRow(changed) << QString::fromLatin1(changed);
  }

  void news_of_what_a_menu_offers_close_it() {
    QFETCH(QString, changed);
    ButtonsFixture fixture;
    const ControlDescriptor& control = ButtonsFixture::control(6);
    fixture.openSubmenu(control, AssignmentCategory::Macro);
    if (changed == QStringLiteral("profile"))
      fixture.tab.setMDeviceSettingsDict(deviceSettings().with(keys::ActiveProfile, 0));
    if (changed == QStringLiteral("keymap"))
      fixture.tab.setMButtonsSettingsDict(fixture.current.with(keys::KeymapID, 3));
    if (changed == QStringLiteral("profiles"))
      fixture.tab.setMAllProfiles(fixture.tab.mAllProfiles().replacing(3, profile("Rallye")));
    if (changed == QStringLiteral("macros")) fixture.tab.setMAllMacros(PropertyList::array({macro("New", {})}));
    if (changed == QStringLiteral("assignment")) {
      fixture.tab.setMButtonsSettingsDict(
          fixture.current.with(keys::Keys, fixture.current[keys::Keys].with(control.identifier, assignment(2))));
    }
    fixture.tab.updateUISettings();
    fixture.deleteReplaced();
    QVERIFY(!fixture.popUp(control).menu()->isVisible());
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QVERIFY(fixture.delegate.calls.empty());
  }

  void both_writers_send_the_documented_keys() {
    ButtonsFixture fixture;
    const PropertyList keysGroup = fixture.current[keys::Keys];
    const PropertyList buttonsGroup = fixture.current[keys::Buttons];
    fixture.tab.changeButton("43", 16, 5, 2, 2);
    fixture.tab.changeButton("03", 16, 5, 2, 1);
    // Any group identifier but 1 means the keys.
    fixture.tab.changeButton("43", 16, 5, 2, 7);
    fixture.tab.changeButton("06", 18, 0, 0, 1, 3, factoryGroup(2));
    fixture.tab.changeButton("30", 16, 30, 0, 2, 0, PropertyList::dictionary());
    const PropertyList key =
        PropertyList::dictionary({{"Keys", keysGroup.with("43", assignment(16, 5, 2))}, {"KeymapID", 2}});
    COMPARE_CALLS(
        fixture.delegate.calls, call({"updateButtonAssignmentWithSettings", key}),
        call({"updateButtonAssignmentWithSettings",
              PropertyList::dictionary({{"Buttons", buttonsGroup.with("03", assignment(16, 5, 2))}, {"KeymapID", 2}})}),
        call({"updateButtonAssignmentWithSettings", key}),
        call({"updateButtonAssignmentWithSettings",
              PropertyList::dictionary({{"Buttons", factoryGroup(2).with("06", assignment(18))}}), 3}),
        call({"updateButtonAssignmentWithSettings",
              PropertyList::dictionary({{"Keys", PropertyList::dictionary({{"30", assignment(16, 30)}})}}), 0}));
  }

  void writing_changes_nothing_by_itself() {
    ButtonsFixture fixture;
    fixture.tab.changeButton("43", 20, 0, 0, 2);
    fixture.tab.changeButton("20", 20, 0, 0, 2);
    // The second request does not hold the first one's change.
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(fixture.control(1), assignment(20)),
                  fixture.request(fixture.control(2), assignment(20)));
  }

  void the_default_of_an_unknown_group_is_not_written() {
    ButtonsFixture fixture;
    fixture.tab.checkSelectedValue(45, "43", 3);
    fixture.tab.checkSelectedValue(45, "43", 0);
    QVERIFY(fixture.delegate.calls.empty());
  }

  void disabling_a_direction_in_the_buttons_group_takes_that_group_s_default() {
    ButtonsFixture fixture;
    PropertyList factory = profile("Default");
    factory = factory.with(keys::Buttons, factory[keys::Buttons].with("82", assignment(45, 11)));
    fixture.tab.setMDefaultDict(PropertyList::dictionary({{keys::Profiles, PropertyList::array({factory})}}));
    fixture.tab.checkSelectedValue(20, "82", 1);
    fixture.tab.checkSelectedValue(20, "82", 2);
    COMPARE_CALLS(
        fixture.delegate.calls,
        call({"updateButtonAssignmentWithSettings",
              PropertyList::dictionary(
                  {{"Buttons", fixture.current[keys::Buttons].with("82", assignment(20, 11))}, {"KeymapID", 2}})}),
        fixture.request(fixture.control(20), assignment(20, 82)));
  }

  void any_other_command_is_written_as_it_is() {
    ButtonsFixture fixture;
    for (const int command : {2, 6, 11, 15, 49}) {
      fixture.delegate.calls.clear();
      fixture.tab.checkSelectedValue(command, "43", 2);
      COMPARE_CALLS(fixture.delegate.calls, fixture.request(fixture.control(1), assignment(command)));
    }
  }
};

SKARN_QTEST(MouseButtonControllerWritesTest)
#include "MouseButtonController_writes_test.moc"
