// What becomes of assignments whose macro or profile was deleted.
#include "buttons/AssignmentChanges.h"

#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

struct Reset {
  const char* group;
  const char* identifier;
  int command;
  int param1;
};

const Reset resets[] = {{"Buttons", "01", 1, 0},  {"Buttons", "02", 2, 0}, {"Buttons", "03", 3, 0},
                        {"Buttons", "04", 4, 0},  {"Buttons", "05", 5, 0}, {"Buttons", "06", 18, 0},
                        {"Buttons", "07", 19, 0}, {"Keys", "30", 16, 30},  {"Keys", "31", 16, 31},
                        {"Keys", "32", 16, 32},   {"Keys", "33", 16, 33},  {"Keys", "34", 16, 34},
                        {"Keys", "35", 16, 35},   {"Keys", "36", 16, 36},  {"Keys", "37", 16, 37}};

PropertyList withRecord(const PropertyList& profile, std::string_view group, std::string_view identifier,
                        const PropertyList& record) {
  return profile.with(group, profile[group].with(identifier, record));
}

PropertyList updateOf(int index, std::string_view group, const PropertyList& records) {
  return call({"updateButtonAssignmentWithSettings", PropertyList::dictionary({{group, records}}), index});
}

}  // namespace

class AssignmentChangesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void each_of_the_fixed_records_is_put_back_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("mapping");
    for (int number = 0; number < 15; ++number) {
      QTest::addRow("%s after a macro", resets[number].identifier) << number << 10;
      QTest::addRow("%s after a profile", resets[number].identifier) << number << 17;
    }
  }

  void each_of_the_fixed_records_is_put_back() {
    QFETCH(int, number);
    QFETCH(int, mapping);
    const Reset& reset = resets[number];
    ButtonsFixture fixture;
    const PropertyList before = profiles().at(2);
    const PropertyList assigned = withRecord(before, reset.group, reset.identifier, assignment(mapping, 2, 1));
    fixture.tab.setMAllProfiles(profiles().replacing(2, assigned));
    // The other operation looks for the other command.
    if (mapping == 10) {
      fixture.tab.removeButtonProfileAssignment(2);
      QVERIFY(fixture.delegate.calls.empty());
      fixture.tab.removeButtonMacroAssignment(1);
      QVERIFY(fixture.delegate.calls.empty());
      fixture.tab.removeButtonMacroAssignment(2);
    } else {
      fixture.tab.removeButtonMacroAssignment(2);
      QVERIFY(fixture.delegate.calls.empty());
      fixture.tab.removeButtonProfileAssignment(2);
    }
    COMPARE_CALLS(fixture.delegate.calls,
                  updateOf(2, reset.group,
                           assigned[reset.group].with(reset.identifier, assignment(reset.command, reset.param1))));
  }

  void controls_that_are_not_in_the_fixed_list_are_left_data() { addControlRows(); }

  void controls_that_are_not_in_the_fixed_list_are_left() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    fixture.tab.setMAllProfiles(
        PropertyList::array({withRecord(profile("A"), groupKey(control), control.identifier, assignment(10, 0, 1))}));
    fixture.tab.removeButtonMacroAssignment(0);
    const bool isListed = control.family == ControlFamily::Wheel;
    QCOMPARE(fixture.delegate.calls.size(), isListed ? std::size_t(1) : std::size_t(0));
  }

  void every_profile_is_cleaned_and_further_keys_of_a_record_stay() {
    ButtonsFixture fixture;
    const PropertyList record = assignment(10, 0, 3).with("note", "mine");
    const PropertyList first = withRecord(profile("A"), "Buttons", "06", record);
    const PropertyList second = withRecord(profile("B"), "Keys", "31", assignment(10, 0, 1));
    fixture.tab.setMAllProfiles(PropertyList::array({first, "no profile", second}));
    fixture.tab.removeButtonMacroAssignment(0);
    COMPARE_CALLS(fixture.delegate.calls,
                  updateOf(0, "Buttons", first[keys::Buttons].with("06", assignment(18).with("note", "mine"))),
                  updateOf(2, "Keys", second[keys::Keys].with("31", assignment(16, 31))));
  }

  void a_second_reset_starts_from_what_the_first_left() {
    ButtonsFixture fixture;
    PropertyList profile_ = withRecord(profile("A"), "Buttons", "06", assignment(17, 1));
    profile_ = withRecord(profile_, "Buttons", "07", assignment(17, 1));
    fixture.tab.setMAllProfiles(PropertyList::array({profile_}));
    // As the owner does: the answer brings new profiles.
    fixture.delegate.onUpdateOfProfile = [&](const PropertyList& settings, int index) {
      const PropertyList& all = fixture.tab.mAllProfiles();
      fixture.tab.setMAllProfiles(all.replacing(index, all.at(index).merging(settings)));
    };
    fixture.tab.removeButtonProfileAssignment(1);
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(2));
    COMPARE_LISTS(fixture.tab.mAllProfiles().at(0)[keys::Buttons], factoryGroup(2));
  }

  void a_deleted_macro_leaves_no_assignment_behind() {
    const PropertyList factory = profile("Default");
    const PropertyList before = profile("Work")
                                    .with(keys::Keys, factoryGroup(1)
                                                          .with("20", assignment(10, 1, 1))
                                                          .with("26", assignment(10, 0, 254))
                                                          .with("8", assignment(10, 7, 1))
                                                          .with("31", assignment(10, 1, 1)))
                                    .with(keys::Buttons, factoryGroup(2).with("06", assignment(10, 1, 1)));
    const PropertyList after = remappedProfiles(PropertyList::array({before, factory}), factory, 10, 1, 3);
    const PropertyList expected =
        before.with(keys::Keys, before[keys::Keys].with("20", assignment(45, 20)).with("8", assignment(45, 8)))
            .with(keys::Buttons, factoryGroup(2));
    // Identifier 31 has no default record and is kept.
    COMPARE_LISTS(after, PropertyList::array({expected, factory}));
  }

  void every_control_that_points_past_the_end_is_reset_data() { addControlRows(); }

  void every_control_that_points_past_the_end_is_reset() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    const PropertyList factory = profile("Default");
    // Three macros: the last is number 2. The deleted one was number 0.
    const PropertyList past = withRecord(factory, groupKey(control), control.identifier, assignment(10, 3, 1));
    const PropertyList last = withRecord(factory, groupKey(control), control.identifier, assignment(10, 2, 1));
    fixture.tab.setMAllProfiles(PropertyList::array({past, last}));
    fixture.tab.removeMacroProfileMappings(0, 10);
    COMPARE_CALLS(fixture.delegate.calls,
                  call({"updateProfileKeyInDictionaryWithDictionary", PropertyList::array({factory, last})}));
  }

  void a_button_identifier_is_looked_up_with_two_digits() {
    const PropertyList factory = profile("Default");
    const PropertyList group =
        PropertyList::dictionary({{"3", assignment(2)}, {"03", assignment(17, 0)}, {"junk", assignment(17, 0)}});
    const PropertyList before = PropertyList::array({PropertyList::dictionary({{keys::Buttons, group}}), "no profile"});
    const PropertyList after = remappedProfiles(before, factory, 17, 0, 2);
    COMPARE_LISTS(after.at(0)[keys::Buttons], group.with("03", assignment(3)));
    QVERIFY(after.at(1) == PropertyList("no profile"));
  }

  void the_length_of_the_list_that_the_mapping_is_about_counts() {
    ButtonsFixture fixture;
    PropertyList changed = profile("Default");
    changed = changed.with(keys::Keys, changed[keys::Keys].with("20", assignment(17, 3)).with("26", assignment(10, 2)));
    fixture.tab.setMAllProfiles(PropertyList::array({changed, changed}));
    fixture.tab.removeMacroProfileMappings(0, 17);
    fixture.tab.removeMacroProfileMappings(0, 10);
    fixture.tab.removeMacroProfileMappings(0, 16);
    // Two profiles: profile 3 is past the end. Three macros: macro 2 still exists.
    const PropertyList reset = changed.with(keys::Keys, changed[keys::Keys].with("20", assignment(45, 20)));
    const auto all = [](const PropertyList& one) {
      return call({"updateProfileKeyInDictionaryWithDictionary", PropertyList::array({one, one})});
    };
    COMPARE_CALLS(fixture.delegate.calls, all(reset), all(changed), all(changed));
  }

  void an_unknown_mapping_counts_as_an_empty_list() {
    ButtonsFixture fixture;
    const PropertyList factory = profile("Default");
    const PropertyList assigned = withRecord(factory, "Keys", "20", assignment(16, 4));
    fixture.tab.setMAllProfiles(PropertyList::array({assigned}));
    fixture.tab.removeMacroProfileMappings(9, 16);
    COMPARE_CALLS(fixture.delegate.calls,
                  call({"updateProfileKeyInDictionaryWithDictionary", PropertyList::array({factory})}));
  }

  void without_an_owner_changes_are_dropped_and_not_sent_to_a_later_one() {
    MouseButtonController tab;
    const PropertyList assigned =
        PropertyList::array({withRecord(profile("A"), "Buttons", "06", assignment(10, 0, 1))});
    tab.setMAllProfiles(assigned);
    tab.setMButtonsSettingsDict(assigned.at(0));
    tab.setMDefaultDict(defaultSettings());
    tab.updateUISettings();
    const auto change = [&tab] {
      tab.removeMacroProfileMappings(0, 10);
      tab.removeButtonMacroAssignment(0);
      tab.removeButtonProfileAssignment(0);
      tab.changeButton("43", 1, 0, 0, 2);
    };
    change();
    QVERIFY(tab.mAllProfiles() == assigned);
    RecordingButtonDelegate owner;
    tab.setMButtonDelegate(&owner);
    tab.updateUISettings();
    QVERIFY(owner.calls.empty());
    // With an owner the same calls ask for something.
    change();
    QCOMPARE(owner.calls.size(), std::size_t{3});
  }
};

SKARN_QTEST(AssignmentChangesTest)
#include "AssignmentChanges_test.moc"
