#include "core-engine/record/MacroRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/TestParts.h"
#include "core-engine/rules/MacroRules.h"
#include "model/MacroEvents.h"
#include "model/eventParser.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using AllNews = std::vector<RecordingNewsPort::News>;
using Usages = std::vector<std::uint16_t>;

const std::string client = "ClientPort";

RecordingNewsPort::News batch(std::vector<PropertyList> lines, const std::string& port = client, int macro = 0) {
  return {"MacroSequence273", PropertyList::dictionary({{"messagesArray", PropertyList::array(std::move(lines))},
                                                        {"ResponseMsgPortName", port},
                                                        {"macroID", macro}})};
}

PropertyList concatenated(PropertyList array, const PropertyList& more) {
  for (const PropertyList& element : more.elements()) array = array.appending(element);
  return array;
}

class MacroRecorderTest : public testing::Test {
 protected:
  // A recording in the place of the macro's events.
  MacroRecorder::Task task(std::size_t room = 100) { return {client, 0, room, false, 0}; }
  // A recording behind the macro's events.
  MacroRecorder::Task continuingTask() { return {client, 0, 100, true, 20}; }

  void press(std::uint16_t usage, std::uint16_t page = 7) { recorder.note({page, usage, true}); }
  void release(std::uint16_t usage, std::uint16_t page = 7) { recorder.note({page, usage, false}); }
  // The lines of all batches.
  PropertyList lines() const {
    PropertyList all = PropertyList::array();
    for (const auto& each : news.posted) all = concatenated(all, each.userInfo["messagesArray"]);
    return all;
  }

  RecordingNewsPort news;
  ManualScheduler scheduler;
  MacroRecorder recorder{news, scheduler};
};

TEST_F(MacroRecorderTest, CatchesKeysAndButtonsWithTheTimesBetweenThem) {
  recorder.start(task());
  scheduler.advance(5s);
  press(4);
  scheduler.advance(120ms);
  release(4);
  press(1, 9);
  scheduler.advance(1500ms);
  release(1, 9);
  EXPECT_TRUE(recorder.stop(client));
  EXPECT_EQ(recorder.events(), PropertyList::array({macroEvent(1, 0, 7, 4), macroEvent(0, 120, 7, 4),
                                                    macroEvent(1, 0, 9, 1), macroEvent(0, 1500, 9, 1)}));
}

TEST_F(MacroRecorderTest, TellsAtOnceWhoseItIsUntilItIsDiscarded) {
  std::vector<std::string> clients;
  recorder.setClientHandler([&](const std::string& each) {
    EXPECT_EQ(each, recorder.client());
    clients.push_back(each);
  });
  recorder.start(task());
  EXPECT_EQ(clients, std::vector<std::string>{client});
  press(4);
  recorder.stop(client);
  EXPECT_EQ(clients, std::vector<std::string>{client});
  recorder.start({"Other", 0, 100, false, 0});
  recorder.discard();
  EXPECT_EQ(clients, (std::vector<std::string>{client, "Other", ""}));
}

TEST_F(MacroRecorderTest, DoesNotAddUpWhatDelaysAreCutBy) {
  recorder.start(task());
  for (int i = 0; i < 10; ++i) {
    press(4);
    scheduler.advance(1500us);
  }
  std::int64_t sum = 0;
  const PropertyList events = recorder.events();
  for (const PropertyList& event : events.elements()) sum += event["delay"].toInt64();
  EXPECT_EQ(sum, 13);
}

TEST_F(MacroRecorderTest, GoesByTheTimesOfKeysThatComeWithOne) {
  recorder.start(task());
  const auto type = [this](bool isPressed, std::chrono::milliseconds time) { recorder.note({7, 4, isPressed, time}); };
  type(true, 1'000'000ms);
  scheduler.advance(900ms);
  type(false, 1'000'050ms);
  // Of another clock.
  scheduler.advance(30ms);
  press(5);
  scheduler.advance(20ms);
  type(true, 1'000'060ms);
  // Backwards: the clock has begun anew.
  scheduler.advance(70ms);
  type(false, 5ms);
  EXPECT_EQ(recorder.events(), PropertyList::array({keyPress(4, 0), keyRelease(4, 50), keyPress(5, 30), keyPress(4, 20),
                                                    keyRelease(4, 70)}));
}

TEST_F(MacroRecorderTest, CutsDelaysThatNoMacroHolds) {
  recorder.start(task());
  press(4);
  scheduler.advance(24h);
  release(4);
  EXPECT_EQ(recorder.events(), PropertyList::array({keyPress(4, 0), keyRelease(4, 999'999)}));
}

TEST_F(MacroRecorderTest, TellsTheLinesInBatches) {
  recorder.start(task());
  press(4);
  scheduler.advance(10ms);
  release(4);
  EXPECT_EQ(news.posted, AllNews());
  scheduler.advance(30ms);
  EXPECT_EQ(news.posted, (AllNews{batch({"Key Press A", "0.010 seconds delay\n", "Key Release A"})}));
  press(2, 9);
  scheduler.advance(40ms);
  EXPECT_EQ(news.posted.back(), batch({"0.030 seconds delay\n", "Right Button down\n"}));
  release(2, 9);
  recorder.stop(client);
  EXPECT_EQ(news.posted.size(), 3U);
  EXPECT_EQ(news.posted.back(), batch({"0.040 seconds delay\n", "Right Button up\n"}));
  EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(MacroRecorderTest, KeepsTheOrderOfRowsOverBatchesOfAnyLength) {
  for (const bool isContinuing : {false, true}) {
    news.posted.clear();
    recorder.start(isContinuing ? continuingTask() : task());
    for (int i = 0; i < 50; ++i) {
      press(static_cast<std::uint16_t>(4 + i));
      scheduler.advance(std::chrono::milliseconds(i * 7 % 60));
    }
    recorder.stop(client);
    // What the macro and the table held before the recording, then what it added.
    PropertyList events = isContinuing ? PropertyList::array({keyPress(4)}) : PropertyList::array();
    PropertyList shown = isContinuing ? PropertyList::array({"Key Press A"}) : PropertyList::array();
    events = concatenated(events, recorder.events());
    shown = concatenated(shown, lines());
    EXPECT_EQ(shown, eventParser::getMessagesArray(events));
    EXPECT_GT(news.posted.size(), 10U);
  }
}

TEST_F(MacroRecorderTest, BeginsWithADelayWhenItContinuesAMacro) {
  recorder.start(continuingTask());
  scheduler.advance(5s);
  press(5);
  scheduler.advance(40ms);
  EXPECT_EQ(news.posted, (AllNews{batch({"0.020 seconds delay\n", "Key Press B"})}));
  EXPECT_EQ(recorder.events(), PropertyList::array({keyPress(5, 20)}));
}

TEST_F(MacroRecorderTest, TellsOneBatchWithTheStopEvenWithoutLines) {
  recorder.start(task());
  recorder.stop(client);
  EXPECT_EQ(news.posted, (AllNews{batch({})}));
  EXPECT_EQ(recorder.events(), PropertyList::array());
}

TEST_F(MacroRecorderTest, IgnoresWhatCannotStandInAMacro) {
  recorder.start(task());
  for (const std::uint16_t usage : Usages{0, 3, 232, 65535}) press(usage);
  for (const std::uint16_t button : Usages{0, 10}) press(button, 9);
  press(56, 1);
  EXPECT_EQ(recorder.events(), PropertyList::array());
  EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(MacroRecorderTest, IgnoresKeysBeforeItsStartAndAfterItsStop) {
  press(4);
  EXPECT_FALSE(recorder.isRecording());
  recorder.start(task());
  EXPECT_TRUE(recorder.isRecording());
  press(5);
  recorder.stop(client);
  EXPECT_FALSE(recorder.isRecording());
  press(6);
  scheduler.advance(1s);
  EXPECT_EQ(recorder.events(), PropertyList::array({keyPress(5)}));
  EXPECT_EQ(news.posted, (AllNews{batch({"Key Press B"})}));
}

TEST_F(MacroRecorderTest, StopsOnlyOnce) {
  EXPECT_FALSE(recorder.stop(client));
  EXPECT_FALSE(recorder.stop(""));
  recorder.start(task());
  EXPECT_TRUE(recorder.stop(client));
  EXPECT_FALSE(recorder.stop(client));
  EXPECT_EQ(news.posted.size(), 1U);
}

TEST_F(MacroRecorderTest, DropsWhatNobodySavedWhenItStartsAgain) {
  recorder.start(task());
  press(4);
  recorder.start(task());
  EXPECT_EQ(scheduler.pending(), 0U);
  press(5);
  recorder.stop(client);
  EXPECT_EQ(recorder.events(), PropertyList::array({keyPress(5)}));
  EXPECT_EQ(news.posted, (AllNews{batch({"Key Press B"})}));
}

TEST_F(MacroRecorderTest, BelongsToTheClientThatBeganLast) {
  EXPECT_FALSE(recorder.belongsTo(""));
  recorder.start(task());
  EXPECT_TRUE(recorder.belongsTo(client));
  recorder.start({"Other", 3, 100, false, 0});
  EXPECT_FALSE(recorder.belongsTo(client));
  EXPECT_FALSE(recorder.stop(client));
  press(4);
  EXPECT_TRUE(recorder.stop("Other"));
  EXPECT_TRUE(recorder.belongsTo("Other"));
  EXPECT_EQ(recorder.macro(), 3);
  recorder.discard();
  EXPECT_FALSE(recorder.belongsTo("Other"));
  EXPECT_EQ(recorder.macro(), -1);
}

TEST_F(MacroRecorderTest, TellsAtOnceThatAnotherClientHasTakenItOver) {
  for (const bool isStopped : {false, true}) {
    recorder.start(task());
    press(4);
    if (isStopped) recorder.stop(client);
    news.posted.clear();
    recorder.start({"Other", 3, 100, false, 0});
    EXPECT_EQ(news.posted, (AllNews{batch({}, "Other", 3)}));
    press(5);
    recorder.stop("Other");
    EXPECT_EQ(news.posted.back(), batch({"Key Press B"}, "Other", 3));
    recorder.discard();
  }
}

TEST_F(MacroRecorderTest, NotesNoMoreThanThereIsRoomFor) {
  recorder.start(task(2));
  press(4);
  release(4);
  press(5);
  recorder.stop(client);
  EXPECT_EQ(recorder.events(), PropertyList::array({keyPress(4), keyRelease(4)}));
  EXPECT_EQ(lines(), PropertyList::array({"Key Press A", "0.000 seconds delay\n", "Key Release A"}));
}

TEST_F(MacroRecorderTest, FollowsItsMacroWhenOthersAreDeleted) {
  recorder.start({client, 3, 100, false, 0});
  press(4);
  recorder.macrosMoved(4, 1, 0);
  EXPECT_EQ(recorder.macro(), 3);
  recorder.macrosMoved(0, 1, 0);
  EXPECT_EQ(recorder.macro(), 2);
  EXPECT_TRUE(recorder.isRecording());
  recorder.macrosMoved(2, 1, 0);
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_FALSE(recorder.belongsTo(client));
  EXPECT_EQ(recorder.events(), PropertyList::array());
  EXPECT_EQ(scheduler.pending(), 0U);
  recorder.macrosMoved(0, 1, 0);
  EXPECT_EQ(recorder.macro(), -1);
}

TEST_F(MacroRecorderTest, LeavesNoWorkBehind) {
  {
    MacroRecorder shortLived(news, scheduler);
    shortLived.start(task());
    shortLived.note({7, 4, true});
    EXPECT_EQ(scheduler.pending(), 1U);
  }
  EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(MacroRecorderTest, RecordsALargeMacroWhole) {
  recorder.start(task(maximumMacroEvents));
  for (std::size_t i = 0; i < 20'000; ++i) {
    if (i % 2 == 0)
      press(4);
    else
      release(4);
    scheduler.advance(5ms);
  }
  recorder.stop(client);
  EXPECT_EQ(recorder.events().size(), maximumMacroEvents);
  std::size_t count = 0;
  for (const auto& each : news.posted) count += each.userInfo["messagesArray"].size();
  EXPECT_EQ(count, 2 * maximumMacroEvents - 1);
}

}  // namespace
}  // namespace vorn::engine::test
