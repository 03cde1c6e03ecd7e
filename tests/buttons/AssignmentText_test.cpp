// The words of assignments: labels, titles, and what a title stands for.
#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// What the 27 controls send by default, as their default item begins.
const QStringList defaultTexts = {"Tab ",
                                  "Q ",
                                  "W ",
                                  "E ",
                                  "R ",
                                  "Caps Lock ",
                                  "A ",
                                  "S ",
                                  "D ",
                                  "F ",
                                  "Left Shift ",
                                  "Z ",
                                  "X ",
                                  "C ",
                                  "Space ",
                                  "Left Alt ",
                                  "Mouse: Button 3 ",
                                  "Mouse: Scroll Up ",
                                  "Mouse: Scroll Down ",
                                  "(Default)",
                                  "(Default)",
                                  "(Default)",
                                  "(Default)",
                                  "(Default)",
                                  "(Default)",
                                  "(Default)",
                                  "(Default)"};

QString labelOf(ButtonsFixture& fixture, const ControlDescriptor& control, const PropertyList& record) {
  fixture.give(control, record);
  return fixture.tab.stringForButtonValue(record[keys::Command].toInt(), control.identifier, control.groupType());
}

}  // namespace

class AssignmentTextTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void a_key_with_modifiers_has_shorter_labels_data() {
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<QString>("chord");
    const auto row = [](const PropertyList& record, const char* chord) { QTest::newRow(chord) << record << chord; };
    row(assignment(16, 14, 3), "Ctrl+Shift+K");
    row(assignment(16, 14, 0x0f), "Ctrl+Shift+Alt+Cmd+K");
    row(assignment(16, 14, 0x10), "Right Ctrl+K");
    row(assignment(16, 40, 0xe2), "Shift+Right Shift+Right Alt+Right Cmd+Return");
    row(assignment(16, 0, 5), "Ctrl+Alt");
    // Only the low eight bits are modifiers.
    row(assignment(16, 4, 0x101), "Ctrl+A");
  }

  void a_key_with_modifiers_has_shorter_labels() {
    QFETCH(PropertyList, record);
    QFETCH(QString, chord);
    ButtonsFixture fixture;
    fixture.give(fixture.control(1), record);
    const QStringList labels = {QStringLiteral("Single Key : ") + chord, chord};
    QCOMPARE(fixture.tab.shorterLabels("43", 1), labels);
    // The title itself, which is compared, keeps its words.
    QVERIFY(fixture.popUp(1).shownTitle() != labels[0]);
    QCOMPARE(fixture.popUp(1).indexOfSelectedItem(), static_cast<int>(AssignmentCategory::SingleKey));
    QVERIFY(labels.contains(fixture.popUp(1).drawnText()));
  }

  void nothing_else_has_shorter_labels() {
    ButtonsFixture fixture;
    for (const PropertyList& record : {assignment(16, 4), assignment(16, 4, 0x100), assignment(10, 0, 1),
                                       assignment(45, 43), assignment(20), PropertyList::dictionary()}) {
      fixture.give(fixture.control(1), record);
      QCOMPARE(fixture.tab.shorterLabels("43", 1), QStringList());
    }
    QCOMPARE(fixture.tab.shorterLabels("43", 3), QStringList());
  }

  void what_a_control_does_out_of_the_box_is_its_default() {
    ButtonsFixture fixture;
    for (const ControlDescriptor& control : controlTable) {
      QVERIFY(fixture.tab.isDefaultAt(control.identifier, control.groupType()));
      fixture.give(control, assignment(20));
      QVERIFY(!fixture.tab.isDefaultAt(control.identifier, control.groupType()));
    }
    const auto isDefault = [&fixture](const PropertyList& record) { return fixture.tab.isDefault(record, "06", 2); };
    QVERIFY(isDefault(assignment(18)) && isDefault(assignment(18).with("note", "mine")) && isDefault(PropertyList()));
    QVERIFY(!isDefault(assignment(19)) && !isDefault(assignment(10, 0, 1)) && !isDefault(assignment(18, 1)));
  }

  void every_record_has_its_label_and_is_selected_by_it_data() {
    QTest::addColumn<PropertyList>("record");
    QTest::addColumn<QString>("label");
    const auto row = [](const char* name, const PropertyList& record, const char* label) {
      QTest::newRow(name) << record << QString::fromUtf8(label);
    };
    for (const int command : {0, 21, 30, 44, 47, 48, 51, 1000, -1})
      row(("unknown " + std::to_string(command)).c_str(), assignment(command), "");
    row("left click", assignment(1), "Mouse Button: Left Click");
    row("right click", assignment(2), "Mouse Button: Right Click");
    row("button 3", assignment(3), "Mouse Button: Button 3");
    row("button 4", assignment(4), "Mouse Button: Button 4");
    row("button 5", assignment(5), "Mouse Button: Double Click");
    row("button 6", assignment(6), "Mouse Button");
    row("button 7", assignment(7), "Mouse Button");
    row("button 8", assignment(8), "Mouse Button");
    row("double click", assignment(9), "Mouse Button: Double Click");
    row("macro", assignment(10, 0, 1), "Macro : Fireball");
    row("last macro", assignment(10, 2, 255), "Macro : Greeting");
    row("macro past the end", assignment(10, 3, 1), "Macro  ");
    row("macro before the start", assignment(10, -1, 1), "Macro  ");
    row("stage up", assignment(11), "Sensitivity Stage Up");
    row("stage down", assignment(12), "Sensitivity Stage Down");
    row("forward", assignment(13), "Forward");
    row("backward", assignment(14), "Backward");
    row("on the fly", assignment(15), "On-the-Fly Sensitivity");
    row("key", assignment(16, 4), "Single Key : A");
    row("key with modifiers", assignment(16, 4, 9), "Single Key : Left Control + Left Command + A");
    row("modifier alone", assignment(16, 0, 2), "Single Key : Left Shift");
    row("modifier and a key without a name", assignment(16, 50, 2), "Single Key : Left Shift + ");
    row("no key", assignment(16), "Single Key  ");
    row("key with modifier 256", assignment(16, 4, 256), "Single Key : A");
    row("profile", assignment(17, 3), "Profile : Racing");
    row("profile past the end", assignment(17, 4), "Profile  ");
    row("scroll up", assignment(18), "Mouse Button: Scroll Up");
    row("scroll down", assignment(19), "Mouse Button: Scroll Down");
    row("disable", assignment(20), "Disable");
    row("temporary switch", assignment(49), "Temporary DPI Switch");
    row("keymap 1", assignment(50, 0), "Keymap: Keymap 1");
    row("keymap 8", assignment(50, 7, 1), "Keymap: Keymap 8");
    row("keymap cycle", assignment(50, 255), "Keymap: Cycle Keymaps");
    row("keymap value 8", assignment(50, 8), "Keymap");
    row("keymap value 254", assignment(50, 254), "Keymap");
    const auto launch = [](const PropertyList& path) {
      return PropertyList::dictionary({{keys::Command, 46}, {keys::Param1, path}, {keys::Param2, ""}});
    };
    row("bundle", launch("/Applications/Note Pad.app"), "Launch Program: Note Pad");
    row("bundle with a slash", launch("/Applications/Note Pad.app/"), "Launch Program: Note Pad");
    row("desktop entry", launch("/usr/share/applications/org.example.Paint.desktop"),
        "Launch Program: org.example.Paint");
    row("program without extension", launch("/usr/bin/paint"), "Launch Program: paint");
    row("name that begins with a dot", launch("/opt/.hidden"), "Launch Program: .hidden");
    row("no path", launch(""), "Launch Program");
    row("path of another type", launch(7), "Launch Program");
  }

  void every_record_has_its_label_and_is_selected_by_it() {
    QFETCH(PropertyList, record);
    QFETCH(QString, label);
    ButtonsFixture fixture;
    // A key of the thumb grid, a button of the wheel, a direction.
    for (const int ordinal : {2, 17, 22}) {
      const ControlDescriptor& control = ButtonsFixture::control(ordinal);
      QCOMPARE(labelOf(fixture, control, record), label);
      QCOMPARE(fixture.popUp(control).shownTitle(), label);
      // Where an item has this title, it is the selected one.
      const int expected = static_cast<int>(fixture.titles(control).indexOf(label));
      QCOMPARE(fixture.popUp(control).indexOfSelectedItem(), expected);
      QCOMPARE(expected >= 0,
               !label.isEmpty() && !QStringList({"Sensitivity Stage Up", "Sensitivity Stage Down", "Forward",
                                                 "Backward", "On-the-Fly Sensitivity", "Temporary DPI Switch"})
                                        .contains(label));
    }
  }

  void every_control_names_its_default_data() { addControlRows(); }

  void every_control_names_its_default() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    const QString text = defaultTexts[ordinal - 1];
    ButtonsFixture fixture;
    QCOMPARE(fixture.tab.getDefaultKeyForButton(control.identifier, control.groupType()), text);
    const bool isDirection = control.family == ControlFamily::DirectionPad;
    const QString label = fixture.tab.stringForButtonValue(45, control.identifier, control.groupType());
    QCOMPARE(label, isDirection ? QStringLiteral("(Default)") : text + QStringLiteral("(Default)"));
    if (!isDirection) QCOMPARE(fixture.tab.mDefaultName(), text.chopped(1));
  }

  void every_control_has_the_titles_of_its_record_data() { addControlRows(); }

  void every_control_has_the_titles_of_its_record() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    const QStringList direction = control.directionPicture ? QStringList{"(Default)"} : QStringList{};
    const QString defaultTitle = defaultTexts[ordinal - 1] + QStringLiteral("(Default)");
    fixture.give(control, assignment(20));
    QCOMPARE(fixture.titles(control),
             direction + QStringList({defaultTitle, "Single Key  ", "Macro  ", "Keymap", "Mouse Button", "Profile  ",
                                      "Launch Program", "Disable"}));
    fixture.give(control, assignment(10, 1, 2));
    QCOMPARE(
        fixture.titles(control),
        direction + QStringList({defaultTitle, "Single Key  ", "Macro : Build order, first two minutes, second base",
                                 "Keymap", "Mouse Button", "Profile  ", "Launch Program", "Disable"}));
  }

  void a_default_record_with_another_command_has_no_text() {
    ButtonsFixture fixture;
    PropertyList factory = profile("Default");
    factory = factory.with(keys::Keys, factory[keys::Keys].with("43", assignment(16, 43)).without("20"));
    fixture.tab.setMDefaultDict(PropertyList::dictionary({{keys::Profiles, PropertyList::array({factory})}}));
    QCOMPARE(fixture.tab.getDefaultKeyForButton("43", 1), QStringLiteral("(Default)"));
    QCOMPARE(fixture.tab.getDefaultKeyForButton("20", 1), QStringLiteral("(Default)"));
    QCOMPARE(fixture.tab.stringForButtonValue(45, "43", 1), QStringLiteral("(Default)(Default)"));
    QCOMPARE(fixture.tab.getDefaultKeyForButton("43", 3), QStringLiteral("(Default)"));
    // The label of a missing mouse-button text still begins like one.
    QCOMPARE(fixture.tab.getDefaultKeyForButton("99", 2), QStringLiteral("Mouse:  "));
  }

  void button_five_and_the_double_click_have_one_label_but_two_items() {
    ButtonsFixture fixture;
    QCOMPARE(fixture.tab.stringForMouseButtonValue(5), fixture.tab.stringForMouseButtonValue(9));
    QMenu* submenu = fixture.openSubmenu(fixture.control(1), AssignmentCategory::MouseButton);
    QCOMPARE(titleOf(*submenu->actions().at(4)), QStringLiteral("Button 5"));
    QCOMPARE(titleOf(*submenu->actions().at(5)), QStringLiteral("Double Click"));
  }

  void only_functions_of_mouse_buttons_have_their_text() {
    ButtonsFixture fixture;
    QStringList texts;
    for (int command = -1; command <= 60; ++command) {
      const QString text = fixture.tab.stringForMouseButtonValue(command);
      if (!text.isEmpty()) texts << QString::number(command) + QLatin1Char(' ') + text;
    }
    QCOMPARE(texts, QStringList({"1 Left Click", "2 Right Click", "3 Button 3", "4 Button 4", "5 Double Click",
                                 "9 Double Click", "18 Scroll Up", "19 Scroll Down"}));
  }

  void only_keymaps_and_the_cycle_have_a_keymap_text() {
    ButtonsFixture fixture;
    for (int keymap = -1; keymap <= 256; ++keymap) {
      const QString text = fixture.tab.keymapStringValueForMapValue(keymap);
      if (keymap >= 0 && keymap <= 7) {
        QCOMPARE(text, QStringLiteral("Keymap %1").arg(keymap + 1));
      } else if (keymap == 255) {
        QCOMPARE(text, QStringLiteral("Cycle Keymaps"));
      } else {
        QVERIFY(text.isNull());
      }
    }
  }

  void every_repeat_mode_has_its_text() {
    for (int mode = -1; mode <= 256; ++mode) {
      QString expected = QStringLiteral("Play Macro Once");
      if (mode >= 2 && mode <= 10) expected = QStringLiteral("Repeat %1 Times").arg(mode);
      if (mode == 254) expected = QStringLiteral("Repeat Until Pressed Again");
      if (mode == 255) expected = QStringLiteral("Repeat Until Released");
      QCOMPARE(AssignmentText::getMacroRepeatOptionUsingValue(mode), expected);
    }
  }

  void getters_set_the_separators_of_the_labels() {
    ButtonsFixture fixture;
    MouseButtonController& tab = fixture.tab;
    PropertyList active = fixture.current;
    active = active.with(keys::Keys, active[keys::Keys]
                                         .with("43", assignment(16, 4))
                                         .with("20", assignment(10, 0, 1))
                                         .with("26", assignment(17, 0))
                                         .with("8", assignment(50, 2)));
    fixture.show(active);
    const QString colon = QStringLiteral(":");
    QCOMPARE(tab.getHIDCodeAtButton("43", 1), QStringLiteral("A"));
    QCOMPARE(tab.mSingleKeyNameColon(), colon);
    QCOMPARE(tab.getHIDCodeAtButton("20", 1), QString());
    QCOMPARE(tab.mSingleKeyNameColon(), QString());
    QCOMPARE(tab.getMacroAssignedAtButton("20", 1), QStringLiteral("Fireball"));
    QCOMPARE(tab.mMacroNameColon(), colon);
    QCOMPARE(tab.getMacroAssignedAtButton("43", 1), QString());
    QCOMPARE(tab.mMacroNameColon(), QString());
    QCOMPARE(tab.getProfileAssignedAtButton("26", 1), QStringLiteral("Default"));
    QCOMPARE(tab.mProfileNameColon(), colon);
    QCOMPARE(tab.getProfileAssignedAtButton("43", 1), QString());
    QCOMPARE(tab.mProfileNameColon(), QString());
    // The keymap getter leaves its whole result there.
    QCOMPARE(tab.getKeyMapAssignedAtButton("8", 1), QStringLiteral(": Keymap 3"));
    QCOMPARE(tab.mProfileNameColon(), QStringLiteral(": Keymap 3"));
    QCOMPARE(tab.getKeyMapAssignedAtButton("43", 1), QString());
    QCOMPARE(tab.mProfileNameColon(), QString());
  }

  void readers_read_the_group_of_their_type_only() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(17), assignment(16, 4));
    QCOMPARE(fixture.tab.getHIDCodeAtButton("03", 2), QStringLiteral("A"));
    for (const int groupType : {-1, 0, 1, 3}) QCOMPARE(fixture.tab.getHIDCodeAtButton("03", groupType), QString());
  }

  void without_macros_and_profiles_nothing_is_found() {
    ButtonsFixture fixture;
    PropertyList active = fixture.current;
    active = active.with(keys::Keys, active[keys::Keys]
                                         .with("43", assignment(10, 0, 1))
                                         .with("20", assignment(17, 0))
                                         .with("26", assignment(50, 2))
                                         .with("8", assignment(1)));
    fixture.tab.setMButtonsSettingsDict(active);
    fixture.tab.setMAllMacros(PropertyList::array());
    fixture.tab.setMAllProfiles(PropertyList::array());
    fixture.tab.updateUISettings();
    QCOMPARE(fixture.popUp(1).shownTitle(), QStringLiteral("Macro  "));
    QVERIFY(!fixture.row(fixture.control(1)).repeatButton()->isVisible());
    QCOMPARE(fixture.popUp(2).shownTitle(), QStringLiteral("Profile  "));
    QCOMPARE(fixture.popUp(3).shownTitle(), QStringLiteral("Keymap"));
    QCOMPARE(fixture.popUp(4).shownTitle(), QStringLiteral("Mouse Button"));
  }

  void titles_stand_for_commands_data() {
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("command");
    const auto row = [](const char* title, int command) { QTest::newRow(title) << QString(title) << command; };
    row("Mouse Button", 1);
    row("Button 6", 6);
    row("Button 7", 7);
    row("Button 8", 8);
    row("Macro  ", 10);
    row("Sensitivity Stage Up", 11);
    row("Sensitivity Stage Down", 12);
    row("Forward", 13);
    row("Backward", 14);
    row("On-the-Fly Sensitivity", 15);
    row("Single Key  ", 16);
    row("Profile  ", 17);
    row("Disable", 20);
    row("Q (Default)", 45);
    row("(Default)", 45);
    row("Launch Program", 46);
    row("Keymap", 50);
    row("Macro", 0);
    row("Single Key", 0);
    row("Left Click", 0);
    row("", 0);
  }

  void titles_stand_for_commands() {
    QFETCH(QString, title);
    QFETCH(int, command);
    ButtonsFixture fixture;
    fixture.give(fixture.control(2), assignment(20));
    QCOMPARE(fixture.tab.intValueOfSelectedString(title, "20", 1), command);
  }

  void a_mouse_button_label_always_means_the_left_click() {
    ButtonsFixture fixture;
    for (const int command : {1, 2, 3, 4, 5, 9, 18, 19}) {
      fixture.give(fixture.control(2), assignment(command));
      QCOMPARE(fixture.tab.intValueOfSelectedString(fixture.popUp(2).titleOfSelectedItem(), "20", 1), 1);
    }
  }

  void mouse_button_items_map_to_commands() {
    QList<int> commands;
    for (int tag = -1; tag <= 8; ++tag) commands << AssignmentText::mouseButtonMappingValueForTagValue(tag);
    QCOMPARE(commands, QList<int>({0, 1, 2, 3, 4, 5, 9, 18, 19, 0}));
  }

  void eight_identifiers_are_directions() {
    QStringList directions;
    for (int number = 0; number < 300; ++number) {
      if (AssignmentText::checkForDiagonals(std::to_string(number))) directions << QString::number(number);
    }
    QCOMPARE(directions, QStringList({"79", "80", "81", "82", "232", "233", "234", "235"}));
    for (const char* junk : {"", "x", "-79", "99999999999999999999"}) QVERIFY(!AssignmentText::checkForDiagonals(junk));
  }

  void ampersands_in_names_are_shown() {
    ButtonsFixture fixture;
    fixture.tab.setMAllMacros(PropertyList::array({macro("Salt && Pepper & Co", {})}));
    PropertyList active = fixture.current;
    fixture.tab.setMButtonsSettingsDict(active.with(keys::Keys, active[keys::Keys].with("43", assignment(10, 0, 1))));
    fixture.tab.updateUISettings();
    QCOMPARE(fixture.popUp(1).titleOfSelectedItem(), QStringLiteral("Macro : Salt && Pepper & Co"));
    QMenu* submenu = fixture.openSubmenu(fixture.control(1), AssignmentCategory::Macro);
    QCOMPARE(titleOf(*submenu->actions().at(2)), QStringLiteral("Salt && Pepper & Co"));
  }
};

SKARN_QTEST(AssignmentTextTest)
#include "AssignmentText_test.moc"
