// What the sheets of the Macros tab promise.
#include "app/SheetPromises.h"
#include "macros/MacroMenus.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

namespace requestKeys = vorn::requestKeys;
using vorn::MessageID;

constexpr const char* lines = "mMacroDetailsTableView";
constexpr const char* macros = "mMacroTableView";

void chooseLineItem(SheetBench& bench, int tag) {
  bench.chooseFromGear("mSettingsMacroDetails", tag);
}
void chooseMacroItem(SheetBench& bench, int tag) {
  bench.selectLines({});
  bench.chooseFromGear("mSettingsMacro", tag);
}
template <int tag, int... rows>
void openForLines(SheetBench& bench) {
  bench.selectLines({rows...});
  chooseLineItem(bench, tag);
}

ScriptedLink::Request reload() {
  return {MessageID::GetAllSettings, envelopeWith({})};
}
ScriptedLink::Request fetch() {
  return {MessageID::GetMacroDetails, envelopeWith({{requestKeys::IndexOfMacroSequence, 0}})};
}
ScriptedLink::Request captureEnd() {
  return {MessageID::StopSingleKeyRecording, envelopeWith({})};
}
PropertyList sequenceOf(const PropertyList& events) {
  return PropertyList::dictionary({{keys::Events, events}});
}
// The whole sequence of the first macro, in the place of the one that was shown.
Sent replaced(std::vector<PropertyList> events) {
  const PropertyList contents =
      PropertyList::dictionary({{keys::MacroID, 0},
                                {keys::MacroName, "Greet"},
                                {keys::Sequence, sequenceOf(PropertyList::array(std::move(events)))}});
  return {{reload(),
           {MessageID::ReplaceMacroSequence,
            envelopeWith({{requestKeys::MacroContents, contents},
                          {requestKeys::ExpectedSequence, sequenceOf(SheetBench::eventList())}})},
           fetch()},
          {}};
}
std::vector<PropertyList> eventsWith(std::size_t place, const std::vector<PropertyList>& added) {
  const PropertyList present = SheetBench::eventList();
  std::vector<PropertyList> events(present.elements().begin(), present.elements().end());
  events.insert(events.begin() + static_cast<std::ptrdiff_t>(place), added.begin(), added.end());
  return events;
}

std::vector<SheetCase> sheetsOfMacros() {
  namespace tags = macroDetailsMenuTags;
  return {
      {.name = "delay",
       .window = "mEditDelayWindow",
       .from = lines,
       .field = "mInputMacroDelay",
       .open = openForLines<tags::Edit, 1>,
       .reason = "lkeyEnterDelayFirst",
       .change = [](SheetBench& bench) { bench.type("mInputMacroDelay", "35"); },
       .confirmed =
           [](const SheetBench&) {
             return Sent{
                 {{MessageID::SetEventDelay,
                   envelopeWith({{requestKeys::Delay, 35}, {requestKeys::SequenceIdx, 1}, {requestKeys::MacroID, 0}})},
                  fetch()},
                 {}};
           }},
      {.name = "delay as it is",
       .window = "mEditDelayWindow",
       .from = lines,
       .field = "mInputMacroDelay",
       .open = openForLines<tags::Edit, 1>,
       .reason = "lkeyDelayIsSo",
       .idle = [](SheetBench& bench) { bench.type("mInputMacroDelay", "20"); },
       .change = [](SheetBench& bench) { bench.type("mInputMacroDelay", "0"); },
       .confirmed =
           [](const SheetBench&) {
             return Sent{
                 {{MessageID::SetEventDelay,
                   envelopeWith({{requestKeys::Delay, 0}, {requestKeys::SequenceIdx, 1}, {requestKeys::MacroID, 0}})},
                  fetch()},
                 {}};
           },
       .staysEnabled = true},
      {.name = "several delays",
       .window = "mEditDelayWindow",
       .from = lines,
       .field = "mInputMacroDelay",
       .open = openForLines<tags::Edit, 1, 3>,
       .reason = "lkeyEnterDelayFirst",
       .change = [](SheetBench& bench) { bench.type("mInputMacroDelay", "35"); },
       .confirmed =
           [](const SheetBench&) {
             return replaced({vorn::macroEvent(true, 0, {7, 4}), vorn::macroEvent(true, 35, {7, 5}),
                              vorn::macroEvent(false, 35, {7, 4})});
           }},
      {.name = "added delay",
       .window = "mEditDelayWindow",
       .from = lines,
       .field = "mInputMacroDelay",
       .open = openForLines<tags::insertAfter + tags::Delay, 0>,
       .reason = "lkeyNothingToAdd",
       .idle = [](SheetBench& bench) { bench.type("mInputMacroDelay", "0"); },
       .change = [](SheetBench& bench) { bench.type("mInputMacroDelay", "15"); },
       .confirmed =
           [](const SheetBench&) {
             return Sent{
                 {reload(),
                  {MessageID::SetEventDelay,
                   envelopeWith({{requestKeys::Delay, 35}, {requestKeys::SequenceIdx, 1}, {requestKeys::MacroID, 0}})},
                  fetch()},
                 {}};
           }},
      {.name = "event",
       .window = "mEditEventWindow",
       .from = lines,
       .field = "mInputMacroEvent",
       .open = openForLines<tags::Edit, 2>,
       .reason = "lkeyNoKeyNoChange",
       .change = [](SheetBench& bench) { bench.pressKey("mInputMacroEvent", "SingleKeyEvent1050"); },
       .confirmed =
           [](const SheetBench&) {
             const auto at = [](std::initializer_list<PropertyList::Pair> further) {
               return envelopeWith({{requestKeys::MacroID, 0}, {requestKeys::SequenceIdx, 2}})
                   .merging(PropertyList::dictionary(further));
             };
             return Sent{
                 {captureEnd(),
                  {MessageID::GetMacroEvent, at({})},
                  {MessageID::UpdateMacroEvent, at({{requestKeys::Sequence, vorn::macroEvent(true, 0, {7, 5})}})},
                  fetch()},
                 {}};
           },
       .cancelled =
           [](const SheetBench&) {
             return Sent{{captureEnd()}, {}};
           },
       .staysEnabled = true},
      {.name = "inserted key",
       .window = "mEditEventWindow",
       .from = lines,
       .field = "mInputMacroEvent",
       .open = openForLines<tags::insertAfter + tags::Key, 0>,
       .reason = "lkeyNoKeyPressed",
       .change = [](SheetBench& bench) { bench.pressKey("mInputMacroEvent", "SingleKeyEvent1050"); },
       .confirmed =
           [](const SheetBench&) {
             Sent sent = replaced(eventsWith(1, vorn::stroke({7, 5}, 20)));
             sent.requests.insert(sent.requests.begin(), captureEnd());
             return sent;
           },
       .cancelled =
           [](const SheetBench&) {
             return Sent{{captureEnd()}, {}};
           }},
      {.name = "text",
       .window = "mMacroTextWindow",
       .from = lines,
       .field = "mTypedText",
       .open = openForLines<tags::TypeText, 0>,
       .reason = "lkeyEnterTextFirst",
       .change = [](SheetBench& bench) { bench.type("mTypedText", "b"); },
       .confirmed =
           [](const SheetBench&) {
             return replaced(eventsWith(1, vorn::stroke({7, 5}, 20)));
           }},
      filePanel("import of a macro", "mMacrosPanel", macros,
                [](SheetBench& bench) { chooseMacroItem(bench, macroMenuTags::Import); }),
      filePanel("export of a macro", "mMacrosSaveAsPanel", macros,
                [](SheetBench& bench) { chooseMacroItem(bench, macroMenuTags::Export); })};
}

std::vector<AlertCase> alertsOfMacros() {
  return {{.name = "deletion of a macro",
           .from = macros,
           .action = "lkeyDeleteAction",
           .open = [](SheetBench& bench) { chooseMacroItem(bench, macroMenuTags::Delete); },
           .confirmed =
               [](const SheetBench&) {
                 return Sent{{{MessageID::DeleteMacro, envelopeWith({{requestKeys::MacroID, 0}})}}, {}};
               }},
          {.name = "deletion of all lines",
           .from = lines,
           .action = "lkeyDeleteAction",
           .open = openForLines<macroDetailsMenuTags::DeleteAllEvents, 0>,
           .confirmed = [](const SheetBench&) {
             return Sent{{{MessageID::RemoveAllMacroEvents, envelopeWith({{requestKeys::MacroID, 0}})}, fetch()}, {}};
           }}};
}

}  // namespace

class MouseMainWindowMacrosSheetsTest : public SheetPromises {
  Q_OBJECT

 public:
  MouseMainWindowMacrosSheetsTest() : SheetPromises(sheetsOfMacros(), alertsOfMacros()) {}

 private slots:
  void return_confirms_a_key_that_was_chosen_from_the_list() {
    SheetBench bench;
    openForLines<macroDetailsMenuTags::Edit, 2>(bench);
    bench.take();
    bench.chooseKey("mMacroEventChoose", "F7");
    auto* sheet = bench.find<QDialog>("mEditEventWindow");
    QVERIFY(sheet->isVisible());
    QVERIFY(bench.take() == Sent{});
    QTest::keyClick(sheet->focusWidget(), Qt::Key_Return);
    QVERIFY(!sheet->isVisible());
    const Requests sent = bench.take().requests;
    QVERIFY(sent.size() > 2);
    QVERIFY(sent[2].messageID == MessageID::UpdateMacroEvent);
    QVERIFY(sent[2].body[requestKeys::Sequence] == vorn::macroEvent(true, 0, {7, 64}));
  }

  void return_stops_the_play_of_a_macro_and_begins_it_anew() {
    SheetBench bench;
    openForLines<macroDetailsMenuTags::Play, 0>(bench);
    const auto* sheet = bench.find<QDialog>("mMacroPlayWindow");
    auto* start = bench.find<QPushButton>("mPlayStart");
    QVERIFY(start->isDefault());
    QCOMPARE(start->text(), localized("lkeyStopAction"));
    QTest::keyClick(bench.find("mMacroPlayWindow"), Qt::Key_Return);
    QCOMPARE(start->text(), localized("lkeyPlayAction"));
    QTest::keyClick(bench.find("mMacroPlayWindow"), Qt::Key_Return);
    QCOMPARE(start->text(), localized("lkeyStopAction"));
    QVERIFY(sheet->isVisible());
    QTest::keyClick(bench.find("mMacroPlayWindow"), Qt::Key_Escape);
    QVERIFY(!bench.isShown("mMacroPlayWindow"));
  }
};

SKARN_QTEST(MouseMainWindowMacrosSheetsTest)
#include "MouseMainWindow_macros_sheets_test.moc"
