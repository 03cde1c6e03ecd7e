// What is needed to try every sheet, panel and alert of the real window, and how a table says of each what it promises.
#pragma once

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "app/HubFixture.h"
#include "app/MouseRecords.h"
#include "buttons/ButtonsFixture.h"
#include "model/Assignments.h"
#include "model/MacroEdits.h"
#include "model/eventParser.h"
#include "protocol/History.h"
#include "widgets/PullDownButton.h"

namespace skarn::test {

using Requests = std::vector<ScriptedLink::Request>;

// What left the window: for the engine, for its history, and for its mice.
struct Sent {
  Requests requests;
  std::vector<vorn::HistoryRequest> history;
  std::vector<vorn::MiceRequest> mice{};
  friend bool operator==(const Sent&, const Sent&) = default;
};

inline PropertyList envelopeWith(std::initializer_list<PropertyList::Pair> entries) {
  namespace requestKeys = vorn::requestKeys;
  return PropertyList::dictionary(
             {{requestKeys::ProductID, 273}, {requestKeys::ResponseMsgPortName, vorn::configuratorReplyPortName}})
      .merging(PropertyList::dictionary(entries));
}
inline ScriptedLink::Request updateOfProfile(int profileID, const PropertyList& settings) {
  namespace requestKeys = vorn::requestKeys;
  return {vorn::MessageID::UpdateProfile,
          envelopeWith({{requestKeys::ProfileID, profileID}, {requestKeys::DeviceSettingsDictionary, settings}})};
}

// The window in front, connected to an engine that grants everything and keeps what it has: profiles "Work", in force,
// and "Travel"; macros "Greet", of three events, and "Jump". Controls 1 and 4 play the first macro once, control 5 goes
// to keymap 4.
struct SheetBench : HubFixture {
  using MessageID = vorn::MessageID;

  static const ControlDescriptor& control(int ordinal) { return ButtonsDriver::control(ordinal); }

  SheetBench() : buttons(*window.ui().MouseButtonController), bundle(settings()) {
    for (const MessageID granted :
         {MessageID::StartEditHID, MessageID::StartSingleKeyRecording, MessageID::StopSingleKeyRecording,
          MessageID::UpdateMacroEvent, MessageID::DeleteMacro, MessageID::RemoveAllMacroEvents,
          MessageID::SetEventDelay, MessageID::ReplaceMacroSequence}) {
      link.answer(granted, statusAnswer(0));
    }
    link.answer(MessageID::GetMacroDetails,
                PropertyList::dictionary({{"MacroSequences", vorn::eventParser::getMessagesArray(eventList())}}));
    link.answer(MessageID::GetMacroEvent, PropertyList::dictionary({{"sequenceInMacro", eventList().at(0)}}));
    startConnected(bundle);
    for (const MessageID granted : {MessageID::UpdateProfile, MessageID::ReplaceAllProfiles, MessageID::DeleteProfile,
                                    MessageID::SwitchProfile, MessageID::AddProfile}) {
      link.answer(granted, changeAnswer(bundle).with("ReturnStatus", 0));
    }
    answerHistory();
    answerMice();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) QTest::qFail("the window is active", __FILE__, __LINE__);
  }

  // One change, the last one.
  void answerHistory() {
    namespace words = vorn::history::keys;
    const PropertyList change = PropertyList::dictionary({{words::ID, 3},
                                                          {words::Time, 1'000'000'000},
                                                          {words::Kind, vorn::history::kinds::MacroDeleted},
                                                          {words::Macro, "Leap"},
                                                          {words::IsUndone, false},
                                                          {words::SourceApp, vorn::configuratorIdentifier}});
    if (!link.answerHistory({vorn::HistoryAnswer::Outcome::Done, PropertyList::array({change})}))
      QTest::qFail("the history is asked for", __FILE__, __LINE__);
  }

  // A mouse, and the virtual one in use.
  void answerMice() {
    const std::vector<PropertyList> mice{realMouse("usb-1", "Acme"), inUse(virtualMouse())};
    if (!link.answerMice({vorn::MiceAnswer::Outcome::Done, PropertyList::array(mice)}))
      QTest::qFail("the mice are asked for", __FILE__, __LINE__);
  }

  // Press A, press B, release A.
  static PropertyList eventList() {
    return PropertyList::array(
        {vorn::macroEvent(true, 0, {7, 4}), vorn::macroEvent(true, 20, {7, 5}), vorn::macroEvent(false, 20, {7, 4})});
  }
  static PropertyList settings() {
    const PropertyList plain = bundleWith({"Work", "Travel"}, {"Greet", "Jump"});
    const PropertyList greet = plain[keys::Macros].at(0);
    PropertyList work = plain[keys::Profiles].at(0);
    const auto assign = [&work](int ordinal, vorn::AssignmentCommand command, int param1, int param2) {
      work = work.with(keys::Keys, work[keys::Keys].with(control(ordinal).identifier,
                                                         vorn::assignmentRecord(command, param1, param2)));
    };
    assign(1, vorn::AssignmentCommand::Macro, 0, 1);
    assign(4, vorn::AssignmentCommand::Macro, 0, 1);
    assign(5, vorn::AssignmentCommand::Keymap, 3, 0);
    return plain.with(keys::Profiles, plain[keys::Profiles].replacing(0, work))
        .with(keys::Macros,
              plain[keys::Macros].replacing(
                  0, greet.with(keys::Sequence, PropertyList::dictionary({{keys::Events, eventList()}}))));
  }
  PropertyList profile(int row = 0) const { return bundle[keys::Profiles].at(row); }
  PropertyList macro(int row = 0) const { return bundle[keys::Macros].at(row); }

  template <typename Widget = QWidget>
  Widget* find(const char* name) {
    auto* found = window.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) qFatal("there is no %s", name);
    return found;
  }
  void showTab(const char* page) { window.ui().mMouseTabView->setCurrentWidget(find(page)); }
  // As a click would, but for what it does besides.
  void giveKeyboardTo(const char* name) {
    QWidget* widget = find(name);
    for (QWidget* page = widget; page != nullptr; page = page->parentWidget()) {
      if (window.ui().mMouseTabView->indexOf(page) >= 0) window.ui().mMouseTabView->setCurrentWidget(page);
    }
    // The list of lines is shown for a macro that has some.
    if (find("MouseMacrosController")->isAncestorOf(widget)) selectLines({0});
    widget->setFocus();
  }
  void press(const char* button) { find<QAbstractButton>(button)->click(); }
  void choose(QMenu& menu, int tag) {
    for (QAction* item : taggedItems(menu)) {
      if (!item->isSeparator() && tagOf(*item) == tag) item->trigger();
    }
    menu.close();
  }
  void chooseFromGear(const char* gear, int tag) {
    auto* button = find<PullDownButton>(gear);
    button->openMenu();
    choose(*button->menu(), tag);
  }
  void type(const char* field, const char* text) { QTest::keyClicks(find(field), QLatin1String(text)); }
  void key(const char* field, Qt::Key key) { QTest::keyClick(find(field), key); }

  // Macro 1 and these of its lines are selected in the Macros tab.
  void selectLines(const std::vector<int>& rows) {
    showTab("MouseMacrosController");
    find<QTableView>("mMacroTableView")->selectRow(0);
    auto* lines = find<QTableView>("mMacroDetailsTableView");
    lines->clearSelection();
    for (const int row : rows) {
      lines->selectionModel()->select(lines->model()->index(row, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
  }
  // A key that the person presses while a field listens, and what the engine says of it.
  void pressKey(const char* field, const char* news) {
    key(field, Qt::Key_B);
    notifications.post(news, "", PropertyList::dictionary({{"singleKey", 5}, {"singleKeyModif", 0}}));
    link.typed.clear();
  }

  // A key chosen in the list that this button of a sheet opens.
  void chooseKey(const char* button, const char* name) {
    press(button);
    type("mKeySearch", name);
    QTest::keyClick(find("mKeyChooser"), Qt::Key_Return);
  }

  Sent take() {
    return {std::exchange(link.requests, {}), std::exchange(link.historyRequests, {}),
            std::exchange(link.miceRequests, {})};
  }

  ButtonsDriver buttons;
  PropertyList bundle;
  QTemporaryDir folder;
};

// A sheet that asks for something.
struct SheetCase {
  const char* name;    // of the row
  const char* window;  // its object name
  const char* from;    // who has the keyboard before, and again afterwards
  const char* field;   // who has it at first
  void (*open)(SheetBench&);
  // Makes its OK change nothing, and the ID of the text that says so; none where OK always changes something.
  const char* reason = nullptr;
  void (*idle)(SheetBench&) = nullptr;  // null where it opens so
  // Makes its OK change something; null where it opens so.
  void (*change)(SheetBench&) = nullptr;
  // What leaves the window when OK is pressed then, and when it is cancelled.
  Sent (*confirmed)(const SheetBench&);
  Sent (*cancelled)(const SheetBench&) = [](const SheetBench&) { return Sent{}; };
  // OK closes it without an effect of its own.
  bool staysEnabled = false;
  bool staysOpen = false;  // OK does not close it
  // One of the toolkit's own, whose further fields have their own use for Return.
  bool isToolkits = false;
};

// One of the panels that ask for a file; one that saves proposes a name.
inline SheetCase filePanel(const char* name, const char* window, const char* from, void (*open)(SheetBench&)) {
  return {.name = name,
          .window = window,
          .from = from,
          .field = "fileNameEdit",
          .open = open,
          .reason = "lkeyNoFileNamed",
          .idle = [](SheetBench& bench) { bench.find<QLineEdit>("fileNameEdit")->clear(); },
          .confirmed = nullptr,
          .isToolkits = true};
}

// An alert that asks before something is lost.
struct AlertCase {
  const char* name;
  const char* from;
  const char* action;  // the ID of what its button says
  void (*open)(SheetBench&);
  Sent (*confirmed)(const SheetBench&);
};

}  // namespace skarn::test
