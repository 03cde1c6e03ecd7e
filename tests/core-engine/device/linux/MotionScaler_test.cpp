#include "core-engine/device/linux/MotionScaler.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "core-engine/device/linux/KernelEvents.h"

namespace vorn::engine::test {
namespace {

MotionScale both(std::int32_t wanted, std::int32_t own) {
  return {{wanted, own}, {wanted, own}};
}

std::vector<std::int32_t> scaledX(MotionScaler& scaler, const std::vector<std::int32_t>& counts) {
  std::vector<std::int32_t> told;
  for (const std::int32_t each : counts) told.push_back(scaler.scaledX(each));
  return told;
}

TEST(MotionScalerTest, CarriesWhatIsLessThanACount) {
  MotionScaler scaler;
  scaler.setScale(both(400, 800));
  EXPECT_EQ(scaledX(scaler, {1, 1, 1, 3, 2}), (std::vector{0, 1, 0, 2, 1}));
  scaler.setScale(both(1200, 800));
  EXPECT_EQ(scaledX(scaler, {1, 1, 1}), (std::vector{1, 2, 1}));
}

TEST(MotionScalerTest, MovesTheOtherWayByTheSame) {
  MotionScaler scaler;
  scaler.setScale(both(500, 800));
  const std::vector<std::int32_t> there = scaledX(scaler, {1, 2, 3, 4, 5});
  EXPECT_EQ(there, (std::vector{0, 1, 2, 3, 3}));
  EXPECT_EQ(scaledX(scaler, {-5, -4, -3, -2, -1}), (std::vector{-3, -3, -2, -1, 0}));
  EXPECT_EQ(scaledX(scaler, {-1, -2, -3, -4, -5}), (std::vector{0, -1, -2, -3, -3}));
}

TEST(MotionScalerTest, ScalesTheAxesApart) {
  MotionScaler scaler;
  scaler.setScale({{1600, 800}, {200, 800}});
  EXPECT_EQ(scaler.scaledX(3), 6);
  EXPECT_EQ(scaler.scaledY(3), 0);
  EXPECT_EQ(scaler.scaledY(1), 1);
  EXPECT_EQ(scaler.scaledX(-1), -2);
}

TEST(MotionScalerTest, ScalesNothingWithoutTwoDifferentResolutions) {
  constexpr std::int32_t farthest = std::numeric_limits<std::int32_t>::min();
  for (const AxisScale& scale :
       {AxisScale{}, AxisScale{800, 800}, AxisScale{0, 800}, AxisScale{800, 0}, AxisScale{-1, 800}, AxisScale{800, -1},
        AxisScale{maximumResolution + 1, 800}, AxisScale{800, maximumResolution + 1}}) {
    EXPECT_TRUE(scale.isIdentity()) << scale.wanted << "/" << scale.own;
    EXPECT_FALSE((MotionScale{scale, {400, 800}}.isIdentity()));
    MotionScaler scaler;
    scaler.setScale({scale, {400, 800}});
    EXPECT_EQ(scaledX(scaler, {7, -7, farthest}), (std::vector{7, -7, farthest}));
    EXPECT_EQ(scaler.scaledY(7), 3);
  }
  EXPECT_FALSE((AxisScale{1, maximumResolution}.isIdentity()));
}

TEST(MotionScalerTest, KeepsTheRestWhileTheMouseStaysTheSame) {
  MotionScaler scaler;
  scaler.setScale(both(400, 800));
  EXPECT_EQ(scaler.scaledX(1), 0);
  scaler.setScale(both(200, 800));
  EXPECT_EQ(scaler.scaledX(2), 1);
  EXPECT_EQ(scaler.scaledX(3), 0);
  scaler.setScale(both(200, 400));
  EXPECT_EQ(scaler.scaledX(1), 0);
  scaler.setScale(both(400, 400));
  scaler.setScale(both(200, 400));
  EXPECT_EQ(scaler.scaledX(1), 0);
  EXPECT_EQ(scaler.scaledX(1), 1);
}

TEST(MotionScalerTest, CutsOffWhatNoEventHolds) {
  using Limits = std::numeric_limits<std::int32_t>;
  MotionScaler scaler;
  scaler.setScale({{maximumResolution, 1}, {3, 2}});
  for (int round = 0; round < 100'000; ++round) ASSERT_EQ(scaler.scaledX(Limits::max()), Limits::max());
  for (int round = 0; round < 100'000; ++round) ASSERT_EQ(scaler.scaledX(Limits::min()), Limits::min());
  EXPECT_EQ(scaler.scaledX(-1), -maximumResolution);
  EXPECT_EQ(scaler.scaledY(1), 1);
  EXPECT_EQ(scaler.scaledY(Limits::max()), Limits::max());
}

TEST(MotionScalerTest, TellsTheExactProductOverThousandsOfReports) {
  Random random{15};
  for (const std::int32_t own : {400, 800, 1000, 1600, 3200, 1, maximumResolution}) {
    const auto scaleOfAxis = [&] {
      const std::int32_t wanted = random.number(2, 20'000);
      return AxisScale{wanted == own ? wanted - 1 : wanted, own};
    };
    MotionScaler scaler;
    MotionScale scale;
    std::int64_t movedX = 0, movedY = 0, toldX = 0, toldY = 0;
    for (int report = 0; report < 10'000; ++report) {
      if (report % 400 == 0) scale = {scaleOfAxis(), scaleOfAxis()};
      scaler.setScale(scale);
      const int x = random.number(-127, 127);
      const int y = random.number(-32'767, 32'767);
      movedX += std::int64_t{x} * scale.x.wanted;
      movedY += std::int64_t{y} * scale.y.wanted;
      toldX += scaler.scaledX(x);
      toldY += scaler.scaledY(y);
      ASSERT_EQ(toldX, movedX / own) << own << ", report " << report;
      ASSERT_EQ(toldY, movedY / own) << own << ", report " << report;
    }
  }
}

}  // namespace
}  // namespace vorn::engine::test
