// Every command of the hub: the whole request that it sends, how it waits, and what follows each answer.
#include <QAbstractButton>
#include <QPushButton>
#include <QTest>
#include <functional>

#include "app/HubFixture.h"
#include "support/QtTests.h"
#include "widgets/BusyIndicator.h"

using namespace skarn;
using namespace skarn::test;
using namespace std::chrono_literals;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

using Pair = PropertyList::Pair;

// A request with the envelope and these keys.
PropertyList request(std::initializer_list<Pair> entries) {
  return PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}})
      .merging(PropertyList::dictionary(entries));
}

const PropertyList& record() {
  static const PropertyList value = PropertyList::dictionary(
      {{"ProfileName", "Draw"}, {"DPIX", 400}, {"further", PropertyList::array({PropertyList(1), PropertyList("x")})}});
  return value;
}

const PropertyList& keyEvent() {
  static const PropertyList value =
      PropertyList::dictionary({{"command", 1}, {"delay", 20}, {"page", 7}, {"argument", 4}});
  return value;
}

enum class Follow { Nothing, Bundle, Reload };

struct Command {
  const char* name;
  MessageID messageID;
  std::function<void(MouseMainController&)> run;
  PropertyList expected;
  Follow follow;
  std::chrono::milliseconds interval = 10ms;
};

const std::vector<Command>& commands() {
  using Hub = MouseMainController;
  const PropertyList contents = PropertyList::dictionary({{"MacroName", "Greet"}, {"macroID", 3}});
  static const std::vector<Command> all{
      {"get all settings", MessageID::GetAllSettings, [](Hub& hub) { hub.loadLatestSettings(); }, request({}),
       Follow::Nothing},
      {"add profile", MessageID::AddProfile, [](Hub& hub) { hub.addNewProfileWithSettings(record()); },
       request({{"DeviceSettingsDictionary", record()}}), Follow::Bundle},
      {"add a further profile", MessageID::AddProfile, [](Hub& hub) { hub.addFurtherProfileWithSettings(record()); },
       request({{"DeviceSettingsDictionary", record()}, {"IsContinuation", true}}), Follow::Bundle},
      {"update profile", MessageID::UpdateProfile, [](Hub& hub) { hub.updateProfileWithID(2, record()); },
       request({{"ProfileID", 2}, {"DeviceSettingsDictionary", record()}}), Follow::Bundle},
      {"update the active profile", MessageID::UpdateProfile, [](Hub& hub) { hub.updateProfileWithID(-1, record()); },
       request({{"ProfileID", 1}, {"DeviceSettingsDictionary", record()}}), Follow::Bundle},
      {"update button assignment of a profile", MessageID::UpdateProfile,
       [](Hub& hub) { hub.updateButtonAssignmentWithSettings(record(), 2); },
       request({{"ProfileID", 2}, {"DeviceSettingsDictionary", record()}}), Follow::Bundle},
      {"rename profile", MessageID::UpdateProfile, [](Hub& hub) { hub.renameProfileWithProfileID(0, record()); },
       request({{"ProfileID", 0}, {"DeviceSettingsDictionary", record()}}), Follow::Bundle},
      {"replace all profiles", MessageID::ReplaceAllProfiles,
       [](Hub& hub) { hub.updateProfileKeyInDictionaryWithDictionary(PropertyList::array({record()})); },
       request({{"AllProfiles", PropertyList::array({record()})}}), Follow::Nothing},
      {"switch profile", MessageID::SwitchProfile, [](Hub& hub) { hub.switchProfileWithID(2); },
       request({{"ProfileID", 2}}), Follow::Bundle},
      {"reorder profiles", MessageID::ReorderProfiles,
       [](Hub& hub) {
         hub.reorderProfiles({2, 0, 1}, PropertyList::array({"Work", "Play", "Raid"}));
       },
       request({{"ProfileOrder", PropertyList::array({2, 0, 1})},
                {"ProfileNames", PropertyList::array({"Work", "Play", "Raid"})}}),
       Follow::Bundle},
      {"add macro", MessageID::AddMacro, [](Hub& hub) { hub.addMacroWithSettings(record()); },
       request({{"MacroContents", record()}}), Follow::Reload, 20ms},
      {"rename macro", MessageID::RenameMacro, [](Hub& hub) { hub.renameMacroAtIndex(3, "Greet"); },
       request({{"MacroContents", contents}}), Follow::Reload},
      {"start macro recording", MessageID::StartMacroRecording, [](Hub& hub) { hub.startMacroRecording(false, 3); },
       request({{"macroID", 3}, {"isAppendRecording", 0}}), Follow::Nothing},
      {"start append recording", MessageID::StartMacroRecording, [](Hub& hub) { hub.startMacroRecording(true, 3); },
       request({{"macroID", 3}, {"isAppendRecording", 1}}), Follow::Nothing},
      {"stop macro recording", MessageID::StopMacroRecording, [](Hub& hub) { hub.stopMacroRecording(); }, request({}),
       Follow::Nothing},
      {"save a new recording", MessageID::SaveRecordedEvents,
       [](Hub& hub) { hub.saveRecordedEventsForMacroAtIndex(3, true); },
       request({{"macroID", 3}, {"isAppendRecording", 1}}), Follow::Reload},
      {"save an old recording", MessageID::SaveRecordedEvents,
       [](Hub& hub) { hub.saveRecordedEventsForMacroAtIndex(3, false); },
       request({{"macroID", 3}, {"isAppendRecording", 0}}), Follow::Reload},
      {"get macro events", MessageID::GetMacroDetails, [](Hub& hub) { hub.getMacroDetailsForMacroAtIndex(3); },
       request({{"IndexOfMacroSequence", 3}}), Follow::Nothing},
      {"get one macro event", MessageID::GetMacroEvent, [](Hub& hub) { hub.getSequenceDetails(3, 255); },
       request({{"macroID", 3}, {"sequenceIdx", 255}}), Follow::Nothing},
      {"replace one macro event", MessageID::UpdateMacroEvent,
       [](Hub& hub) { hub.updateSequenceInfo(3, 4, keyEvent()); },
       request({{"macroID", 3}, {"sequenceIdx", 4}, {"sequence", keyEvent()}}), Follow::Nothing},
      {"replace a further macro event", MessageID::UpdateMacroEvent,
       [](Hub& hub) { hub.updateFurtherSequenceInfo(3, 6, keyEvent()); },
       request({{"macroID", 3}, {"sequenceIdx", 6}, {"sequence", keyEvent()}, {"IsContinuation", true}}),
       Follow::Nothing},
      {"remove one macro event", MessageID::RemoveMacroEvent, [](Hub& hub) { hub.removeEventAtIndex(4, 3); },
       request({{"macroID", 3}, {"macroEventTableIndex", 4}}), Follow::Nothing},
      {"remove all macro events", MessageID::RemoveAllMacroEvents,
       [](Hub& hub) { hub.removeAllEventsForMacroAtIndex(3); }, request({{"macroID", 3}}), Follow::Nothing},
      {"copy a delay", MessageID::SetAllEventsDelay, [](Hub& hub) { hub.setAllEventsDelay(5, 3, false); },
       request({{"macroID", 3}, {"delay", 5}, {"HasNoDelay", false}}), Follow::Nothing},
      {"no delay", MessageID::SetAllEventsDelay, [](Hub& hub) { hub.setAllEventsDelay(0, 3, true); },
       request({{"macroID", 3}, {"delay", 0}, {"HasNoDelay", true}}), Follow::Nothing},
      {"set one delay", MessageID::SetEventDelay, [](Hub& hub) { hub.setNewDelay(999999, 5, 3); },
       request({{"delay", 999999}, {"sequenceIdx", 5}, {"macroID", 3}}), Follow::Nothing},
      {"replace a macro's sequence", MessageID::ReplaceMacroSequence,
       [](Hub& hub) {
         hub.replaceSequence(PropertyList::dictionary({{"events", PropertyList::array()}}), 3,
                             PropertyList::dictionary({{"MacroName", "Combo"}, {"sequence", keyEvent()}}));
       },
       request({{"MacroContents", PropertyList::dictionary(
                                      {{"macroID", 3},
                                       {"MacroName", "Combo"},
                                       {"sequence", PropertyList::dictionary({{"events", PropertyList::array()}})}})},
                {"ExpectedSequence", keyEvent()}}),
       Follow::Nothing},
      {"start single-key recording", MessageID::StartSingleKeyRecording,
       [](Hub& hub) { hub.startSingleKeyRecording(); }, request({}), Follow::Nothing},
      {"stop single-key recording", MessageID::StopSingleKeyRecording, [](Hub& hub) { hub.stopSingleKeyRecording(); },
       request({}), Follow::Nothing},
      {"start editing a key event", MessageID::StartEditHID, [](Hub& hub) { hub.startEditHID(); }, request({}),
       Follow::Nothing},
  };
  return all;
}

void addCommandRows() {
  QTest::addColumn<int>("index");
  for (std::size_t i = 0; i < commands().size(); ++i) QTest::newRow(commands()[i].name) << static_cast<int>(i);
}

// What the window was given, to see that nothing changed.
struct Shown {
  PropertyList profile, device, profiles, macros;
  friend bool operator==(const Shown&, const Shown&) = default;
};
Shown shown(HubFixture& fixture) {
  auto& ui = fixture.window.ui();
  return {ui.MousePerformanceController->mPerformanceSettingsDict(),
          ui.MousePerformanceController->mDeviceSettingsDict(), ui.MouseProfilesController->mProfilesArray(),
          ui.MouseMacrosController->mMacrosSettingsArray()};
}

const PropertyList oldBundle() {
  return bundleWith({"Work", "Play", "Draw"}, {"One", "Two", "Three", "Four"}, 1);
}
const PropertyList newBundle() {
  return bundleWith({"Alpha", "Beta"}, {"Five"}, 0);
}

struct KeyAssignment {
  const char* identifier;
  int command;
  int param1;
};
// The bundle with these assignments in the keys of its first profile.
PropertyList withAssignments(const PropertyList& bundle, std::initializer_list<KeyAssignment> assignments) {
  const PropertyList& profiles = bundle[keys::Profiles];
  PropertyList group = profiles.at(0)[keys::Keys];
  for (const auto& assignment : assignments) {
    group = group.with(assignment.identifier, PropertyList::dictionary({{keys::Command, assignment.command},
                                                                        {keys::Param1, assignment.param1},
                                                                        {keys::Param2, 0}}));
  }
  return bundle.with(keys::Profiles, profiles.replacing(0, profiles.at(0).with(keys::Keys, group)));
}

}  // namespace

class MouseMainControllerCommandsTest : public QObject {
  Q_OBJECT

 private slots:
  void each_command_sends_exactly_its_request_data() { addCommandRows(); }
  void each_command_sends_exactly_its_request();
  void a_command_without_an_answer_changes_nothing_data() { addCommandRows(); }
  void a_command_without_an_answer_changes_nothing();
  void an_answer_that_lacks_what_the_command_needs_changes_nothing_and_is_taken_data() { addCommandRows(); }
  void an_answer_that_lacks_what_the_command_needs_changes_nothing_and_is_taken();
  void a_successful_command_shows_the_new_settings_data() { addCommandRows(); }
  void a_successful_command_shows_the_new_settings();
  void a_macro_command_that_fails_reloads_nothing_data() { addCommandRows(); }
  void a_macro_command_that_fails_reloads_nothing();
  void what_the_engine_says_of_an_add_is_handed_on();
  void a_late_answer_is_taken_by_the_next_command();
  void updates_of_the_tabs_write_the_profile_of_the_selected_row();
  void updates_of_the_tabs_write_the_active_profile_when_no_row_is_selected();
  void apply_writes_the_first_profile_while_another_is_active();
  void the_product_of_the_envelope_follows_the_attached_device();
  void deleting_a_profile_switches_to_the_one_before_data();
  void deleting_a_profile_switches_to_the_one_before();
  void a_switch_that_is_answered_without_a_bundle_frees_the_tab_and_changes_nothing();
  void a_macro_deletion_without_a_status_leaves_the_assignments_alone();
  void missing_lines_of_a_macro_are_no_empty_list();
  void a_deletion_without_its_bundle_leaves_the_answer_and_the_tab_disabled();
  void deleting_a_macro_cleans_its_assignments_and_loads_the_settings_twice();
  void one_macro_event_is_returned_as_the_engine_gave_it();
  void macro_events_go_to_the_macros_tab();
  void the_change_note_names_profile_bundle_and_application();
  void queries_of_the_device_are_sent_without_waiting();
};

void MouseMainControllerCommandsTest::each_command_sends_exactly_its_request() {
  QFETCH(int, index);
  const Command& command = commands()[static_cast<std::size_t>(index)];
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.answer(MessageID::GetAllSettings, {});
  command.run(fixture.hub());
  const std::vector<ScriptedLink::Request> expected{{command.messageID, command.expected}};
  QVERIFY2(fixture.link.requests == expected, fixture.link.requests.front().body.description().c_str());
}

void MouseMainControllerCommandsTest::a_command_without_an_answer_changes_nothing() {
  QFETCH(int, index);
  const Command& command = commands()[static_cast<std::size_t>(index)];
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.answer(MessageID::GetAllSettings, {});
  const Shown before = shown(fixture);
  const PropertyList note = fixture.hub().changeNote();
  command.run(fixture.hub());
  const std::vector<ScriptedLink::Wait> waits{{601, command.interval}};
  QVERIFY(fixture.link.unansweredWaits == waits);
  QVERIFY(shown(fixture) == before);
  QVERIFY(fixture.hub().changeNote() == note);
}

void MouseMainControllerCommandsTest::an_answer_that_lacks_what_the_command_needs_changes_nothing_and_is_taken() {
  QFETCH(int, index);
  const Command& command = commands()[static_cast<std::size_t>(index)];
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.answer(MessageID::GetAllSettings, {});
  const Shown before = shown(fixture);
  // A status that is no success, and no bundle; no status; what cannot be decoded; a status that is none.
  for (const PropertyList& answer : {statusAnswer(9), changeAnswer("no bundle"), PropertyList::dictionary(),
                                     statusAnswer(PropertyList::dictionary()), statusAnswer("")}) {
    fixture.link.requests.clear();
    fixture.link.answer(command.messageID, answer);
    command.run(fixture.hub());
    QCOMPARE(fixture.link.requests.size(), std::size_t{1});
    QVERIFY(shown(fixture) == before);
    QVERIFY(fixture.link.reply().isNone());
  }
}

void MouseMainControllerCommandsTest::a_successful_command_shows_the_new_settings() {
  QFETCH(int, index);
  const Command& command = commands()[static_cast<std::size_t>(index)];
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  const Shown before = shown(fixture);
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(newBundle()));
  if (command.messageID != MessageID::GetAllSettings) {
    fixture.link.answer(command.messageID, changeAnswer(newBundle()).merging(statusAnswer(0)));
  }
  command.run(fixture.hub());
  std::vector<ScriptedLink::Request> expected{{command.messageID, command.expected}};
  if (command.follow == Follow::Reload) expected.push_back({MessageID::GetAllSettings, request({})});
  QVERIFY(fixture.link.requests == expected);
  QVERIFY(fixture.link.reply().isNone());
  if (command.follow == Follow::Nothing) {
    QVERIFY(shown(fixture) == before);
  } else {
    QVERIFY(shown(fixture) == (Shown{newBundle()[keys::Profiles].at(0), newBundle()[keys::DeviceSettings],
                                     newBundle()[keys::Profiles], newBundle()[keys::Macros]}));
    QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QStringLiteral("Alpha"));
  }
}

void MouseMainControllerCommandsTest::a_macro_command_that_fails_reloads_nothing() {
  QFETCH(int, index);
  const Command& command = commands()[static_cast<std::size_t>(index)];
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  const Shown before = shown(fixture);
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(newBundle()));
  if (command.messageID != MessageID::GetAllSettings) fixture.link.answer(command.messageID, statusAnswer(1));
  command.run(fixture.hub());
  QCOMPARE(fixture.link.requests.size(), std::size_t{1});
  QVERIFY(shown(fixture) == before);
}

void MouseMainControllerCommandsTest::what_the_engine_says_of_an_add_is_handed_on() {
  using Status = std::optional<vorn::ReturnStatus>;
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  const auto said = [&](const PropertyList& answer) {
    fixture.link.answer(MessageID::AddProfile, answer);
    return fixture.hub().addNewProfileWithSettings(record());
  };
  const PropertyList noNote = fixture.hub().changeNote();
  QVERIFY(said({}) == Status());
  QVERIFY(said(PropertyList::dictionary()) == Status());
  QVERIFY(said(statusAnswer(0)) == Status());
  QVERIFY(said(statusAnswer(8)) == vorn::ReturnStatus::NoMouse);
  QVERIFY(said(changeAnswer(oldBundle()).with("ReturnStatus", 4)) == vorn::ReturnStatus::NotSaved);
  QVERIFY(fixture.hub().changeNote() == noNote);
  QVERIFY(said(changeAnswer(newBundle()).with("ReturnStatus", 6)) == vorn::ReturnStatus::PartlyRefused);
  QVERIFY(fixture.hub().changeNote() != noNote);
  QVERIFY(said(changeAnswer(newBundle())) == vorn::ReturnStatus::Done);
  QVERIFY(fixture.link.reply().isNone());
}

void MouseMainControllerCommandsTest::a_late_answer_is_taken_by_the_next_command() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.store(changeAnswer(newBundle()));
  fixture.hub().addNewProfileWithSettings(record());
  QVERIFY(fixture.link.unansweredWaits.empty());
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QStringLiteral("Alpha"));
  QVERIFY(fixture.link.reply().isNone());
}

void MouseMainControllerCommandsTest::updates_of_the_tabs_write_the_profile_of_the_selected_row() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  // The switch that a selection asks for is not answered: another profile stays active.
  fixture.window.ui().MouseProfilesController->mProfilesTableView()->selectRow(2);
  QVERIFY(fixture.link.requests ==
          (std::vector<ScriptedLink::Request>{{MessageID::SwitchProfile, request({{"ProfileID", 2}})}}));
  QCOMPARE(fixture.window.ui().mHeaderProfileName->text(), QStringLiteral("Play"));
  fixture.link.requests.clear();
  fixture.hub().updateProfileWithSettings(record());
  fixture.hub().updateButtonAssignmentWithSettings(record());
  fixture.hub().updateValueForSetting(record());
  const ScriptedLink::Request update{MessageID::UpdateProfile,
                                     request({{"ProfileID", 2}, {"DeviceSettingsDictionary", record()}})};
  QVERIFY(fixture.link.requests == (std::vector<ScriptedLink::Request>{update, update, update}));
}

void MouseMainControllerCommandsTest::updates_of_the_tabs_write_the_active_profile_when_no_row_is_selected() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.window.ui().MouseProfilesController->mProfilesTableView()->clearSelection();
  fixture.hub().updateProfileWithSettings(record());
  fixture.hub().updateButtonAssignmentWithSettings(record());
  fixture.hub().updateValueForSetting(record());
  const ScriptedLink::Request update{MessageID::UpdateProfile,
                                     request({{"ProfileID", 1}, {"DeviceSettingsDictionary", record()}})};
  QVERIFY(fixture.link.requests == (std::vector<ScriptedLink::Request>{update, update, update}));
}

void MouseMainControllerCommandsTest::apply_writes_the_first_profile_while_another_is_active() {
  HubFixture fixture;
  fixture.startConnected(bundleWith({"Work", "Play", "Draw"}, {}, 2));
  fixture.window.ui().mAppySettings->click();
  const std::vector<ScriptedLink::Request> expected{
      {MessageID::UpdateProfile,
       request({{"ProfileID", 0},
                {"DeviceSettingsDictionary", fixture.window.ui().MouseLightingController->mUserSettingsDict()}})}};
  QVERIFY(fixture.link.requests == expected);
  // Nothing was touched on the Lighting tab.
  QVERIFY(fixture.link.requests[0].body["DeviceSettingsDictionary"] == PropertyList::dictionary());
}

void MouseMainControllerCommandsTest::the_product_of_the_envelope_follows_the_attached_device() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.notifications.post("Device Attached 0", "", {});
  fixture.link.requests.clear();
  fixture.hub().stopMacroRecording();
  fixture.hub().releaseVornDeviceInstance();
  const std::vector<ScriptedLink::Request> expected{
      {MessageID::StopMacroRecording, request({}).with("ProductID", 0)},
      {MessageID::ReleaseDevice, PropertyList::dictionary({{"ProductID", 0}})}};
  QVERIFY(fixture.link.requests == expected);
}

void MouseMainControllerCommandsTest::deleting_a_profile_switches_to_the_one_before_data() {
  QTest::addColumn<int>("deleted");
  QTest::addColumn<int>("next");
  QTest::newRow("the first stays at the first") << 0 << 0;
  QTest::newRow("the second") << 1 << 0;
  QTest::newRow("the third") << 2 << 1;
}

void MouseMainControllerCommandsTest::deleting_a_profile_switches_to_the_one_before() {
  QFETCH(int, deleted);
  QFETCH(int, next);
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  const PropertyList assigned = withAssignments(newBundle(), {{"43", 17, deleted}, {"20", 10, 0}, {"26", 17, 0}});
  fixture.link.answer(MessageID::DeleteProfile, changeAnswer(assigned));
  fixture.link.answer(MessageID::SwitchProfile, changeAnswer(assigned));
  fixture.link.answer(MessageID::ReplaceAllProfiles, changeAnswer(newBundle()));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(newBundle()));
  bool wasBusy = false;
  bool wasDisabled = false;
  fixture.link.onSend = [&](const ScriptedLink::Request& sent) {
    if (sent.messageID != MessageID::DeleteProfile) return;
    wasBusy = fixture.window.ui().mBusyIndicator->isRunning();
    wasDisabled = !fixture.window.ui().MouseProfilesController->mProfilesTableView()->isEnabled();
  };
  fixture.hub().deleteProfileWithProfileID(deleted);
  std::vector<MessageID> order;
  for (const auto& sent : fixture.link.requests) order.push_back(sent.messageID);
  const std::vector<MessageID> expected{MessageID::DeleteProfile, MessageID::SwitchProfile,
                                        MessageID::ReplaceAllProfiles, MessageID::GetAllSettings};
  QVERIFY(order == expected);
  QVERIFY(fixture.link.requests[0].body == request({{"ProfileID", deleted}}));
  QVERIFY(fixture.link.requests[1].body == request({{"ProfileID", next}}));
  // What pointed at the deleted profile, or beyond the two that are left, is put back; the macro stays.
  PropertyList cleaned = newBundle();
  cleaned = withAssignments(cleaned, {{"20", 10, 0}});
  if (deleted != 0) cleaned = withAssignments(cleaned, {{"26", 17, 0}});
  QVERIFY(fixture.link.requests[2].body == request({{"AllProfiles", cleaned[keys::Profiles]}}));
  QVERIFY(wasBusy);
  QVERIFY(wasDisabled);
  QVERIFY(!fixture.window.ui().mBusyIndicator->isRunning());
  QVERIFY(fixture.window.ui().MouseProfilesController->mProfilesTableView()->isEnabled());
  QVERIFY(fixture.link.reply().isNone());
}

void MouseMainControllerCommandsTest::a_deletion_without_its_bundle_leaves_the_answer_and_the_tab_disabled() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.answer(MessageID::DeleteProfile, statusAnswer(0));
  fixture.hub().deleteProfileWithProfileID(1);
  QCOMPARE(fixture.link.requests.size(), std::size_t{1});
  QVERIFY(fixture.link.reply() == statusAnswer(0));
  QVERIFY(fixture.window.ui().mBusyIndicator->isRunning());
  QVERIFY(!fixture.window.ui().MouseProfilesController->mProfilesTableView()->isEnabled());
}

void MouseMainControllerCommandsTest::a_switch_that_is_answered_without_a_bundle_frees_the_tab_and_changes_nothing() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  const Shown before = shown(fixture);
  fixture.link.answer(MessageID::DeleteProfile, changeAnswer(newBundle()));
  fixture.link.answer(MessageID::SwitchProfile, statusAnswer(4));
  fixture.hub().deleteProfileWithProfileID(1);
  QCOMPARE(fixture.link.requests.size(), std::size_t{2});
  QVERIFY(shown(fixture) == before);
  QVERIFY(fixture.link.reply().isNone());
  QVERIFY(!fixture.window.ui().mBusyIndicator->isRunning());
  QVERIFY(fixture.window.ui().MouseProfilesController->mProfilesTableView()->isEnabled());
  // The deletion is over: another switch cleans nothing up.
  fixture.link.requests.clear();
  fixture.link.answer(MessageID::SwitchProfile, changeAnswer(newBundle()));
  fixture.hub().switchProfileWithID(0);
  QCOMPARE(fixture.link.requests.size(), std::size_t{1});
}

void MouseMainControllerCommandsTest::a_macro_deletion_without_a_status_leaves_the_assignments_alone() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  for (const PropertyList& answer : {PropertyList::dictionary(), changeAnswer(newBundle())}) {
    fixture.link.requests.clear();
    fixture.link.answer(MessageID::DeleteMacro, answer);
    fixture.hub().deleteMacroAtIndex(2);
    const std::vector<ScriptedLink::Request> expected{{MessageID::DeleteMacro, request({{"macroID", 2}})}};
    QVERIFY(fixture.link.requests == expected);
  }
}

void MouseMainControllerCommandsTest::missing_lines_of_a_macro_are_no_empty_list() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  auto& tab = *fixture.window.ui().MouseMacrosController;
  const PropertyList lines = PropertyList::array({PropertyList("Key A Down"), PropertyList("Key A Up")});
  tab.updateSelectedMacroWithMacroDetails(lines);
  for (const PropertyList& answer : {PropertyList::dictionary(), statusAnswer(0)}) {
    fixture.link.answer(MessageID::GetMacroDetails, answer);
    fixture.hub().getMacroDetailsForMacroAtIndex(0);
    QVERIFY(fixture.link.reply().isNone());
    QVERIFY(tab.mMacroDetailsArray() == lines);
  }
}

void MouseMainControllerCommandsTest::deleting_a_macro_cleans_its_assignments_and_loads_the_settings_twice() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.answer(MessageID::DeleteMacro, statusAnswer(0));
  fixture.link.answer(MessageID::ReplaceAllProfiles, changeAnswer(newBundle()));
  const PropertyList assigned = withAssignments(newBundle(), {{"43", 10, 2}, {"20", 10, 0}, {"26", 17, 2}});
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(assigned));
  fixture.hub().deleteMacroAtIndex(2);
  std::vector<MessageID> order;
  for (const auto& sent : fixture.link.requests) order.push_back(sent.messageID);
  const std::vector<MessageID> expected{MessageID::DeleteMacro, MessageID::GetAllSettings,
                                        MessageID::ReplaceAllProfiles, MessageID::GetAllSettings};
  QVERIFY(order == expected);
  QVERIFY(fixture.link.requests[0].body == request({{"macroID", 2}}));
  const PropertyList cleaned = withAssignments(newBundle(), {{"20", 10, 0}, {"26", 17, 2}});
  QVERIFY(fixture.link.requests[2].body == request({{"AllProfiles", cleaned[keys::Profiles]}}));
}

void MouseMainControllerCommandsTest::one_macro_event_is_returned_as_the_engine_gave_it() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.answer(MessageID::GetMacroEvent, PropertyList::dictionary({{"sequenceInMacro", keyEvent()}}));
  QVERIFY(fixture.hub().getSequenceDetails(0, 0) == keyEvent());
  fixture.link.answer(MessageID::GetMacroEvent, {});
  QVERIFY(fixture.hub().getSequenceDetails(0, 0) == PropertyList::dictionary());
}

void MouseMainControllerCommandsTest::macro_events_go_to_the_macros_tab() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  const PropertyList lines = PropertyList::array({PropertyList("Key Press A"), PropertyList("0.020 seconds delay\n")});
  fixture.link.answer(MessageID::GetMacroDetails, PropertyList::dictionary({{"MacroSequences", lines}}));
  fixture.hub().getMacroDetailsForMacroAtIndex(0);
  QVERIFY(fixture.window.ui().MouseMacrosController->mMacroDetailsArray() == lines);
  fixture.link.answer(MessageID::GetMacroDetails,
                      PropertyList::dictionary({{"MacroSequences", PropertyList::array()}}));
  fixture.hub().getMacroDetailsForMacroAtIndex(0);
  QVERIFY(fixture.window.ui().MouseMacrosController->mMacroDetailsArray() == PropertyList::array());
}

void MouseMainControllerCommandsTest::the_change_note_names_profile_bundle_and_application() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.link.answer(MessageID::UpdateProfile, changeAnswer(newBundle()));
  fixture.hub().updateProfileWithID(0, record());
  QVERIFY(fixture.hub().changeNote() == PropertyList::dictionary({{"Profile Name", "Draw"},
                                                                  {"AllDevSettings", newBundle()},
                                                                  {"Source App", "org.vorn.SkarnConfigurator"}}));
  fixture.link.answer(MessageID::SwitchProfile, changeAnswer(newBundle()));
  fixture.hub().switchProfileWithID(1);
  QVERIFY(fixture.hub().changeNote()["Profile Name"] == PropertyList("Beta"));
}

void MouseMainControllerCommandsTest::queries_of_the_device_are_sent_without_waiting() {
  HubFixture fixture;
  fixture.startConnected(oldBundle());
  fixture.hub().setDriverVersions();
  fixture.hub().checkBatteryLevel();
  fixture.hub().checkBatteryStatus();
  const std::vector<ScriptedLink::Request> expected{{MessageID::QueryFirmwareVersion, request({})},
                                                    {MessageID::QueryBatteryLevel, request({})},
                                                    {MessageID::QueryChargingStatus, request({})}};
  QVERIFY(fixture.link.requests == expected);
  QVERIFY(fixture.link.unansweredWaits.empty());
}

SKARN_QTEST(MouseMainControllerCommandsTest)
#include "MouseMainController_commands_test.moc"
