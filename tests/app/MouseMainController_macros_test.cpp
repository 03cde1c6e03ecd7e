// The Macros tab in the window, with the hub: what a person does there, and which requests leave for it.
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "app/HubFixture.h"
#include "model/Assignments.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr int macrosTab = 2;

PropertyList request(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}})
      .merging(PropertyList::dictionary(entries));
}

const PropertyList& threeLines() {
  static const PropertyList lines = PropertyList::array({"Key Press A", "0.020 seconds delay\n", "Key Release A"});
  return lines;
}

// Profiles, and macros that have these lines.
PropertyList bundleOf(const std::vector<std::string>& profiles, const std::vector<std::string>& macros) {
  const auto event = [](int command, int delay) {
    return PropertyList::dictionary({{"command", command}, {"delay", delay}, {"page", 7}, {"argument", 4}});
  };
  const PropertyList sequence =
      PropertyList::dictionary({{"events", PropertyList::array({event(1, 0), event(0, 20)})}});
  const PropertyList bundle = bundleWith(profiles, macros);
  std::vector<PropertyList> records;
  for (const PropertyList& each : bundle[keys::Macros].elements())
    records.push_back(each.with(keys::Sequence, sequence));
  return bundle.with(keys::Macros, PropertyList::array(std::move(records)));
}

// The window on the Macros tab with two macros, the first selected, over an engine that grants everything.
struct MacrosWindow : HubFixture {
  MacrosWindow() {
    for (const MessageID granted :
         {MessageID::StartMacroRecording, MessageID::StopMacroRecording, MessageID::SaveRecordedEvents,
          MessageID::StartEditHID, MessageID::StopSingleKeyRecording, MessageID::UpdateMacroEvent,
          MessageID::RenameMacro, MessageID::AddMacro, MessageID::DeleteMacro}) {
      link.answer(granted, statusAnswer(0));
    }
    link.answer(MessageID::GetMacroDetails, PropertyList::dictionary({{"MacroSequences", threeLines()}}));
    startConnected(bundleOf({"Work"}, {"Greet", "Jump"}));
    window.ui().mMouseTabView->setCurrentIndex(macrosTab);
    tab().mMacroTableView()->selectRow(0);
    link.requests.clear();
  }
  MouseMacrosController& tab() { return *window.ui().MouseMacrosController; }
  void click(const char* button) { QTest::mouseClick(page(button), Qt::LeftButton); }
  std::vector<MessageID> sent() {
    std::vector<MessageID> messages;
    for (const auto& made : link.requests) messages.push_back(made.messageID);
    link.requests.clear();
    return messages;
  }
};

const std::vector<MessageID> stopAndSave{MessageID::StopMacroRecording, MessageID::SaveRecordedEvents,
                                         MessageID::GetAllSettings, MessageID::GetMacroDetails};

}  // namespace

class MouseMainControllerMacrosTest : public QObject {
  Q_OBJECT

 private slots:
  void the_button_says_record_once_the_tab_is_shown();
  void a_recording_is_ended_by_data();
  void a_recording_is_ended_by();
  void quitting_releases_the_device_before_it_saves_the_recording();
  void an_answer_to_a_replaced_event_enables_the_buttons();
  void a_new_macro_can_be_named_while_the_settings_are_loaded_anew();
  void a_macro_that_the_engine_refuses_is_told_and_nothing_is_loaded_anew();
  void an_export_asks_for_the_settings_only_where_there_is_an_engine_to_ask();
  void an_engine_lost_during_a_recording_leaves_the_tab_usable();
  void recorded_lines_reach_the_table_through_the_news();
  void a_deleted_macro_changes_no_other_control();
  void a_deletion_that_concerns_no_control_sends_the_profiles_once();
};

void MouseMainControllerMacrosTest::the_button_says_record_once_the_tab_is_shown() {
  {
    HubFixture fixture;
    fixture.startConnected(bundleWith({"Work"}, {"Greet"}));
    const QPushButton* button = fixture.window.ui().MouseMacrosController->mRecordMacroDetails();
    QCOMPARE(button->text(), QStringLiteral("Stop"));
    fixture.window.ui().mMouseTabView->setCurrentIndex(macrosTab);
    QCOMPARE(button->text(), QStringLiteral("Record"));
  }
  HubFixture fixture;
  fixture.window.ui().mMouseTabView->setCurrentIndex(macrosTab);
  fixture.startConnected(bundleWith({"Work"}, {"Greet"}));
  QCOMPARE(fixture.window.ui().MouseMacrosController->mRecordMacroDetails()->text(), QStringLiteral("Record"));
}

void MouseMainControllerMacrosTest::a_recording_is_ended_by_data() {
  QTest::addColumn<QByteArray>("begin");
  QTest::addColumn<int>("end");
  for (const char* button : {"mRecordMacroDetails", "mAddMacroDetails"}) {
    QTest::addRow("another tab, %s", button) << QByteArray(button) << 0;
    QTest::addRow("another application, %s", button) << QByteArray(button) << 1;
    QTest::addRow("a removed mouse, %s", button) << QByteArray(button) << 2;
    QTest::addRow("the button, %s", button) << QByteArray(button) << 3;
  }
}

void MouseMainControllerMacrosTest::a_recording_is_ended_by() {
  QFETCH(QByteArray, begin);
  QFETCH(int, end);
  const int appends = begin == "mAddMacroDetails" ? 1 : 0;
  MacrosWindow fixture;
  fixture.click(begin.constData());
  QVERIFY(fixture.link.requests ==
          (std::vector<ScriptedLink::Request>{
              {MessageID::StartMacroRecording, request({{"macroID", 0}, {"isAppendRecording", appends}})}}));
  fixture.link.requests.clear();
  switch (end) {
    case 0:
      fixture.window.ui().mMouseTabView->setCurrentIndex(0);
      break;
    case 1:
      fixture.delegate->applicationWillResignActive();
      break;
    case 2:
      fixture.notifications.post("Device Removed 273", "", {});
      break;
    default:
      fixture.click("mRecordMacroDetails");
  }
  QVERIFY(fixture.link.requests.size() == 4);
  QVERIFY(fixture.link.requests[1].body == request({{"macroID", 0}, {"isAppendRecording", appends}}));
  QVERIFY(fixture.sent() == stopAndSave);
  QCOMPARE(fixture.tab().mRecordMacroDetails()->text(), QStringLiteral("Record"));
  QVERIFY(fixture.tab().mMacroDetailsArray() == threeLines());
  // Once is enough.
  fixture.delegate->applicationWillResignActive();
  QVERIFY(fixture.link.requests.empty());
}

void MouseMainControllerMacrosTest::quitting_releases_the_device_before_it_saves_the_recording() {
  MacrosWindow fixture;
  fixture.click("mRecordMacroDetails");
  fixture.link.requests.clear();
  fixture.delegate->applicationWillTerminate();
  std::vector<MessageID> expected = stopAndSave;
  expected.insert(expected.begin(), MessageID::ReleaseDevice);
  QVERIFY(fixture.sent() == expected);
}

void MouseMainControllerMacrosTest::an_answer_to_a_replaced_event_enables_the_buttons() {
  for (const int status : {0, 1}) {
    MacrosWindow fixture;
    fixture.link.answer(MessageID::UpdateMacroEvent, statusAnswer(status));
    fixture.tab().setStateOfTableButtonsWithState(false);
    fixture.tab().setStateOfMacroTableWithState(false);
    fixture.hub().updateSequenceInfo(0, 0, PropertyList::dictionary({{"command", 1}}));
    QCOMPARE(fixture.page("mAddMacro")->isEnabled(), status == 0);
    QCOMPARE(fixture.tab().mMacroTableView()->isEnabled(), status == 0);
  }
}

void MouseMainControllerMacrosTest::a_new_macro_can_be_named_while_the_settings_are_loaded_anew() {
  MacrosWindow fixture;
  QApplication::setActiveWindow(&fixture.window);
  fixture.link.answer(MessageID::GetAllSettings,
                      allSettingsAnswer(bundleWith({"Work"}, {"Greet", "Jump", "Untitled Macro"})));
  fixture.link.answer(MessageID::GetMacroDetails,
                      PropertyList::dictionary({{"MacroSequences", PropertyList::array()}}));
  fixture.click("mAddMacro");
  QVERIFY(fixture.sent() ==
          (std::vector<MessageID>{MessageID::AddMacro, MessageID::GetAllSettings, MessageID::GetMacroDetails}));
  auto* editor = fixture.tab().mMacroTableView()->viewport()->findChild<QLineEdit*>();
  QVERIFY(editor != nullptr);
  QTest::keyClicks(editor, "Dash");
  QTest::keyClick(editor, Qt::Key_Return);
  QTRY_VERIFY(!fixture.link.requests.empty());
  QVERIFY(fixture.link.requests[0] ==
          (ScriptedLink::Request{
              MessageID::RenameMacro,
              request({{"MacroContents", PropertyList::dictionary({{"MacroName", "Dash"}, {"macroID", 2}})}})}));
}

void MouseMainControllerMacrosTest::a_macro_that_the_engine_refuses_is_told_and_nothing_is_loaded_anew() {
  MacrosWindow fixture;
  const PropertyList before = fixture.hub().mMacrosArray();
  fixture.link.answer(MessageID::AddMacro, statusAnswer(3));
  fixture.click("mAddMacro");
  QVERIFY(fixture.sent() == (std::vector<MessageID>{MessageID::AddMacro, MessageID::GetMacroDetails}));
  QVERIFY(fixture.window.findChild<QMessageBox*>(QStringLiteral("alert")) != nullptr);
  QVERIFY(fixture.tab().mMacrosSettingsArray() == before);
  QCOMPARE(fixture.tab().mMacroTableView()->selectionModel()->selectedRows().value(0).row(), 0);
}

void MouseMainControllerMacrosTest::an_export_asks_for_the_settings_only_where_there_is_an_engine_to_ask() {
  MacrosWindow fixture;
  for (const bool isThere : {true, false}) {
    fixture.link.isAvailable = isThere;
    fixture.tab().loadSaveAsPanel();
    QVERIFY(fixture.sent() == (isThere ? std::vector{MessageID::GetAllSettings} : std::vector<MessageID>{}));
    auto* panel = fixture.window.findChild<QDialog*>(QStringLiteral("mMacrosSaveAsPanel"));
    QVERIFY(panel != nullptr && panel->isVisible());
    panel->reject();
    QTRY_VERIFY(fixture.window.findChild<QDialog*>(QStringLiteral("mMacrosSaveAsPanel")) == nullptr);
  }
}

void MouseMainControllerMacrosTest::an_engine_lost_during_a_recording_leaves_the_tab_usable() {
  MacrosWindow fixture;
  fixture.click("mRecordMacroDetails");
  for (const MessageID silent : {MessageID::StopMacroRecording, MessageID::SaveRecordedEvents,
                                 MessageID::GetAllSettings, MessageID::GetMacroDetails}) {
    fixture.link.answer(silent, {});
  }
  fixture.link.requests.clear();
  fixture.click("mRecordMacroDetails");
  QVERIFY(fixture.sent() == (std::vector<MessageID>{MessageID::StopMacroRecording, MessageID::SaveRecordedEvents,
                                                    MessageID::GetMacroDetails}));
  QCOMPARE(fixture.tab().mRecordMacroDetails()->text(), QStringLiteral("Record"));
  QVERIFY(fixture.page("mAddMacro")->isEnabled());
  QVERIFY(fixture.tab().mMacroTableView()->isEnabled());
}

void MouseMainControllerMacrosTest::recorded_lines_reach_the_table_through_the_news() {
  MacrosWindow fixture;
  fixture.click("mRecordMacroDetails");
  fixture.notifications.post("MacroSequence273", "", PropertyList::dictionary({{"messagesArray", threeLines()}}));
  QVERIFY(fixture.tab().mMacroDetailsArray() == threeLines());
}

PropertyList playingMacro(int position, int mode) {
  return vorn::assignmentRecord(vorn::AssignmentCommand::Macro, position, mode);
}

// The profile with other assignments of two keys.
PropertyList playing(const PropertyList& profile, const PropertyList& four, const PropertyList& seven) {
  return profile.with(keys::Keys, profile[keys::Keys].with("4", four).with("7", seven));
}

// Deletes the first of three macros and returns what was sent.
std::vector<ScriptedLink::Request> deletedFirst(MacrosWindow& fixture, PropertyList profile) {
  PropertyList bundle = bundleOf({"Work"}, {"Greet", "Jump", "Wave"});
  bundle = bundle.with(keys::Profiles, PropertyList::array({std::move(profile)}));
  fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundle));
  fixture.hub().loadLatestSettings();
  fixture.hub().setProperties();
  fixture.link.onSend = [&fixture, bundle](const ScriptedLink::Request& sent) mutable {
    if (sent.messageID == MessageID::DeleteMacro) bundle = bundle.with(keys::Macros, bundle[keys::Macros].removing(0));
    const PropertyList& profiles = sent.body["AllProfiles"];
    if (sent.messageID == MessageID::ReplaceAllProfiles) bundle = bundle.with(keys::Profiles, profiles);
    fixture.link.answer(MessageID::ReplaceAllProfiles, changeAnswer(bundle));
    fixture.link.answer(MessageID::GetAllSettings, allSettingsAnswer(bundle));
  };
  fixture.link.requests.clear();
  fixture.hub().deleteMacroAtIndex(0);
  fixture.link.onSend = {};
  return std::exchange(fixture.link.requests, {});
}

void MouseMainControllerMacrosTest::a_deleted_macro_changes_no_other_control() {
  MacrosWindow fixture;
  const PropertyList plain = bundleWith({"Work"}, {})[keys::Profiles].at(0);
  const auto requests = deletedFirst(fixture, playing(plain, playingMacro(0, 2), playingMacro(2, 3)));
  // The clean-up alone would put back what played the last one.
  QVERIFY(requests == (std::vector<ScriptedLink::Request>{
                          {MessageID::DeleteMacro, request({{"macroID", 0}})},
                          {MessageID::GetAllSettings, request({})},
                          {MessageID::ReplaceAllProfiles, request({{"AllProfiles", PropertyList::array({plain})}})},
                          {MessageID::GetAllSettings, request({})},
                          // Another macro stands in the selected row.
                          {MessageID::GetMacroDetails, request({{"IndexOfMacroSequence", 0}})},
                          {MessageID::ReplaceAllProfiles,
                           request({{"AllProfiles", PropertyList::array({playing(plain, plain[keys::Keys]["4"],
                                                                                 playingMacro(1, 3))})}})}}));
  QVERIFY(fixture.hub().mDefaultProfileDict()[keys::Keys]["7"] == playingMacro(1, 3));
}

void MouseMainControllerMacrosTest::a_deletion_that_concerns_no_control_sends_the_profiles_once() {
  MacrosWindow fixture;
  const PropertyList plain = bundleWith({"Work"}, {})[keys::Profiles].at(0);
  std::vector<MessageID> sent;
  for (const auto& each : deletedFirst(fixture, plain)) sent.push_back(each.messageID);
  QVERIFY(sent ==
          (std::vector<MessageID>{MessageID::DeleteMacro, MessageID::GetAllSettings, MessageID::ReplaceAllProfiles,
                                  MessageID::GetAllSettings, MessageID::GetMacroDetails}));
}

SKARN_QTEST(MouseMainControllerMacrosTest)
#include "MouseMainController_macros_test.moc"
