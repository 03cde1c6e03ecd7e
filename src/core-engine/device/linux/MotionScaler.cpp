#include "core-engine/device/linux/MotionScaler.h"

#include <algorithm>
#include <limits>

namespace vorn::engine {

namespace {

// Far more than a mouse ever moves, and far from what does not fit.
constexpr std::int64_t maximumMoved = std::int64_t{1} << 60;

constexpr bool isResolution(std::int32_t value) {
  return value >= 1 && value <= maximumResolution;
}

}  // namespace

bool AxisScale::isIdentity() const noexcept {
  return wanted == own || !isResolution(wanted) || !isResolution(own);
}

void MotionScaler::setScale(const MotionScale& scale) noexcept {
  mX.setScale(scale.x);
  mY.setScale(scale.y);
}

void MotionScaler::Axis::setScale(const AxisScale& scale) noexcept {
  if (scale == mScale) return;
  if (scale.own != mScale.own || scale.isIdentity()) mMoved = mTold = 0;
  mScale = scale;
}

std::int32_t MotionScaler::Axis::scaled(std::int32_t counts) noexcept {
  if (mScale.isIdentity()) return counts;
  mMoved += std::int64_t{counts} * mScale.wanted;
  const std::int64_t due = mMoved / mScale.own - mTold;
  using Limits = std::numeric_limits<std::int32_t>;
  const auto told = static_cast<std::int32_t>(std::clamp<std::int64_t>(due, Limits::min(), Limits::max()));
  const bool isBeyond = told != due || mMoved > maximumMoved || mMoved < -maximumMoved;
  if (isBeyond) mMoved %= mScale.own;
  mTold = isBeyond ? 0 : mTold + due;
  return told;
}

}  // namespace vorn::engine
