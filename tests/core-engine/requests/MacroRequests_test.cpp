#include "core-engine/requests/MacroRequests.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/requests/MacroRequestsFixture.h"

namespace vorn::engine::test {
namespace {

using namespace requests;
using Lines = std::vector<std::string>;

class MacroRequestsTest : public MacroRequestsFixture {};

TEST_F(MacroRequestsTest, AddAMacro) {
  EXPECT_EQ(ask(MessageID::AddMacro, {{"MacroContents", macro("d", 0, twoEvents())}}), done);
  expectSettings(
      bundleWithMacros({macro("a", 0), macro("b", 1, twoEvents()), macro("c", 2), macro("d", 3, twoEvents())}));
}

TEST_F(MacroRequestsTest, RenameTheMacroThatTheContentsName) {
  EXPECT_EQ(ask(MessageID::RenameMacro,
                {{"MacroContents", PropertyList::dictionary({{"MacroName", "z"}, {"macroID", 1}})}, {"macroID", 0}}),
            done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("z", 1, twoEvents()), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, DeleteAMacro) {
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 0}}), done);
  expectSettings(bundleWithMacros({macro("b", 0, twoEvents()), macro("c", 1)}));
}

TEST_F(MacroRequestsTest, GiveTheLinesOfAMacro) {
  EXPECT_EQ(
      ask(MessageID::GetMacroDetails, {{"IndexOfMacroSequence", 1}}),
      done.with("MacroSequences", PropertyList::array({"Key Press A", "0.050 seconds delay\n", "Key Release A"})));
  EXPECT_EQ(ask(MessageID::GetMacroDetails, {{"IndexOfMacroSequence", 0}}),
            done.with("MacroSequences", PropertyList::array()));
  EXPECT_EQ(ask(MessageID::GetMacroDetails, {{"IndexOfMacroSequence", 3}}), status(ReturnStatus::OutOfRange));
  EXPECT_EQ(ask(MessageID::GetMacroDetails, {}), status(ReturnStatus::Malformed));
}

TEST_F(MacroRequestsTest, GiveAndReplaceTheEventOfARow) {
  const PropertyList answered = ask(MessageID::GetMacroEvent, {{"macroID", 1}, {"sequenceIdx", 2}});
  EXPECT_EQ(answered, done.with("sequenceInMacro", keyRelease(4, 50)));
  const PropertyList edited = answered["sequenceInMacro"].with("argument", 5);
  EXPECT_EQ(ask(MessageID::UpdateMacroEvent, {{"macroID", 1}, {"sequenceIdx", 2}, {"sequence", edited}}), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(4, 0), keyRelease(5, 50)}), macro("c", 2)}));
  EXPECT_EQ(ask(MessageID::GetMacroEvent, {{"macroID", 0}, {"sequenceIdx", 0}}), status(ReturnStatus::OutOfRange));
}

TEST_F(MacroRequestsTest, ReplaceTheSequenceOfTheMacroOfThatName) {
  const auto contents = [](const char* name) {
    return PropertyList::dictionary({{"macroID", 1}, {"MacroName", name}, {"sequence", sequenceOf({keyPress(9, 5)})}});
  };
  EXPECT_EQ(ask(MessageID::ReplaceMacroSequence, {{"MacroContents", contents("c")}}), status(ReturnStatus::OutOfRange));
  expectSettings(startBundle());
  EXPECT_EQ(ask(MessageID::ReplaceMacroSequence, {{"MacroContents", contents("b")}}), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(9, 5)}), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, ReplaceTheSequenceThatIsExpectedAndNoOtherOne) {
  const auto replace = [this](const PropertyList& expected, int macroID = 1, const char* name = "b") {
    const PropertyList contents = PropertyList::dictionary(
        {{"macroID", macroID}, {"MacroName", name}, {"sequence", sequenceOf({keyPress(9, 5)})}});
    return ask(MessageID::ReplaceMacroSequence, {{"MacroContents", contents}, {"ExpectedSequence", expected}});
  };
  const PropertyList now = startBundle()["Macros"].at(1)["sequence"];
  EXPECT_EQ(replace(1), status(ReturnStatus::Malformed));
  EXPECT_EQ(replace(sequenceOf({keyPress(4, 0), keyRelease(4, 51)})), status(ReturnStatus::Outdated));
  EXPECT_EQ(replace(sequenceOf({keyPress(4, 0)})), status(ReturnStatus::Outdated));
  EXPECT_EQ(replace(now.with("other", 1)), status(ReturnStatus::Outdated));
  EXPECT_EQ(replace(now, 1, "c"), status(ReturnStatus::OutOfRange));
  expectSettings(startBundle());
  EXPECT_EQ(replace(now), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(9, 5)}), macro("c", 2)}));
  EXPECT_EQ(replace(now), status(ReturnStatus::Outdated));
}

TEST_F(MacroRequestsTest, RemoveEventsByRow) {
  EXPECT_EQ(ask(MessageID::RemoveMacroEvent, {{"macroID", 1}, {"macroEventTableIndex", 1}}), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(4, 0), keyRelease(4, 0)}), macro("c", 2)}));
  EXPECT_EQ(ask(MessageID::RemoveMacroEvent, {{"macroID", 1}, {"macroEventTableIndex", 0}}), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyRelease(4, 0)}), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, RemoveAllEvents) {
  EXPECT_EQ(ask(MessageID::RemoveAllMacroEvents, {{"macroID", 1}}), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, SetTheDelayOfARow) {
  EXPECT_EQ(ask(MessageID::SetEventDelay, {{"macroID", 1}, {"sequenceIdx", 1}, {"delay", 1500}}), done);
  expectSettings(
      bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(4, 0), keyRelease(4, 1500)}), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, SetAllDelaysToThatOfARowOrToNone) {
  EXPECT_EQ(ask(MessageID::SetAllEventsDelay, {{"macroID", 1}, {"delay", 1}, {"HasNoDelay", false}}), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(4, 50), keyRelease(4, 50)}), macro("c", 2)}));
  EXPECT_EQ(ask(MessageID::SetAllEventsDelay, {{"macroID", 1}, {"delay", 0}, {"HasNoDelay", true}}), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(4, 0), keyRelease(4, 0)}), macro("c", 2)}));
  EXPECT_EQ(ask(MessageID::SetAllEventsDelay, {{"macroID", 1}, {"delay", 3}}), status(ReturnStatus::OutOfRange));
}

TEST_F(MacroRequestsTest, RefuseWhatIsOutOfRangeAndTellItOnce) {
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 3}}), status(ReturnStatus::OutOfRange));
  }
  EXPECT_EQ(ask(MessageID::DeleteMacro, {}), status(ReturnStatus::Malformed));
  EXPECT_EQ(ask(MessageID::AddMacro, {{"MacroContents", macro("", 0)}}), status(ReturnStatus::Malformed));
  EXPECT_EQ(startRecording(-1, false), status(ReturnStatus::OutOfRange));
  expectSettings(startBundle());
  EXPECT_EQ(lines, (Lines{"vorn-core-engine: client :1.10: cannot delete a macro: there is no macro 3",
                          "vorn-core-engine: client :1.10: cannot add a macro: the macro has no name",
                          "vorn-core-engine: client :1.10: cannot record a macro: there is no macro -1"}));
}

TEST_F(MacroRequestsTest, TellWhenTheDiskDoesNotTakeTheChange) {
  disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 0}}), status(ReturnStatus::NotSaved));
  EXPECT_EQ(store.bundle(), startBundle());
  disk.work();
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 0}}), done);
}

TEST(MacroRequestsSizeTest, RefuseAChangeThatLeavesSettingsTooLargeToBeSent) {
  const PropertyList large = startBundle().with("Ballast", PropertyList::data(Bytes(maximumSize - 1000)));
  TestParts parts(large);
  parts.ports.names = {client};
  RequestDispatcher dispatcher(parts.parts(), parts.ports);
  const PropertyList request =
      PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", client}, {"macroID", 1}});
  dispatcher.receive(
      {static_cast<std::int32_t>(MessageID::RemoveAllMacroEvents), encodeBinaryPropertyList(request).value(), ":1.7"});
  EXPECT_EQ(parts.ports.answers, (std::vector<MemoryPorts::Answer>{{client, 33, status(ReturnStatus::TooLarge)}}));
  EXPECT_EQ(parts.store.bundle(), large);
  EXPECT_EQ(parts.lines, Lines{"vorn-core-engine: client :1.7: cannot remove all events: the settings would be too "
                               "large to be sent"});
}

TEST(MacroRequestsWithoutSettingsTest, TakeTheFactorySettingsFirst) {
  TestParts without;
  without.disk.put(TestParts::ownDefaults, encodeBinaryPropertyList(defaultsFile(startBundle())).value());
  without.ports.names = {client};
  EngineParts parts = without.parts();
  RequestDispatcher dispatcher(parts, without.ports);
  const auto request = [&](PropertyList::Pair entry) {
    return encodeBinaryPropertyList(PropertyList::dictionary({{"ResponseMsgPortName", client}, std::move(entry)}))
        .value();
  };
  dispatcher.receive({22, request({"macroID", 1}), ":1.1"});
  EXPECT_EQ(without.ports.answers.back().body, status(ReturnStatus::Done));
  EXPECT_EQ(without.stored(), bundleWithMacros({macro("a", 0), macro("c", 1)}));
}

TEST(MacroRequestsWithoutSettingsTest, SayThatThereAreNone) {
  TestParts without;
  without.ports.names = {client};
  EngineParts parts = without.parts();
  RequestDispatcher dispatcher(parts, without.ports);
  const Bytes request =
      encodeBinaryPropertyList(
          PropertyList::dictionary({{"ResponseMsgPortName", client}, {"macroID", 0}, {"IndexOfMacroSequence", 0}}))
          .value();
  for (const std::int32_t message : {18, 22, 23, 24, 25, 27, 28, 32, 33, 34, 37, 101}) {
    dispatcher.receive({message, request, ":1.1"});
    EXPECT_EQ(without.ports.answers.back(), (MemoryPorts::Answer{client, message, status(ReturnStatus::NoSettings)}));
  }
}

}  // namespace
}  // namespace vorn::engine::test
