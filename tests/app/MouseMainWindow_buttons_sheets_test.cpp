// What the sheets of the Buttons tab promise.
#include <QContextMenuEvent>

#include "app/SheetPromises.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

Sent assigned(const SheetBench& bench, int ordinal, const PropertyList& record) {
  const PropertyList group = bench.profile()[keys::Keys].with(SheetBench::control(ordinal).identifier, record);
  return {{updateOfProfile(0, PropertyList::dictionary({{keys::Keys, group}, {keys::KeymapID, 0}}))}, {}};
}
const ScriptedLink::Request& captureEnd() {
  static const ScriptedLink::Request end{vorn::MessageID::StopSingleKeyRecording, envelopeWith({})};
  return end;
}

void openSingleKey(SheetBench& bench) {
  bench.buttons.choose(SheetBench::control(4), AssignmentCategory::SingleKey);
}
void openApplications(SheetBench& bench) {
  bench.buttons.choose(SheetBench::control(4), AssignmentCategory::LaunchProgram);
}
void openSwap(SheetBench& bench) {
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  QApplication::sendEvent(&bench.buttons.row(SheetBench::control(4)), &event);
  bench.choose(*bench.find<QMenu>("mControlMenu"), 4);
}
Sent renamedKeymap(const SheetBench&) {
  std::vector<PropertyList> names(keys::keymapCount, PropertyList(""));
  names.front() = PropertyList("Build");
  return {{updateOfProfile(0, PropertyList::dictionary({{keys::KeymapNames, PropertyList::array(std::move(names))}}))},
          {}};
}

std::vector<SheetCase> sheetsOfButtons() {
  const char* const fourth = SheetBench::control(4).fieldName;
  return {{.name = "single key",
           .window = "mSingleKey",
           .from = fourth,
           .field = "mInputSingleKey",
           .open = openSingleKey,
           .reason = "lkeyNoKeyPressed",
           .change = [](SheetBench& bench) { bench.pressKey("mInputSingleKey", "SingleKeyEvent273"); },
           .confirmed =
               [](const SheetBench& bench) {
                 Sent sent = assigned(bench, 4, vorn::assignmentRecord(vorn::AssignmentCommand::SingleKey, 5));
                 sent.requests.insert(sent.requests.begin(), captureEnd());
                 return sent;
               },
           .cancelled =
               [](const SheetBench&) {
                 return Sent{{captureEnd()}, {}};
               }},
          {.name = "application",
           .window = "applicationPanel",
           .from = fourth,
           .field = "mApplicationSearch",
           .open = openApplications,
           .reason = "lkeyNoApplicationSelected",
           .change = [](SheetBench& bench) { bench.type("mApplicationSearch", "edit"); },
           .confirmed =
               [](const SheetBench& bench) {
                 const std::string path =
                     qEnvironmentVariable("XDG_DATA_HOME").toStdString() + "/applications/editor.desktop";
                 return assigned(
                     bench, 4,
                     PropertyList::dictionary({{keys::Command, 46}, {keys::Param1, path}, {keys::Param2, ""}}));
               }},
          {.name = "keymap",
           .window = "mKeymapWindow",
           .from = SheetBench::control(5).fieldName,
           .field = "mKeymapValuePopUp",
           .open = [](SheetBench& bench) { bench.buttons.openKeymapSheet(SheetBench::control(5)); },
           .reason = "lkeyProblemNoChange",
           .change = [](SheetBench& bench) { bench.key("mKeymapValuePopUp", Qt::Key_End); },
           .confirmed =
               [](const SheetBench& bench) {
                 return assigned(bench, 5, vorn::assignmentRecord(vorn::AssignmentCommand::Keymap, 7));
               },
           .staysEnabled = true},
          {.name = "repeat mode",
           .window = "mMacroRepeatWindow",
           .from = SheetBench::control(4).repeatButton,
           .field = "mMacroPlaybackPopUp",
           .open = [](SheetBench& bench) { bench.buttons.row(SheetBench::control(4)).repeatButton()->click(); },
           .reason = "lkeyProblemNoChange",
           .change = [](SheetBench& bench) { bench.key("mMacroPlaybackPopUp", Qt::Key_End); },
           .confirmed =
               [](const SheetBench& bench) {
                 return assigned(bench, 4, vorn::assignmentRecord(vorn::AssignmentCommand::Macro, 0, 10));
               },
           .staysEnabled = true},
          {.name = "swap",
           .window = "mSwapWindow",
           .from = fourth,
           .field = "mSwapPopUp",
           .open = openSwap,
           .reason = "lkeyProblemNoChange",
           .idle = [](SheetBench& bench) { bench.key("mSwapPopUp", Qt::Key_Home); },
           .change =
               [](SheetBench& bench) {
                 bench.key("mSwapPopUp", Qt::Key_Home);
                 bench.key("mSwapPopUp", Qt::Key_Down);
               },
           .confirmed =
               [](const SheetBench& bench) {
                 // What the other one did by default, the key Q.
                 const PropertyList spelledOut = vorn::assignmentRecord(vorn::AssignmentCommand::SingleKey, 20);
                 const PropertyList group = bench.profile()[keys::Keys]
                                                .with(SheetBench::control(4).identifier, spelledOut)
                                                .with(SheetBench::control(2).identifier,
                                                      vorn::assignmentRecord(vorn::AssignmentCommand::Macro, 0, 1));
                 return Sent{{updateOfProfile(0, PropertyList::dictionary({{keys::Keys, group}, {keys::KeymapID, 0}}))},
                             {}};
               }},
          {.name = "name of a keymap",
           .window = "mKeymapNameWindow",
           .from = "mKeymapMenuButton",
           .field = "mKeymapNameField",
           .open = [](SheetBench& bench) { bench.chooseFromGear("mKeymapMenuButton", 1); },
           .reason = "lkeyTypeAName",
           .change = [](SheetBench& bench) { bench.type("mKeymapNameField", "Build"); },
           .confirmed = renamedKeymap}};
}

}  // namespace

class MouseMainWindowButtonsSheetsTest : public SheetPromises {
  Q_OBJECT

 public:
  MouseMainWindowButtonsSheetsTest() : SheetPromises(sheetsOfButtons(), {}) {}

 private slots:
  void return_confirms_a_key_that_was_chosen_from_the_list() {
    SheetBench bench;
    openSingleKey(bench);
    bench.take();
    bench.chooseKey("mSingleKeyChoose", "F7");
    auto* sheet = bench.find<QDialog>("mSingleKey");
    QVERIFY(sheet->isVisible());
    QVERIFY(bench.take() == Sent{});
    QTest::keyClick(sheet->focusWidget(), Qt::Key_Return);
    QVERIFY(!sheet->isVisible());
    Sent expected = assigned(bench, 4, vorn::assignmentRecord(vorn::AssignmentCommand::SingleKey, 64));
    expected.requests.insert(expected.requests.begin(), captureEnd());
    QVERIFY(bench.take() == expected);
  }
};

SKARN_QTEST(MouseMainWindowButtonsSheetsTest)
#include "MouseMainWindow_buttons_sheets_test.moc"
