// Settings of a wrong shape: the tab shows what can be read, writes nothing strange, and survives.
#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// Values that a file or the bus could hold in place of any other.
const std::vector<std::pair<const char*, PropertyList>>& oddValues() {
  static const std::vector<std::pair<const char*, PropertyList>> values = {
      {"none", PropertyList()},
      {"text", PropertyList("text")},
      {"empty text", PropertyList("")},
      {"number", PropertyList(7)},
      {"below zero", PropertyList(-1)},
      {"largest", PropertyList(std::uint64_t{0xFFFFFFFFFFFFFFFF})},
      {"least", PropertyList(std::int64_t{-0x7FFFFFFFFFFFFFFF - 1})},
      {"real", PropertyList(1e300)},
      {"boolean", PropertyList(true)},
      {"array", PropertyList::array({1, "two", PropertyList::dictionary()})},
      {"dictionary", PropertyList::dictionary({{"command", "x"}, {"43", 3}, {"ProfileName", 5}})}};
  return values;
}

// Every request has the documented shape.
void verifyShape(const PropertyList& sent) {
  const std::string_view operation = sent.at(0).string();
  const PropertyList& argument = sent.at(1);
  if (operation == "updateButtonAssignmentWithSettings") {
    QVERIFY(argument.isDictionary());
    QVERIFY(argument[keys::KeymapID].isNumber());
    for (const auto group : {keys::Keys, keys::Buttons}) {
      if (argument.contains(group)) QVERIFY(argument[group].isDictionary());
    }
    if (argument.contains(keys::Keymap)) QVERIFY(argument[keys::Keymap].isArray());
  } else if (operation == "updateProfileKeyInDictionaryWithDictionary") {
    QVERIFY(argument.isArray());
  } else if (operation == "switchProfileWithID" || operation == "selectTabAtIndex") {
    QVERIFY(argument.isNumber());
  } else {
    QCOMPARE(sent.size(), std::size_t{1});
  }
}

// Proper settings are shown as by a tab that has seen nothing else, and a choice sends its request.
void verifyProperSettingsWork(ButtonsFixture& fixture) {
  const auto shown = [](ButtonsFixture& tab) {
    QStringList titles{tab.find<QComboBox>("mProfileListPopUp")->currentText()};
    for (const ControlDescriptor& control : controlTable) {
      titles << tab.popUp(control).shownTitle() << tab.titles(control);
      if (tab.row(control).repeatButton()->isVisible()) titles << QStringLiteral("repeat");
    }
    return titles;
  };
  static const QStringList expected = [&shown] {
    ButtonsFixture fresh;
    return shown(fresh);
  }();
  fixture.show(ButtonsFixture::sample());
  QCOMPARE(shown(fixture), expected);
  const ControlDescriptor& control = ButtonsFixture::control(2);
  fixture.delegate.calls.clear();
  fixture.tab.checkSelectedValue(20, control.identifier, control.groupIdentifier());
  COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, assignment(20)));
}

// Whatever a person can do without knowing what the settings hold, and what must be true after it.
void useEverything(ButtonsFixture& fixture) {
  for (const int ordinal : {1, 18}) {
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    for (const AssignmentCategory category : assignmentCategories) {
      const QString title = titleOf(*fixture.item(control, category));
      const int command = fixture.tab.intValueOfSelectedString(title, control.identifier, control.groupType());
      if (command != 46) fixture.tab.checkSelectedValue(command, control.identifier, control.groupIdentifier());
    }
    fixture.tab.clickSingleKeyOK();
    fixture.tab.clickKeymapOK();
    fixture.tab.clickMacroRepeatButton(control);
    fixture.tab.clickMacroPlayback();
    fixture.tab.clickMacroRepeatOK();
    fixture.openSubmenu(control, AssignmentCategory::Macro);
    fixture.openSubmenu(control, AssignmentCategory::Profile);
    fixture.popUp(control).menu()->close();
    fixture.tab.changeKeymapsKeymapCycleMappingForButton(control.identifier, control.groupIdentifier());
  }
  for (int segment = 0; segment < 8; ++segment) fixture.tab.selectKeymapSegment(segment);
  for (int index = 0; index < 5; ++index) fixture.tab.selectProfile(index);
  fixture.tab.removeButtonMacroAssignment(0);
  fixture.tab.removeButtonProfileAssignment(0);
  fixture.tab.removeMacroProfileMappings(0, 10);
  fixture.tab.removeMacroProfileMappings(0, 17);
  ButtonsFixture::deleteReplaced();
  for (const char* sheet : {"mSingleKey", "mKeymapWindow", "mMacroRepeatWindow"}) QVERIFY(!fixture.isOpen(sheet));
  for (const PropertyList& sent : fixture.delegate.calls) verifyShape(sent);
}

}  // namespace

class MouseButtonControllerHostileTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void settings_of_another_type_show_nothing_data() {
    QTest::addColumn<PropertyList>("settings");
    for (const auto& [name, value] : oddValues()) QTest::newRow(name) << value;
    QTest::newRow("wrong members") << PropertyList::dictionary(
        {{keys::ProfileName, 5}, {keys::Keys, "x"}, {keys::Buttons, 1}, {keys::KeymapID, 9}, {keys::Keymap, 3}});
    QTest::newRow("wrong records") << PropertyList::dictionary(
        {{keys::KeymapID, "1"}, {keys::Keys, PropertyList::dictionary({{"43", 45}, {"20", PropertyList::array()}})}});
  }

  void settings_of_another_type_show_nothing() {
    QFETCH(PropertyList, settings);
    ButtonsFixture fixture;
    fixture.tab.setMButtonsSettingsDict(settings);
    fixture.tab.updateUISettings();
    for (const ControlDescriptor& control : controlTable) {
      QCOMPARE(fixture.popUp(control).shownTitle(), QString());
      QCOMPARE(fixture.popUp(control).indexOfSelectedItem(), -1);
      QVERIFY(!fixture.row(control).repeatButton()->isVisible());
    }
    QCOMPARE(fixture.find<SegmentedControl>("mKeymapSegment")->selectedSegment(), -1);
    QVERIFY(fixture.delegate.calls.empty());
    useEverything(fixture);
    verifyProperSettingsWork(fixture);
  }

  void every_slice_may_have_another_type_data() {
    QTest::addColumn<PropertyList>("value");
    for (const auto& [name, value] : oddValues()) QTest::newRow(name) << value;
  }

  void every_slice_may_have_another_type() {
    QFETCH(PropertyList, value);
    ButtonsFixture fixture;
    const auto redraw = [&fixture] {
      fixture.tab.populateUISettings();
      fixture.tab.updateUISettings();
      useEverything(fixture);
    };
    fixture.tab.setMAllMacros(value);
    redraw();
    fixture.tab.setMAllProfiles(value);
    redraw();
    fixture.tab.setMDeviceSettingsDict(value);
    redraw();
    fixture.tab.setMDefaultDict(value);
    redraw();
    fixture.tab.setMDefaultDict(PropertyList::dictionary({{keys::Profiles, PropertyList::array({value})}}));
    redraw();
    fixture.tab.setMDeviceSettingsDict(
        PropertyList::dictionary({{keys::ActiveProfile, value}, {"AllProfiles", value}}));
    redraw();
    verifyProperSettingsWork(fixture);
  }

  void elements_of_the_lists_may_have_another_type() {
    std::vector<PropertyList> odd;
    for (const auto& [name, value] : oddValues()) odd.push_back(value);
    ButtonsFixture fixture;
    fixture.tab.setMAllMacros(PropertyList::array(odd));
    fixture.tab.setMAllProfiles(PropertyList::array(odd));
    fixture.tab.setMButtonsSettingsDict(fixture.current.with(keys::Keymap, PropertyList::array(odd)));
    fixture.tab.updateUISettings();
    QCOMPARE(fixture.find<QComboBox>("mProfileListPopUp")->count(), static_cast<int>(odd.size()));
    useEverything(fixture);
    verifyProperSettingsWork(fixture);
  }

  void members_of_a_record_may_have_another_type_data() {
    QTest::addColumn<PropertyList>("value");
    for (const auto& [name, value] : oddValues()) QTest::newRow(name) << value;
  }

  void members_of_a_record_may_have_another_type() {
    QFETCH(PropertyList, value);
    ButtonsFixture fixture;
    for (const int ordinal : {1, 18, 22}) {
      const ControlDescriptor& control = ButtonsFixture::control(ordinal);
      fixture.give(control, value);
      for (const auto key : {keys::Command, keys::Param1, keys::Param2}) {
        for (const int command : {1, 10, 16, 17, 45, 46, 50}) {
          fixture.give(control, assignment(command).with(key, value));
          fixture.tab.checkSelectedValue(50, control.identifier, control.groupIdentifier());
          fixture.tab.clickKeymapCancel();
          fixture.tab.clickMacroRepeatButton(control);
          fixture.tab.clickMacroRepeatCancel();
        }
      }
    }
    QVERIFY(fixture.delegate.calls.empty());
    useEverything(fixture);
    verifyProperSettingsWork(fixture);
  }

  void a_command_that_is_text_reads_as_its_number() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(1),
                 PropertyList::dictionary({{keys::Command, "16"}, {keys::Param1, "4"}, {keys::Param2, 2.9}}));
    QCOMPARE(fixture.popUp(1).shownTitle(), QStringLiteral("Single Key : Left Shift + A"));
  }

  void names_with_markup_mnemonics_and_breaks_are_shown_as_they_stand() {
    ButtonsFixture fixture;
    for (const char* name : {"<b>bold</b>", "&File", "A && B", "two\nlines", "tab\tstop", "…", ""}) {
      fixture.tab.setMAllMacros(PropertyList::array({macro(name, {})}));
      const PropertyList active = fixture.current;
      fixture.tab.setMButtonsSettingsDict(active.with(keys::Keys, active[keys::Keys].with("43", assignment(10, 0, 1))));
      fixture.tab.updateUISettings();
      const QString shown = QString::fromUtf8(name);
      QCOMPARE(fixture.popUp(1).titleOfSelectedItem(),
               shown.isEmpty() ? QStringLiteral("Macro  ") : QStringLiteral("Macro : ") + shown);
    }
  }
};

SKARN_QTEST(MouseButtonControllerHostileTest)
#include "MouseButtonController_hostile_test.moc"
