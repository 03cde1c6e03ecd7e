#include "core-engine/device/linux/PressListener.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorn::engine {
namespace {

class PressListenerTest : public testing::Test {
 protected:
  using Events = std::vector<KernelEvent>;

  Events listen(const Events& report) {
    return mListener.listen(report, [this](const EventSource& source) { mHeard.push_back(source); });
  }
  Events pass(const Events& report) { return mListener.listen(report, {}); }

  PressListener mListener{"00 Acme", {true, false}};
  std::vector<EventSource> mHeard;
};

TEST_F(PressListenerTest, AKeyIsHeardOnceForEachPressAndKeptWithItsScanCode) {
  EXPECT_EQ(listen({{EV_MSC, MSC_SCAN, 7}, {EV_KEY, KEY_A, 1}}), Events{});
  EXPECT_FALSE(mListener.isAtRest());
  EXPECT_EQ(listen({{EV_KEY, KEY_A, 2}}), Events{});
  EXPECT_EQ(listen({{EV_MSC, MSC_SCAN, 7}, {EV_KEY, KEY_A, 0}}), Events{});
  EXPECT_TRUE(mListener.isAtRest());
  EXPECT_EQ(mHeard, (std::vector<EventSource>{{"00 Acme", EV_KEY, KEY_A, 0}}));
}

TEST_F(PressListenerTest, TheButtonsForTheWindowAndMotionStayWhatTheyAre) {
  const Events report{{EV_KEY, BTN_LEFT, 1}, {EV_KEY, BTN_RIGHT, 1}, {EV_REL, REL_X, 5}};
  EXPECT_EQ(listen(report), report);
  EXPECT_EQ(listen({{EV_KEY, BTN_SIDE, 1}, {EV_REL, REL_Y, 2}}), (Events{{EV_REL, REL_Y, 2}}));
  EXPECT_EQ(mHeard, (std::vector<EventSource>{{"00 Acme", EV_KEY, BTN_SIDE, 0}}));
}

TEST_F(PressListenerTest, AWheelIsHeardStepByStepInBothKinds) {
  EXPECT_EQ(listen({{EV_REL, REL_WHEEL_HI_RES, 60}}), Events{});
  EXPECT_EQ(mHeard.size(), 0u);
  EXPECT_EQ(listen({{EV_REL, REL_WHEEL_HI_RES, 60}, {EV_REL, REL_WHEEL, 1}}), Events{});
  EXPECT_EQ(listen({{EV_REL, REL_HWHEEL, -2}}), Events{});
  const EventSource up{"00 Acme", EV_REL, REL_WHEEL, 1};
  const EventSource left{"00 Acme", EV_REL, REL_HWHEEL, -1};
  EXPECT_EQ(mHeard, (std::vector<EventSource>{up, left, left}));
}

TEST_F(PressListenerTest, AReleaseOfWhatWasHeardIsKeptAlsoAfterTheEnd) {
  listen({{EV_KEY, KEY_A, 1}});
  EXPECT_EQ(pass({{EV_KEY, KEY_A, 0}, {EV_KEY, KEY_B, 1}}), (Events{{EV_KEY, KEY_B, 1}}));
  EXPECT_TRUE(mListener.isAtRest());
  EXPECT_EQ(pass({{EV_KEY, KEY_A, 1}}), (Events{{EV_KEY, KEY_A, 1}}));
}

TEST_F(PressListenerTest, AReleaseOfWhatWasPressedBeforeIsLeft) {
  EXPECT_EQ(listen({{EV_KEY, KEY_A, 0}}), (Events{{EV_KEY, KEY_A, 0}}));
  EXPECT_EQ(mHeard.size(), 0u);
}

TEST_F(PressListenerTest, AHatIsHeardWhenItLeavesTheMiddle) {
  EXPECT_EQ(listen({{EV_ABS, ABS_HAT0X, -1}}), Events{});
  EXPECT_EQ(listen({{EV_ABS, ABS_HAT0X, 0}}), Events{});
  EXPECT_EQ(mHeard, (std::vector<EventSource>{{"00 Acme", EV_ABS, ABS_HAT0X, -1}}));
}

}  // namespace
}  // namespace vorn::engine
