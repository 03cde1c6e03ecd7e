#include "core-engine/requests/MacroRequests.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/TestParts.h"
#include "core-engine/requests/RequestDispatcher.h"
#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/MacroRules.h"
#include "model/MacroEvents.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;
using Entries = std::vector<PropertyList::Pair>;

const std::string client = "ClientPort";
const std::string otherClient = "OtherPort";

// The answer to a request without anything to read.
PropertyList status(ReturnStatus value) {
  return PropertyList::dictionary({{"ReturnStatus", static_cast<std::int32_t>(value)}});
}

std::vector<PropertyList> twoEvents() {
  return {keyPress(4, 0), keyRelease(4, 50)};
}

PropertyList startBundle() {
  return bundleWithMacros({macro("a", 0), macro("b", 1, twoEvents()), macro("c", 2)});
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

class MacroRequestsTest : public testing::Test, protected TestParts {
 protected:
  MacroRequestsTest() : TestParts(startBundle()) { ports.names = {client, otherClient}; }

  PropertyList ask(MessageID message, Entries entries, const std::string& port = client) {
    ports.answers.clear();
    entries.emplace_back("ProductID", 273);
    entries.emplace_back("ResponseMsgPortName", port);
    const Bytes data = encodeBinaryPropertyList(PropertyList::dictionary(std::move(entries))).value();
    dispatcher.receive({static_cast<std::int32_t>(message), data, senderOf(port)});
    if (ports.answers.size() != 1 || ports.answers[0].port != port) {
      ADD_FAILURE() << ports.answers.size() << " answers";
      return {};
    }
    return ports.answers[0].body;
  }
  PropertyList startRecording(std::int32_t macro, bool isAppending, const std::string& port = client) {
    return ask(MessageID::StartMacroRecording, {{"macroID", macro}, {"isAppendRecording", isAppending ? 1 : 0}}, port);
  }
  PropertyList stopRecording(const std::string& port = client) { return ask(MessageID::StopMacroRecording, {}, port); }
  PropertyList saveRecording(std::int32_t macro, bool isAppending, const std::string& port = client) {
    return ask(MessageID::SaveRecordedEvents, {{"macroID", macro}, {"isAppendRecording", isAppending ? 1 : 0}}, port);
  }
  // The connection that ask() comes from.
  static std::string senderOf(const std::string& port) { return ":1." + std::to_string(port.size()); }
  void releaseBy(const std::string& connection) {
    const Bytes data = encodeBinaryPropertyList(PropertyList::dictionary({{"ProductID", 273}})).value();
    dispatcher.receive({static_cast<std::int32_t>(MessageID::ReleaseDevice), data, connection});
  }
  void press(std::uint16_t usage) { recorder.note({7, usage, true}); }

  // The change is in force and on the disk.
  void expectSettings(const PropertyList& expected) {
    EXPECT_EQ(store.bundle(), expected) << store.bundle().description();
    EXPECT_EQ(stored(), expected);
  }

  const PropertyList done = status(ReturnStatus::Done);
  const PropertyList notRunning = status(ReturnStatus::NotRunning);
  RequestDispatcher dispatcher{parts(), ports};
};

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

TEST_F(MacroRequestsTest, RecordANewMacro) {
  EXPECT_EQ(startRecording(1, false), done);
  press(5);
  scheduler.advance(30ms);
  recorder.note({9, 1, true});
  EXPECT_EQ(stopRecording(), done);
  expectSettings(startBundle());
  EXPECT_EQ(saveRecording(1, false), done);
  expectSettings(
      bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(5, 0), macroEvent(1, 30, 9, 1)}), macro("c", 2)}));
  EXPECT_EQ(saveRecording(1, false), notRunning);
}

TEST_F(MacroRequestsTest, RecordBehindTheEventsOfAMacro) {
  EXPECT_EQ(startRecording(1, true), done);
  scheduler.advance(5s);
  press(5);
  EXPECT_EQ(stopRecording(), done);
  EXPECT_EQ(news.posted.back().userInfo["messagesArray"],
            PropertyList::array({"0.020 seconds delay\n", "Key Press B"}));
  EXPECT_EQ(saveRecording(1, true), done);
  expectSettings(bundleWithMacros(
      {macro("a", 0), macro("b", 1, {keyPress(4, 0), keyRelease(4, 50), keyPress(5, 20)}), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, RecordBehindNoEventsAsIntoANewMacro) {
  EXPECT_EQ(startRecording(0, true), done);
  scheduler.advance(5s);
  press(5);
  EXPECT_EQ(stopRecording(), done);
  EXPECT_EQ(news.posted.back().userInfo["messagesArray"], PropertyList::array({"Key Press B"}));
  EXPECT_EQ(saveRecording(0, true), done);
  expectSettings(bundleWithMacros({macro("a", 0, {keyPress(5, 0)}), macro("b", 1, twoEvents()), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, SaveARecordingThatStillRuns) {
  startRecording(0, false);
  press(5);
  EXPECT_EQ(saveRecording(0, false), done);
  EXPECT_FALSE(recorder.isRecording());
  expectSettings(bundleWithMacros({macro("a", 0, {keyPress(5)}), macro("b", 1, twoEvents()), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, SurviveStopsAndSavesWithoutARecording) {
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(saveRecording(0, false), notRunning);
  EXPECT_EQ(news.posted.size(), 0U);
  expectSettings(startBundle());
  EXPECT_EQ(lines, Lines());
}

TEST_F(MacroRequestsTest, KeepTheEventsOfAMacroWhenNothingWasTyped) {
  startRecording(1, false);
  stopRecording();
  EXPECT_EQ(saveRecording(1, false), notRunning);
  expectSettings(startBundle());
}

TEST_F(MacroRequestsTest, KeepTheRecordingsOfTwoClientsApart) {
  startRecording(0, false);
  press(4);
  EXPECT_EQ(startRecording(2, false, otherClient), done);
  press(5);
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(saveRecording(0, false), notRunning);
  press(6);
  EXPECT_EQ(stopRecording(otherClient), done);
  EXPECT_EQ(saveRecording(2, false, otherClient), done);
  expectSettings(
      bundleWithMacros({macro("a", 0), macro("b", 1, twoEvents()), macro("c", 2, {keyPress(5), keyPress(6)})}));
}

TEST_F(MacroRequestsTest, GoOnAfterTheClientOfARecordingVanished) {
  startRecording(0, false);
  ports.lose(client);
  for (std::size_t i = 0; i < maximumMacroEvents + 10; ++i) press(4);
  EXPECT_EQ(recorder.events().size(), maximumMacroEvents);
  EXPECT_EQ(startRecording(0, false, otherClient), done);
  press(5);
  EXPECT_EQ(saveRecording(0, false, otherClient), done);
  expectSettings(bundleWithMacros({macro("a", 0, {keyPress(5)}), macro("b", 1, twoEvents()), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, SaveARecordingOnlyToItsOwnMacro) {
  startRecording(1, false);
  press(5);
  stopRecording();
  EXPECT_EQ(saveRecording(0, false), status(ReturnStatus::OutOfRange));
  EXPECT_EQ(ask(MessageID::SaveRecordedEvents, {}), status(ReturnStatus::Malformed));
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 0}}, otherClient), done);
  // The macro that has the old position now is another one.
  EXPECT_EQ(saveRecording(1, false), status(ReturnStatus::OutOfRange));
  expectSettings(bundleWithMacros({macro("b", 0, twoEvents()), macro("c", 1)}));
  EXPECT_EQ(saveRecording(0, false), done);
  expectSettings(bundleWithMacros({macro("b", 0, {keyPress(5)}), macro("c", 1)}));
}

TEST_F(MacroRequestsTest, DropTheRecordingOfADeletedMacro) {
  startRecording(1, false);
  press(5);
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 1}}, otherClient), done);
  press(6);
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(saveRecording(1, false), notRunning);
  expectSettings(bundleWithMacros({macro("a", 0), macro("c", 1)}));
}

TEST_F(MacroRequestsTest, KeepARecordingWhoseMacroCouldNotBeDeleted) {
  startRecording(1, false);
  press(5);
  disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 1}}), status(ReturnStatus::NotSaved));
  EXPECT_EQ(saveRecording(1, false), status(ReturnStatus::NotSaved));
  disk.work();
  EXPECT_EQ(saveRecording(1, false), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(5)}), macro("c", 2)}));
}

TEST_F(MacroRequestsTest, RefuseToRecordBehindAFullMacro) {
  const std::vector<PropertyList> most(maximumMacroEvents, keyPress(4));
  EXPECT_EQ(ask(MessageID::AddMacro, {{"MacroContents", macro("d", 0, most)}}), done);
  EXPECT_EQ(startRecording(3, true), status(ReturnStatus::TooLarge));
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_EQ(startRecording(3, false), done);
}

TEST_F(MacroRequestsTest, SaveALargeRecording) {
  startRecording(0, false);
  for (int i = 0; i < 10'000; ++i) press(4);
  EXPECT_EQ(saveRecording(0, false), done);
  EXPECT_EQ(ask(MessageID::GetMacroDetails, {{"IndexOfMacroSequence", 0}})["MacroSequences"].size(), 19'999U);
}

TEST_F(MacroRequestsTest, CaptureSingleKeysForEitherPurpose) {
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), notRunning);
  EXPECT_EQ(ask(MessageID::StartSingleKeyRecording, {}), done);
  capture.note({7, 4, true});
  EXPECT_EQ(ask(MessageID::StartEditHID, {}, otherClient), done);
  capture.note({7, 5, true});
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), notRunning);
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}, otherClient), done);
  capture.note({7, 6, true});
  EXPECT_EQ(news.posted,
            (std::vector<RecordingNewsPort::News>{
                {"SingleKeyEvent273", PropertyList::dictionary({{"singleKey", 4}, {"singleKeyModif", 0}})},
                {"SingleKeyEvent1050", PropertyList::dictionary({{"singleKey", 5}, {"singleKeyModif", 0}})}}));
}

TEST_F(MacroRequestsTest, CaptureAndRecordAtTheSameTime) {
  startRecording(0, false);
  ask(MessageID::StartEditHID, {});
  recorder.note({7, 4, true});
  capture.note({7, 4, true});
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), done);
  EXPECT_TRUE(recorder.isRecording());
  EXPECT_EQ(saveRecording(0, false), done);
}

TEST_F(MacroRequestsTest, RecordAndCaptureForNobodyThatNamesNoPortOfItsOwn) {
  const std::string refusal = "vorn-core-engine: client :1.7: cannot ";
  for (const char* const port : {"", "VornCoreEngineMsgPort"}) {
    EngineParts all = parts();
    const Request request{":1.7", PropertyList::dictionary({{"macroID", 0}, {"ResponseMsgPortName", port}})};
    for (const RequestHandler handler :
         {RequestHandler(startMacroRecording), RequestHandler(startSingleKeyRecording), RequestHandler(startEditHID)}) {
      EXPECT_EQ(answerOf(handler, all, request), status(ReturnStatus::Malformed)) << port;
    }
  }
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_FALSE(capture.isCapturing());
  EXPECT_EQ(lines, (Lines{refusal + "record a macro: it names no port of a client",
                          refusal + "capture keys: it names no port of a client"}));
}

TEST_F(MacroRequestsTest, KeepACaptureThatRunsWhenAStartWithoutAPortIsRefused) {
  EXPECT_EQ(ask(MessageID::StartSingleKeyRecording, {}), done);
  EngineParts all = parts();
  EXPECT_EQ(answerOf(startEditHID, all, {":1.7", PropertyList::dictionary()}), status(ReturnStatus::Malformed));
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), done);
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

// A value that a request may hold anywhere: often usable, often not.
PropertyList anyValue(std::mt19937& random) {
  switch (random() % 8) {
    case 0:
      return "text";
    case 1:
      return PropertyList::dictionary();
    case 2:
      return random() % 2 == 0;
    case 3:
      return keyPress(static_cast<std::int32_t>(random() % 300), 20);
    case 4:
      return macro("m", 0, {keyPress(static_cast<std::int32_t>(random() % 250))});
    default:
      return static_cast<std::int32_t>(random() % 12) - 2;
  }
}

TEST(MacroRequestsRandomTest, KeepTheSettingsWholeWhateverIsAsked) {
  TestParts engine(startBundle());
  EngineParts parts = engine.parts();
  std::mt19937 random(20'231);
  const std::vector<RequestHandler> handlers = [] {
    std::vector<RequestHandler> result;
    for (const RequestKind& kind : requestKinds()) {
      const bool isAboutMacros =
          kind.messageID >= MessageID::StartMacroRecording && kind.messageID < MessageID::ReleaseDevice;
      if (isAboutMacros || kind.messageID == MessageID::ReplaceMacroSequence) result.push_back(kind.handler);
    }
    return result;
  }();
  ASSERT_EQ(handlers.size(), 17U);
  std::map<ReturnStatus, int> counts;
  for (int i = 0; i < 3'000; ++i) {
    PropertyList body = PropertyList::dictionary({{"ResponseMsgPortName", random() % 4 == 0 ? "A" : "B"}});
    for (const char* key : {"macroID", "MacroContents", "isAppendRecording", "IndexOfMacroSequence", "sequenceIdx",
                            "sequence", "macroEventTableIndex", "delay", "HasNoDelay"}) {
      if (random() % 8 != 0) body = body.with(key, anyValue(random));
    }
    if (random() % 3 == 0) {
      parts.recorder.note({7, static_cast<std::uint16_t>(random() % 300), random() % 2 == 0});
      engine.scheduler.advance(std::chrono::milliseconds(random() % 50));
    }
    const Answer answer = answerOf(handlers[random() % handlers.size()], parts, {":1.1", body});
    ASSERT_TRUE(answer && (*answer)["ReturnStatus"].isInteger());
    ++counts[static_cast<ReturnStatus>((*answer)["ReturnStatus"].toInt())];
    ASSERT_TRUE(isCompleteBundle(engine.store.bundle())) << i;
    const PropertyList& macros = engine.store.bundle()["Macros"];
    for (std::size_t position = 0; position < macros.size(); ++position) {
      const PropertyList& each = macros.elements()[position];
      ASSERT_EQ(each["macroID"], PropertyList(position)) << i;
      ASSERT_EQ(macroEvents(each), each["sequence"]["events"].arrayOrEmpty()) << i;
    }
  }
  EXPECT_EQ(engine.stored(), engine.store.bundle());
  for (const ReturnStatus each :
       {ReturnStatus::Done, ReturnStatus::Malformed, ReturnStatus::OutOfRange, ReturnStatus::NotRunning}) {
    EXPECT_GT(counts[each], 100) << static_cast<int>(each);
  }
}

TEST_F(MacroRequestsTest, EndARecordingAndACaptureWhenTheirClientReleasesTheMouse) {
  clients.add({senderOf(client), client, wiredProductID});
  startRecording(0, false);
  press(4);
  ask(MessageID::StartSingleKeyRecording, {});
  releaseBy(":1.99");
  EXPECT_TRUE(recorder.isRecording());
  EXPECT_TRUE(capture.isCapturing());
  releaseBy(senderOf(client));
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_FALSE(capture.isCapturing());
  news.posted.clear();
  press(5);
  EXPECT_TRUE(news.posted.empty());
  // What was recorded until then can still be saved.
  EXPECT_EQ(saveRecording(0, false), status(ReturnStatus::Done));
  EXPECT_EQ(store.bundle()["Macros"].at(0)["sequence"]["events"].size(), 1U);
}

TEST_F(MacroRequestsTest, EndWhatAClientBeganThatNeverRegistered) {
  startRecording(0, false);
  ask(MessageID::StartSingleKeyRecording, {});
  releaseBy(senderOf(otherClient));
  EXPECT_TRUE(recorder.isRecording());
  EXPECT_TRUE(capture.isCapturing());
  releaseBy(senderOf(client));
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), notRunning);
}

TEST_F(MacroRequestsTest, EndWhatAClientBeganThatWasPushedOutOfTheRegistry) {
  clients.add({senderOf(client), client, wiredProductID});
  for (std::size_t i = 0; i < ClientRegistry::maximumClients; ++i) {
    clients.add({":2." + std::to_string(i), "Port" + std::to_string(i), wiredProductID});
  }
  startRecording(0, false);
  ask(MessageID::StartEditHID, {});
  releaseBy(senderOf(client));
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), notRunning);
}

TEST_F(MacroRequestsTest, EndWhatAClientBeganByTheReleaseOfEitherOfItsConnections) {
  for (const std::string& connection : {senderOf(client), std::string(":1.98")}) {
    clients.add({senderOf(client), client, wiredProductID});
    startRecording(0, false);
    ask(MessageID::StartSingleKeyRecording, {});
    clients.add({":1.98", client, wiredProductID});
    releaseBy(connection);
    EXPECT_EQ(stopRecording(), notRunning) << connection;
    EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), notRunning) << connection;
  }
}

TEST_F(MacroRequestsTest, KeepWhatAnotherClientBeganInThePlaceOfTheOneThatReleases) {
  startRecording(0, false);
  ask(MessageID::StartSingleKeyRecording, {});
  startRecording(0, false, otherClient);
  ask(MessageID::StartEditHID, {}, otherClient);
  releaseBy(senderOf(client));
  EXPECT_EQ(stopRecording(otherClient), done);
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}, otherClient), done);
}

}  // namespace
}  // namespace vorn::engine::test
