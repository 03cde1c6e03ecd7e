#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "core-engine/AssignmentFixture.h"
#include "model/Assignments.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;

PropertyList event(std::int32_t command, std::int32_t delay, std::int32_t argument, std::int32_t page = 7) {
  return PropertyList::dictionary({{"command", command}, {"delay", delay}, {"page", page}, {"argument", argument}});
}

// Presses A after 5 ms and lets it go 20 ms later.
PropertyList shortMacro() {
  return PropertyList::array({event(1, 5, 4), event(0, 20, 4)});
}

class MacroPlayerTest : public testing::Test {
 protected:
  void advance(Scheduler::Duration duration) { scheduler.advance(duration); }
  Outputs take() { return std::exchange(outputs, {}); }

  ManualScheduler scheduler;
  Outputs outputs;
  OutputKeys output{[this](const OutputEvent& sent) {
    outputs.push_back({std::chrono::duration_cast<std::chrono::milliseconds>(scheduler.now()).count(), sent});
  }};
  MacroPlayer player{scheduler, output};
};

TEST_F(MacroPlayerTest, PlaysOnceWithTrueDelays) {
  player.start("43", shortMacro(), 1);
  EXPECT_TRUE(player.isPlaying("43"));
  advance(1s);
  EXPECT_EQ(take(), (Outputs{{5, keyDown(4)}, {25, keyUp(4)}}));
  EXPECT_FALSE(player.isPlaying("43"));
  EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(MacroPlayerTest, PlaysWhatIsDueAtOnceAtOnce) {
  player.start("43", PropertyList::array({event(1, 0, 1, 9), event(0, 0, 1, 9)}), 1);
  EXPECT_EQ(take(), (Outputs{{0, buttonDown(1)}, {0, buttonUp(1)}}));
  EXPECT_FALSE(player.isPlaying("43"));
}

TEST_F(MacroPlayerTest, PassesOverWhatIsNoEventWithItsDelay) {
  player.start("43",
               PropertyList::array({7, event(2, 1000, 4), event(1, 5, 4), event(1, 1000, 300), "text", event(0, 20, 4),
                                    event(1, 1000, 0), PropertyList()}),
               2);
  advance(1s);
  EXPECT_EQ(take(), (Outputs{{5, keyDown(4)}, {25, keyUp(4)}, {30, keyDown(4)}, {50, keyUp(4)}}));
  EXPECT_FALSE(player.isPlaying("43"));
}

TEST_F(MacroPlayerTest, PlaysNothingWhereNothingIsAnEvent) {
  for (const PropertyList& events : {PropertyList(), PropertyList("text"), PropertyList::array(),
                                     PropertyList::array({7, event(2, 0, 4), event(1, 0, 300)})}) {
    player.start("43", events, repeatUntilReleased);
    EXPECT_FALSE(player.isPlaying("43"));
  }
  EXPECT_EQ(scheduler.pending(), 0U);
  EXPECT_EQ(take(), Outputs{});
}

TEST_F(MacroPlayerTest, RepeatsAsOftenAsItIsTold) {
  for (const std::int32_t count : {2, 10}) {
    player.start("43", shortMacro(), count);
    advance(10s);
    EXPECT_EQ(take().size(), static_cast<std::size_t>(2 * count));
  }
}

TEST_F(MacroPlayerTest, StartsARepetitionWhereTheRunBeforeItEnded) {
  player.start("43", shortMacro(), 2);
  advance(1s);
  EXPECT_EQ(take(), (Outputs{{5, keyDown(4)}, {25, keyUp(4)}, {30, keyDown(4)}, {50, keyUp(4)}}));
}

TEST_F(MacroPlayerTest, TakesAnUnknownRepeatModeForOnce) {
  for (const std::int32_t mode : {-1, 0, 11, 253, 256}) {
    player.start("43", shortMacro(), mode);
    advance(1s);
    EXPECT_EQ(take().size(), 2U);
  }
}

TEST_F(MacroPlayerTest, RepeatsWithoutEndUntilItIsStopped) {
  for (const std::int32_t mode : {repeatUntilPressedAgain, repeatUntilReleased}) {
    player.start("43", shortMacro(), mode);
    EXPECT_EQ(player.repeatModeOf("43"), mode);
    advance(25ms * 100);
    EXPECT_EQ(take().size(), 200U);
    player.stop("43");
    EXPECT_EQ(player.repeatModeOf("43"), 0);
    advance(1s);
    EXPECT_EQ(take(), Outputs());
    EXPECT_EQ(scheduler.pending(), 0U);
  }
}

TEST_F(MacroPlayerTest, LetsTheKeysGoThatItHoldsWhenItIsStopped) {
  player.start("43", shortMacro(), 1);
  advance(10ms);
  player.stop("43");
  EXPECT_EQ(take(), (Outputs{{5, keyDown(4)}, {10, keyUp(4)}}));
}

TEST_F(MacroPlayerTest, LetsTheKeysGoThatTheMacroForgetsAfterEveryRun) {
  player.start("43", PropertyList::array({event(1, 0, 225), event(1, 20, 4)}), 2);
  advance(1s);
  EXPECT_EQ(take(), (Outputs{{0, keyDown(225)},
                             {20, keyDown(4)},
                             {20, keyUp(4)},
                             {20, keyUp(225)},
                             {20, keyDown(225)},
                             {40, keyDown(4)},
                             {40, keyUp(4)},
                             {40, keyUp(225)}}));
}

TEST_F(MacroPlayerTest, LeavesKeysDownThatSomebodyElseHolds) {
  output.press({7, 4});
  player.start("43", shortMacro(), 1);
  advance(1s);
  EXPECT_EQ(take(), (Outputs{{0, keyDown(4)}}));
  output.release({7, 4});
  EXPECT_EQ(take(), (Outputs{{1000, keyUp(4)}}));
}

TEST_F(MacroPlayerTest, IgnoresTheReleaseOfAKeyThatItDoesNotHold) {
  player.start("43", PropertyList::array({event(0, 10, 4), event(1, 10, 4), event(1, 10, 4), event(0, 10, 4)}), 1);
  advance(1s);
  EXPECT_EQ(take(), (Outputs{{20, keyDown(4)}, {40, keyUp(4)}}));
}

TEST_F(MacroPlayerTest, PlaysNothingWhereThereAreNoEvents) {
  for (const PropertyList& events : {PropertyList(), PropertyList("text"), PropertyList::array()}) {
    player.start("43", events, repeatUntilPressedAgain);
    EXPECT_FALSE(player.isPlaying("43"));
  }
}

TEST_F(MacroPlayerTest, RestsBetweenTheRunsOfAMacroWithoutDelays) {
  player.start("43", PropertyList::array({event(1, 0, 4), event(0, 0, 4)}), repeatUntilReleased);
  advance(100ms);
  EXPECT_EQ(take().size(), 2U * 11U);
  player.stopAll();
}

TEST_F(MacroPlayerTest, PlaysTheMacrosOfSeveralControlsSideBySide) {
  player.start("43", PropertyList::array({event(1, 10, 4), event(0, 10, 4)}), 1);
  player.start("20", PropertyList::array({event(1, 15, 5), event(0, 10, 5)}), 1);
  advance(1s);
  EXPECT_EQ(take(), (Outputs{{10, keyDown(4)}, {15, keyDown(5)}, {20, keyUp(4)}, {25, keyUp(5)}}));
}

TEST_F(MacroPlayerTest, GoesOnWhenItsControlAsksForItAgain) {
  player.start("43", shortMacro(), 1);
  advance(10ms);
  player.start("43", shortMacro(), 10);
  advance(1s);
  EXPECT_EQ(take().size(), 2U);
}

// A machine that is late: the work happens when the test says so.
class LateScheduler : public Scheduler {
 public:
  Duration now() const override { return mNow; }
  Ticket after(Duration delay, std::function<void()> work) override {
    delays.push_back(delay / 1ms);
    mWork = std::move(work);
    return 1;
  }
  void cancel(Ticket) override { mWork = {}; }
  void pass(Duration duration) { mNow += duration; }
  // Lets the time pass and does the work that was asked for last.
  void wakeAfter(Duration duration) {
    pass(duration);
    const auto work = std::exchange(mWork, {});
    work();
  }

  std::vector<std::int64_t> delays;  // asked for so far, in milliseconds

 private:
  Duration mNow{};
  std::function<void()> mWork;
};

TEST(MacroPlayerLateMachineTest, MakesUpForTheDelayWithinARun) {
  LateScheduler scheduler;
  OutputEvents sent;
  OutputKeys output([&](const OutputEvent& each) { sent.push_back(each); });
  MacroPlayer player(scheduler, output);
  player.start("43", PropertyList::array({event(1, 10, 4), event(0, 10, 4), event(1, 10, 5), event(0, 10, 5)}), 1);
  scheduler.wakeAfter(13ms);
  EXPECT_EQ(sent, OutputEvents{keyDown(4)});
  scheduler.wakeAfter(18ms);
  EXPECT_EQ(sent, (OutputEvents{keyDown(4), keyUp(4), keyDown(5)}));
  EXPECT_EQ(scheduler.delays, (std::vector<std::int64_t>{10, 7, 9}));
}

TEST(MacroPlayerLateMachineTest, DoesNotMakeUpForRunsThatItMissed) {
  LateScheduler scheduler;
  OutputEvents sent;
  OutputKeys output([&](const OutputEvent& each) { sent.push_back(each); });
  MacroPlayer player(scheduler, output);
  player.start("43", shortMacro(), repeatUntilReleased);
  scheduler.wakeAfter(1h);
  EXPECT_EQ(sent, (OutputEvents{keyDown(4), keyUp(4)}));
  // A rest of 10 ms, then the delay of the first event.
  EXPECT_EQ(scheduler.delays, (std::vector<std::int64_t>{5, 15}));
}

// Every event takes this machine a millisecond to send.
class MacroPlayerSlowMachineTest : public testing::Test {
 protected:
  // Presses and releases A so often, without a delay.
  static PropertyList fastMacro(std::size_t taps) {
    std::vector<PropertyList> events;
    for (std::size_t tap = 0; tap < taps; ++tap) {
      events.push_back(event(1, 0, 4));
      events.push_back(event(0, 0, 4));
    }
    return PropertyList::array(std::move(events));
  }

  LateScheduler scheduler;
  std::size_t sent = 0;
  OutputKeys output{[this](const OutputEvent&) {
    ++sent;
    scheduler.pass(1ms);
  }};
  MacroPlayer player{scheduler, output};
};

TEST_F(MacroPlayerSlowMachineTest, LetsTheMachineRestAfterEveryRun) {
  for (const std::int32_t mode : {3, repeatUntilReleased}) {
    sent = 0;
    scheduler.delays.clear();
    player.start("43", fastMacro(50), mode);
    ASSERT_EQ(sent, 100U);
    scheduler.wakeAfter(10ms);
    ASSERT_EQ(sent, 200U);
    EXPECT_EQ(scheduler.delays, (std::vector<std::int64_t>{10, 10}));
    scheduler.wakeAfter(10ms);
    EXPECT_EQ(sent, 300U);
    EXPECT_EQ(player.isPlaying("43"), mode == repeatUntilReleased);
  }
}

TEST_F(MacroPlayerSlowMachineTest, RestsAlsoAfterARunThatTookLongerThanItsDelays) {
  const PropertyList slow = fastMacro(20);
  player.start("43", slow.replacing(0, slow.at(0).with("delay", 20)), 2);
  scheduler.wakeAfter(20ms);
  EXPECT_EQ(sent, 40U);
  EXPECT_EQ(scheduler.delays, (std::vector<std::int64_t>{20, 30}));
}

TEST_F(MacroPlayerSlowMachineTest, SendsALongRunInSeveralTurns) {
  player.start("43", fastMacro(300), 1);
  EXPECT_EQ(sent, 256U);
  scheduler.wakeAfter(0ms);
  EXPECT_EQ(sent, 512U);
  EXPECT_TRUE(player.isPlaying("43"));
  scheduler.wakeAfter(0ms);
  EXPECT_EQ(sent, 600U);
  EXPECT_FALSE(player.isPlaying("43"));
  EXPECT_EQ(scheduler.delays, (std::vector<std::int64_t>{0, 0}));
}

TEST_F(MacroPlayerSlowMachineTest, IsStoppedBetweenTheTurnsOfARun) {
  player.start("43", fastMacro(300), repeatUntilReleased);
  player.stop("43");
  EXPECT_FALSE(player.isPlaying("43"));
  EXPECT_EQ(sent, 256U);
}

class MacroPlayerAssignmentTest : public AssignmentFixture {
 protected:
  void SetUp() override {
    const PropertyList macro = PropertyList::dictionary(
        {{"MacroName", "A"}, {"sequence", PropertyList::dictionary({{"events", shortMacro()}})}});
    EXPECT_EQ(parts.store.apply(
                  [&](const PropertyList& bundle) { return bundle.with("Macros", PropertyList::array({macro})); }),
              SettingsStore::Outcome::Done);
  }
};

TEST_F(MacroPlayerAssignmentTest, PlaysOnAfterTheControlIsLetGo) {
  assign("43", assignment(10, 0, 1));
  tap("43");
  parts.scheduler.advance(1s);
  EXPECT_EQ(takeOutputs(), (Outputs{{5, keyDown(4)}, {25, keyUp(4)}}));
}

TEST_F(MacroPlayerAssignmentTest, EndsWithItsControlWhenItRepeatsUntilReleased) {
  assign("43", assignment(10, 0, 255));
  press("43");
  parts.scheduler.advance(35ms);
  release("43");
  parts.scheduler.advance(1s);
  EXPECT_EQ(takeOutputs(), (Outputs{{5, keyDown(4)}, {25, keyUp(4)}, {30, keyDown(4)}, {35, keyUp(4)}}));
}

TEST_F(MacroPlayerAssignmentTest, EndsAtTheNextPressWhenItRepeatsUntilPressedAgain) {
  assign("43", assignment(10, 0, 254));
  tap("43");
  parts.scheduler.advance(25ms);
  press("43");
  release("43");
  parts.scheduler.advance(1s);
  EXPECT_EQ(takeOutputs(), (Outputs{{5, keyDown(4)}, {25, keyUp(4)}}));
  tap("43");
  parts.scheduler.advance(25ms);
  EXPECT_EQ(takeOutputs().size(), 2U);
}

TEST_F(MacroPlayerAssignmentTest, EndsAtTheNextPressAlsoWhenTheControlDoesSomethingElseNow) {
  assign("43", assignment(10, 0, 254));
  tap("43");
  assign("43", assignment(1, 0));
  tap("43");
  parts.scheduler.advance(1s);
  EXPECT_EQ(takeEvents(), (OutputEvents{buttonDown(1), buttonUp(1)}));
}

TEST_F(MacroPlayerAssignmentTest, EndsWhenTheMouseIsUnplugged) {
  assign("43", assignment(10, 0, 254));
  tap("43");
  parts.device.setConnection(Device::Connection::Absent);
  EXPECT_EQ(parts.scheduler.pending(), 0U);
}

TEST_F(MacroPlayerAssignmentTest, PlaysNothingForAMacroThatIsNotThere) {
  for (const std::int32_t macro : {-1, 1, 1000}) {
    assign("43", assignment(10, macro, 1));
    tap("43");
    EXPECT_EQ(parts.scheduler.pending(), 0U);
  }
}

TEST_F(MacroPlayerAssignmentTest, LeavesOutWhatIsNoEvent) {
  const PropertyList events = PropertyList::array({event(2, 10, 4), PropertyList("text"), event(1, 10, 6)});
  EXPECT_EQ(parts.store.apply([&](const PropertyList& bundle) {
    const PropertyList sequence = PropertyList::dictionary({{"events", events}});
    return bundle.with("Macros", PropertyList::array({bundle["Macros"].at(0).with("sequence", sequence)}));
  }),
            SettingsStore::Outcome::Done);
  assign("43", assignment(10, 0, 1));
  tap("43");
  parts.scheduler.advance(1s);
  EXPECT_EQ(takeOutputs(), (Outputs{{10, keyDown(6)}, {10, keyUp(6)}}));
}

TEST_F(MacroPlayerAssignmentTest, PlaysWhatTheMacroWasWhenItBegan) {
  assign("43", assignment(10, 0, 1));
  tap("43");
  EXPECT_EQ(parts.store.apply([](const PropertyList& bundle) { return bundle.with("Macros", PropertyList::array()); }),
            SettingsStore::Outcome::Done);
  parts.scheduler.advance(1s);
  EXPECT_EQ(takeEvents(), (OutputEvents{keyDown(4), keyUp(4)}));
}

}  // namespace
}  // namespace vorn::engine::test
