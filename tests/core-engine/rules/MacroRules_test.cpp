#include "core-engine/rules/MacroRules.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/rules/BundleRules.h"
#include "model/MacroEvents.h"
#include "model/eventParser.h"

namespace vorn::engine::test {
namespace {

using Events = std::vector<PropertyList>;

PropertyList dictionary(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

// Three events, five rows.
Events threeEvents() {
  return {keyPress(4, 1), keyRelease(4, 20), macroEvent(1, 300, 9, 1)};
}

PropertyList threeMacros() {
  return bundleWithMacros({macro("a", 0), macro("b", 1, threeEvents()), macro("c", 2)});
}

// The bundle of threeMacros with these events in the second macro.
PropertyList withEvents(Events events) {
  return bundleWithMacros({macro("a", 0), macro("b", 1, std::move(events)), macro("c", 2)});
}

void expectChanged(const MacroResult& result, const PropertyList& expected) {
  EXPECT_EQ(result.status, ReturnStatus::Done) << result.reason;
  EXPECT_EQ(result.reason, "");
  EXPECT_EQ(result.value, expected) << result.value.description();
  EXPECT_TRUE(isCompleteBundle(result.value));
}

void expectRefused(const MacroResult& result, ReturnStatus status, const std::string& reason) {
  EXPECT_EQ(result.status, status) << reason;
  EXPECT_EQ(result.reason, reason);
  EXPECT_TRUE(result.value.isNone()) << reason;
}

TEST(MacroRulesTest, AddAMacroAtTheEnd) {
  const PropertyList record = dictionary({{"MacroName", "new"},
                                          {"delay", 30},
                                          {"ResponseMsgPortName", "Port"},
                                          {"sequence", sequenceOf(threeEvents()).with("speed", 2)},
                                          {"colour", "red"}});
  const PropertyList before = threeMacros();
  expectChanged(withAddedMacro(before, record),
                before.with("Macros", before["Macros"].appending(record.with("macroID", 3))));
}

TEST(MacroRulesTest, CompleteAnAddedMacro) {
  expectChanged(withAddedMacro(bundle(), dictionary({{"MacroName", "new"}, {"macroID", 17}})),
                bundleWithMacros({dictionary(
                    {{"MacroName", "new"}, {"macroID", 0}, {"delay", 20}, {"sequence", PropertyList::dictionary()}})}));
}

TEST(MacroRulesTest, AddAMacroWhoseNameIsTaken) {
  expectChanged(withAddedMacro(bundleWithMacros({macro("a", 0)}), macro("a", 0)),
                bundleWithMacros({macro("a", 0), macro("a", 1)}));
}

TEST(MacroRulesTest, RefuseToAddWhatIsNoMacro) {
  const auto refuses = [](const PropertyList& record, const std::string& reason) {
    expectRefused(withAddedMacro(threeMacros(), record), ReturnStatus::Malformed, reason);
  };
  refuses({}, "there is no macro record");
  refuses(PropertyList::array({macro("a", 0)}), "there is no macro record");
  refuses(PropertyList::dictionary(), "the macro has no name");
  refuses(macro("", 0), "the macro has no name");
  refuses(macro("a", 0).with("MacroName", 7), "the macro has no name");
  refuses(macro("a", 0).with("delay", -1), "its delay is out of range");
  refuses(macro("a", 0).with("delay", "20"), "its delay is out of range");
  refuses(macro("a", 0).with("sequence", PropertyList::array()), "its sequence is no dictionary");
  refuses(macro("a", 0).with("sequence", dictionary({{"events", 1}})), "its events are no array");
  refuses(macro("a", 0, {keyPress(4), macroEvent(1, 0, 9, 10)}), "its event 2 is none");
}

TEST(MacroRulesTest, BoundAMacro) {
  const Events most(maximumMacroEvents, keyPress(4));
  EXPECT_EQ(withAddedMacro(bundle(), macro("a", 0, most)).status, ReturnStatus::Done);
  Events more = most;
  more.push_back(keyRelease(4));
  expectRefused(withAddedMacro(bundle(), macro("a", 0, more)), ReturnStatus::TooLarge, "the macro has too many events");
  const std::string large(2'000'000, 'x');
  expectRefused(withAddedMacro(bundle(), macro("a", 0).with("comment", large)), ReturnStatus::TooLarge,
                "the macro is too large");
  expectRefused(withRenamedMacro(threeMacros(), 1, large), ReturnStatus::TooLarge, "the macro becomes too large");
  expectRefused(withReplacedEvent(threeMacros(), 1, 0, keyPress(4).with("comment", large)), ReturnStatus::TooLarge,
                "the macro becomes too large");
  expectRefused(withRecordedEvents(threeMacros(), 1, PropertyList::array(most), true), ReturnStatus::TooLarge,
                "the macro becomes too large");
}

TEST(MacroRulesTest, BoundTheNumberOfMacros) {
  PropertyList full = bundleWithMacros(Events(maximumMacros, macro("a", 0)));
  expectRefused(withAddedMacro(full, macro("b", 0)), ReturnStatus::OutOfRange, "there are too many macros");
}

TEST(MacroRulesTest, RenameAMacro) {
  const PropertyList before = threeMacros();
  expectChanged(withRenamedMacro(before, 2, "z"),
                bundleWithMacros({macro("a", 0), macro("b", 1, threeEvents()), macro("z", 2)}));
  for (const PropertyList& name : {PropertyList(), PropertyList(""), PropertyList(7)}) {
    expectRefused(withRenamedMacro(before, 2, name), ReturnStatus::Malformed, "the new name is empty");
  }
}

TEST(MacroRulesTest, CloseTheGapOfADeletedMacro) {
  expectChanged(withoutMacro(threeMacros(), 0), bundleWithMacros({macro("b", 0, threeEvents()), macro("c", 1)}));
  expectChanged(withoutMacro(threeMacros(), 1), bundleWithMacros({macro("a", 0), macro("c", 1)}));
  expectChanged(withoutMacro(threeMacros(), 2), bundleWithMacros({macro("a", 0), macro("b", 1, threeEvents())}));
  expectChanged(withoutMacro(bundleWithMacros({macro("a", 0)}), 0), bundle());
}

TEST(MacroRulesTest, LeaveAssignmentsAloneWhenAMacroIsDeleted) {
  const PropertyList assigned = bundle()["Profiles"].at(0)["Keys"].with("4", assignment(10, 1, 1));
  const PropertyList before =
      threeMacros().with("Profiles", PropertyList::array({bundle()["Profiles"].at(0).with("Keys", assigned)}));
  EXPECT_EQ(withoutMacro(before, 1).value["Profiles"], before["Profiles"]);
}

TEST(MacroRulesTest, MapEveryRowToItsEvent) {
  const std::vector<std::size_t> eventOfRow = {0, 1, 1, 2, 2};
  for (std::size_t row = 0; row < eventOfRow.size(); ++row) {
    const MacroResult result = eventAt(threeMacros(), 1, row);
    EXPECT_EQ(result.status, ReturnStatus::Done);
    EXPECT_EQ(result.value, threeEvents()[eventOfRow[row]]) << row;
  }
}

TEST(MacroRulesTest, HaveARowForEveryLine) {
  Events events;
  for (int count = 0; count < 6; ++count) {
    const PropertyList lines = eventParser::getMessagesArray(PropertyList::array(events));
    const auto rows = static_cast<std::int64_t>(lines.size());
    EXPECT_EQ(eventAt(withEvents(events), 1, rows).status, ReturnStatus::OutOfRange) << count;
    for (std::int64_t row = 0; row < rows; ++row) {
      const MacroResult result = eventAt(withEvents(events), 1, row);
      // The delay is the first line of the event's two, the event the last.
      const auto ofEvent = eventParser::parseSequence(result.value);
      EXPECT_EQ(lines.at(row), ofEvent.at(row % 2 == 0 ? 1 : 0)) << row;
    }
    events.push_back(keyPress(4 + count, 10 * count));
  }
}

TEST(MacroRulesTest, ReplaceTheEventOfARow) {
  const PropertyList changed = keyRelease(5, 999'999).with("comment", "aim");
  expectChanged(withReplacedEvent(threeMacros(), 1, 0, changed),
                withEvents({changed, threeEvents()[1], threeEvents()[2]}));
  expectChanged(withReplacedEvent(threeMacros(), 1, 3, changed),
                withEvents({threeEvents()[0], threeEvents()[1], changed}));
  for (const PropertyList& other : {PropertyList(), PropertyList::dictionary(), macroEvent(1, 0, 7, 3)}) {
    expectRefused(withReplacedEvent(threeMacros(), 1, 0, other), ReturnStatus::Malformed, "the new event is none");
  }
}

TEST(MacroRulesTest, RemoveTheEventOfAnEvenRow) {
  expectChanged(withoutRow(threeMacros(), 1, 0), withEvents({threeEvents()[1], threeEvents()[2]}));
  expectChanged(withoutRow(threeMacros(), 1, 2), withEvents({threeEvents()[0], threeEvents()[2]}));
  expectChanged(withoutRow(threeMacros(), 1, 4), withEvents({threeEvents()[0], threeEvents()[1]}));
}

TEST(MacroRulesTest, RemoveTheDelayOfAnOddRow) {
  expectChanged(withoutRow(threeMacros(), 1, 1), withEvents({threeEvents()[0], keyRelease(4, 0), threeEvents()[2]}));
  expectChanged(withoutRow(threeMacros(), 1, 3),
                withEvents({threeEvents()[0], threeEvents()[1], macroEvent(1, 0, 9, 1)}));
}

TEST(MacroRulesTest, RemoveEventsUntilNoneIsLeft) {
  PropertyList settings = threeMacros();
  for (int count = 3; count > 0; --count) settings = withoutRow(settings, 1, 0).value;
  EXPECT_EQ(settings, withEvents({}));
  expectRefused(withoutRow(settings, 1, 0), ReturnStatus::OutOfRange, "there is no row 0");
  expectChanged(withoutEvents(threeMacros(), 1), withEvents({}));
  expectChanged(withoutEvents(threeMacros(), 0), threeMacros());
}

TEST(MacroRulesTest, SetTheDelayOfARow) {
  expectChanged(withDelay(threeMacros(), 1, 1, 1500),
                withEvents({threeEvents()[0], keyRelease(4, 1500), threeEvents()[2]}));
  expectChanged(withDelay(threeMacros(), 1, 0, 0), withEvents({keyPress(4, 0), threeEvents()[1], threeEvents()[2]}));
  expectRefused(withDelay(threeMacros(), 1, 1, -1), ReturnStatus::OutOfRange, "the new delay is out of range");
  expectRefused(withDelay(threeMacros(), 1, 1, 1'000'000), ReturnStatus::OutOfRange, "the new delay is out of range");
  expectRefused(withDelay(threeMacros(), 1, 1, "5"), ReturnStatus::Malformed, "the new delay is no number");
}

TEST(MacroRulesTest, GiveEveryEventTheDelayOfOneRow) {
  expectChanged(withDelayOfRow(threeMacros(), 1, 3),
                withEvents({keyPress(4, 300), keyRelease(4, 300), macroEvent(1, 300, 9, 1)}));
  expectChanged(withoutDelays(threeMacros(), 1),
                withEvents({keyPress(4, 0), keyRelease(4, 0), macroEvent(1, 0, 9, 1)}));
  expectChanged(withoutDelays(threeMacros(), 0), threeMacros());
}

TEST(MacroRulesTest, PutRecordedEventsInPlaceOrBehind) {
  const PropertyList recorded = PropertyList::array({keyPress(9), keyRelease(9, 50)});
  expectChanged(withRecordedEvents(threeMacros(), 1, recorded, false), withEvents({keyPress(9), keyRelease(9, 50)}));
  Events all = threeEvents();
  all.insert(all.end(), {keyPress(9), keyRelease(9, 50)});
  expectChanged(withRecordedEvents(threeMacros(), 1, recorded, true), withEvents(all));
}

TEST(MacroRulesTest, KeepWhatElseStandsInTheSequence) {
  const PropertyList odd = macro("a", 0, threeEvents()).with("sequence", sequenceOf(threeEvents()).with("speed", 2));
  EXPECT_EQ(withoutEvents(bundleWithMacros({odd}), 0).value["Macros"].at(0),
            odd.with("sequence", sequenceOf({}).with("speed", 2)));
}

PropertyList replacement(const PropertyList& macroID, const PropertyList& name, const PropertyList& sequence) {
  return dictionary({{"macroID", macroID}, {"MacroName", name}, {"sequence", sequence}});
}

TEST(MacroRulesTest, ReplaceTheWholeSequenceOfAMacro) {
  const PropertyList sequence = sequenceOf({keyPress(5, 7), keyRelease(5, 8)}).with("speed", 2);
  expectChanged(withReplacedSequence(threeMacros(), replacement(1, "b", sequence)),
                bundleWithMacros({macro("a", 0), macro("b", 1).with("sequence", sequence), macro("c", 2)}));
  expectChanged(withReplacedSequence(threeMacros(), replacement(1, "b", sequenceOf({}))), withEvents({}));
}

TEST(MacroRulesTest, ReplaceNoSequenceOfAMacroWithAnotherName) {
  const PropertyList before = threeMacros();
  for (const char* name : {"a", "c", "B", ""}) {
    expectRefused(withReplacedSequence(before, replacement(1, name, sequenceOf({}))), ReturnStatus::OutOfRange,
                  "the macro has another name");
  }
  expectRefused(withReplacedSequence(before, replacement(1, 5, sequenceOf({}))), ReturnStatus::Malformed,
                "it tells no name of the macro");
  for (const std::int64_t number : {-1, 3}) {
    expectRefused(withReplacedSequence(before, replacement(number, "b", sequenceOf({}))), ReturnStatus::OutOfRange,
                  "there is no macro " + std::to_string(number));
  }
  expectRefused(withReplacedSequence(before, {}), ReturnStatus::Malformed, "it names no macro");
}

TEST(MacroRulesTest, ReplaceASequenceByTheRulesOfAnAddedMacro) {
  const PropertyList before = threeMacros();
  const auto replaced = [&](const PropertyList& sequence) {
    return withReplacedSequence(before, replacement(1, "b", sequence));
  };
  expectRefused(replaced({}), ReturnStatus::Malformed, "it brings no sequence");
  expectRefused(replaced(PropertyList::array()), ReturnStatus::Malformed, "it brings no sequence");
  expectRefused(replaced(dictionary({{"events", 5}})), ReturnStatus::Malformed, "its events are no array");
  expectRefused(replaced(sequenceOf({keyPress(4), macroEvent(1, 0, 9, 10)})), ReturnStatus::Malformed,
                "its event 2 is none");
  const Events most(maximumMacroEvents, keyPress(4));
  EXPECT_EQ(replaced(sequenceOf(most)).status, ReturnStatus::Done);
  const Events more(maximumMacroEvents + 1, keyPress(4));
  expectRefused(replaced(sequenceOf(more)), ReturnStatus::TooLarge, "the macro has too many events");
}

TEST(MacroRulesTest, RefusePositionsThatAreNone) {
  const PropertyList before = threeMacros();
  const auto everyOne = [&](const PropertyList& macroID, const PropertyList& row) {
    return std::vector<MacroResult>{eventAt(before, macroID, row), withReplacedEvent(before, macroID, row, keyPress(4)),
                                    withoutRow(before, macroID, row), withDelay(before, macroID, row, 5),
                                    withDelayOfRow(before, macroID, row)};
  };
  const auto ofMacro = [&](const PropertyList& macroID) {
    std::vector<MacroResult> results = everyOne(macroID, 0);
    results.insert(results.end(),
                   {macroAt(before, macroID), withRenamedMacro(before, macroID, "z"), withoutMacro(before, macroID),
                    withoutEvents(before, macroID), withoutDelays(before, macroID),
                    withRecordedEvents(before, macroID, PropertyList::array({keyPress(4)}), true)});
    return results;
  };
  for (const std::int64_t number : {std::int64_t{-1}, std::int64_t{3}, std::int64_t{1} << 32}) {
    for (const MacroResult& result : ofMacro(number)) {
      expectRefused(result, ReturnStatus::OutOfRange, "there is no macro " + std::to_string(number));
    }
  }
  for (const std::int64_t number : {std::int64_t{-1}, std::int64_t{5}, std::int64_t{1} << 33}) {
    for (const MacroResult& result : everyOne(1, number)) {
      expectRefused(result, ReturnStatus::OutOfRange, "there is no row " + std::to_string(number));
    }
  }
  for (const PropertyList& other : {PropertyList(), PropertyList("1"), PropertyList(true), PropertyList(1.0)}) {
    for (const MacroResult& result : ofMacro(other)) {
      expectRefused(result, ReturnStatus::Malformed, "it names no macro");
    }
    for (const MacroResult& result : everyOne(1, other)) {
      expectRefused(result, ReturnStatus::Malformed, "it names no row");
    }
  }
}

}  // namespace
}  // namespace vorn::engine::test
