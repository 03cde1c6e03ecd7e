// Recordings and key captures of clients.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "core-engine/requests/MacroRequests.h"
#include "core-engine/requests/MacroRequestsFixture.h"
#include "model/MacroEvents.h"

namespace vorn::engine::test {
namespace {

using namespace requests;
using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

class MacroRequestsRecordingTest : public MacroRequestsFixture {};

TEST_F(MacroRequestsRecordingTest, RecordANewMacro) {
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

TEST_F(MacroRequestsRecordingTest, RecordBehindTheEventsOfAMacro) {
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

TEST_F(MacroRequestsRecordingTest, RecordBehindNoEventsAsIntoANewMacro) {
  EXPECT_EQ(startRecording(0, true), done);
  scheduler.advance(5s);
  press(5);
  EXPECT_EQ(stopRecording(), done);
  EXPECT_EQ(news.posted.back().userInfo["messagesArray"], PropertyList::array({"Key Press B"}));
  EXPECT_EQ(saveRecording(0, true), done);
  expectSettings(bundleWithMacros({macro("a", 0, {keyPress(5, 0)}), macro("b", 1, twoEvents()), macro("c", 2)}));
}

TEST_F(MacroRequestsRecordingTest, SaveARecordingThatStillRuns) {
  startRecording(0, false);
  press(5);
  EXPECT_EQ(saveRecording(0, false), done);
  EXPECT_FALSE(recorder.isRecording());
  expectSettings(bundleWithMacros({macro("a", 0, {keyPress(5)}), macro("b", 1, twoEvents()), macro("c", 2)}));
}

TEST_F(MacroRequestsRecordingTest, SurviveStopsAndSavesWithoutARecording) {
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(saveRecording(0, false), notRunning);
  EXPECT_EQ(news.posted.size(), 0U);
  expectSettings(startBundle());
  EXPECT_EQ(lines, Lines());
}

TEST_F(MacroRequestsRecordingTest, KeepTheEventsOfAMacroWhenNothingWasTyped) {
  startRecording(1, false);
  stopRecording();
  EXPECT_EQ(saveRecording(1, false), notRunning);
  expectSettings(startBundle());
}

TEST_F(MacroRequestsRecordingTest, KeepTheRecordingsOfTwoClientsApart) {
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

TEST_F(MacroRequestsRecordingTest, GoOnAfterTheClientOfARecordingVanished) {
  startRecording(0, false);
  ports.lose(client);
  for (std::size_t i = 0; i < maximumMacroEvents + 10; ++i) press(4);
  EXPECT_EQ(recorder.events().size(), maximumMacroEvents);
  EXPECT_EQ(startRecording(0, false, otherClient), done);
  press(5);
  EXPECT_EQ(saveRecording(0, false, otherClient), done);
  expectSettings(bundleWithMacros({macro("a", 0, {keyPress(5)}), macro("b", 1, twoEvents()), macro("c", 2)}));
}

TEST_F(MacroRequestsRecordingTest, SaveARecordingOnlyToItsOwnMacro) {
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

TEST_F(MacroRequestsRecordingTest, DropTheRecordingOfADeletedMacro) {
  startRecording(1, false);
  press(5);
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 1}}, otherClient), done);
  press(6);
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(saveRecording(1, false), notRunning);
  expectSettings(bundleWithMacros({macro("a", 0), macro("c", 1)}));
}

TEST_F(MacroRequestsRecordingTest, KeepARecordingWhoseMacroCouldNotBeDeleted) {
  startRecording(1, false);
  press(5);
  disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(ask(MessageID::DeleteMacro, {{"macroID", 1}}), status(ReturnStatus::NotSaved));
  EXPECT_EQ(saveRecording(1, false), status(ReturnStatus::NotSaved));
  disk.work();
  EXPECT_EQ(saveRecording(1, false), done);
  expectSettings(bundleWithMacros({macro("a", 0), macro("b", 1, {keyPress(5)}), macro("c", 2)}));
}

TEST_F(MacroRequestsRecordingTest, RefuseToRecordBehindAFullMacro) {
  const std::vector<PropertyList> most(maximumMacroEvents, keyPress(4));
  EXPECT_EQ(ask(MessageID::AddMacro, {{"MacroContents", macro("d", 0, most)}}), done);
  EXPECT_EQ(startRecording(3, true), status(ReturnStatus::TooLarge));
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_EQ(startRecording(3, false), done);
}

TEST_F(MacroRequestsRecordingTest, SaveALargeRecording) {
  startRecording(0, false);
  for (int i = 0; i < 10'000; ++i) press(4);
  EXPECT_EQ(saveRecording(0, false), done);
  EXPECT_EQ(ask(MessageID::GetMacroDetails, {{"IndexOfMacroSequence", 0}})["MacroSequences"].size(), 19'999U);
}

TEST_F(MacroRequestsRecordingTest, CaptureSingleKeysForEitherPurpose) {
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

TEST_F(MacroRequestsRecordingTest, CaptureAndRecordAtTheSameTime) {
  startRecording(0, false);
  ask(MessageID::StartEditHID, {});
  recorder.note({7, 4, true});
  capture.note({7, 4, true});
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), done);
  EXPECT_TRUE(recorder.isRecording());
  EXPECT_EQ(saveRecording(0, false), done);
}

TEST_F(MacroRequestsRecordingTest, RecordAndCaptureForNobodyThatNamesNoPortOfItsOwn) {
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

TEST_F(MacroRequestsRecordingTest, KeepACaptureThatRunsWhenAStartWithoutAPortIsRefused) {
  EXPECT_EQ(ask(MessageID::StartSingleKeyRecording, {}), done);
  EngineParts all = parts();
  EXPECT_EQ(answerOf(startEditHID, all, {":1.7", PropertyList::dictionary()}), status(ReturnStatus::Malformed));
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), done);
}

TEST_F(MacroRequestsRecordingTest, EndARecordingAndACaptureWhenTheirClientReleasesTheMouse) {
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

TEST_F(MacroRequestsRecordingTest, EndWhatAClientBeganThatNeverRegistered) {
  startRecording(0, false);
  ask(MessageID::StartSingleKeyRecording, {});
  releaseBy(senderOf(otherClient));
  EXPECT_TRUE(recorder.isRecording());
  EXPECT_TRUE(capture.isCapturing());
  releaseBy(senderOf(client));
  EXPECT_EQ(stopRecording(), notRunning);
  EXPECT_EQ(ask(MessageID::StopSingleKeyRecording, {}), notRunning);
}

TEST_F(MacroRequestsRecordingTest, EndWhatAClientBeganThatWasPushedOutOfTheRegistry) {
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

TEST_F(MacroRequestsRecordingTest, EndWhatAClientBeganByTheReleaseOfEitherOfItsConnections) {
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

TEST_F(MacroRequestsRecordingTest, KeepWhatAnotherClientBeganInThePlaceOfTheOneThatReleases) {
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
