#include "core-engine/play/OutputKeys.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace vorn::engine::test {
namespace {

using Events = std::vector<OutputEvent>;

constexpr OutputKey keyA{7, 4};
constexpr OutputKey keyB{7, 5};
constexpr OutputKey leftButton{9, 1};

class OutputKeysTest : public testing::Test {
 protected:
  Events take() { return std::exchange(events, {}); }

  Events events;
  OutputKeys output{[this](const OutputEvent& event) { events.push_back(event); }};
};

TEST_F(OutputKeysTest, AKeyGoesDownWithItsFirstHolderAndUpWithItsLast) {
  output.press(keyA);
  output.press(keyA);
  EXPECT_EQ(take(), (Events{{7, 4, 1}}));
  output.release(keyA);
  EXPECT_EQ(take(), Events());
  output.release(keyA);
  EXPECT_EQ(take(), (Events{{7, 4, 0}}));
}

TEST_F(OutputKeysTest, AKeyThatIsUpStaysUp) {
  output.release(keyA);
  EXPECT_EQ(take(), Events());
  output.press(keyA);
  EXPECT_EQ(take(), (Events{{7, 4, 1}}));
}

TEST_F(OutputKeysTest, TheWheelTurnsBySteps) {
  output.turnWheel(-2);
  EXPECT_EQ(take(), (Events{{1, 0x38, -2}}));
}

TEST_F(OutputKeysTest, AHoldCountsAKeyOnceAndLeavesThoseOfOthers) {
  KeyHold one(output);
  KeyHold other(output);
  one.press(keyA);
  one.press(keyA);
  other.press(keyA);
  other.release(keyB);
  EXPECT_EQ(take(), (Events{{7, 4, 1}}));
  one.release(keyA);
  one.release(keyA);
  EXPECT_EQ(take(), Events());
  other.release(keyA);
  EXPECT_EQ(take(), (Events{{7, 4, 0}}));
}

TEST_F(OutputKeysTest, TheEndOfAHoldReleasesItsKeysInReverse) {
  {
    KeyHold hold(output);
    hold.press(keyA);
    hold.press(leftButton);
    hold.press(keyB);
    hold.release(leftButton);
    take();
  }
  EXPECT_EQ(take(), (Events{{7, 5, 0}, {7, 4, 0}}));
}

TEST_F(OutputKeysTest, OnlyKeysAndButtonsOfTheirRangesAreKeys) {
  EXPECT_EQ(outputKey(7, 4), keyA);
  EXPECT_EQ(outputKey(7, 231), (OutputKey{7, 231}));
  EXPECT_EQ(outputKey(9, 1), leftButton);
  EXPECT_EQ(outputKey(9, 9), (OutputKey{9, 9}));
  const std::pair<std::int64_t, std::int64_t> others[] = {{7, 3},  {7, 232},           {9, 0}, {9, 10},
                                                          {12, 4}, {7, 0x1'0000'0004}, {0, 4}, {-7, 4}};
  for (const auto& [page, usage] : others) EXPECT_EQ(outputKey(page, usage), std::nullopt) << page << "/" << usage;
}

}  // namespace
}  // namespace vorn::engine::test
