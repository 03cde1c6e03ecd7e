// Makes a mouse of one resolution move the pointer like one of another, to the count: each axis tells as many counts as
// its motion so far makes in whole, and carries the rest. Pure; one thread at a time.
#pragma once

#include <cstdint>

#include "mice/MouseIdentity.h"

namespace vorn::engine {

// In counts per inch. Other values than 1 to maximumResolution scale nothing.
struct AxisScale {
  std::int32_t wanted = 0;
  std::int32_t own = 0;  // of the mouse
  bool isIdentity() const noexcept;
  friend bool operator==(const AxisScale&, const AxisScale&) = default;
};

struct MotionScale {
  AxisScale x;
  AxisScale y;
  bool isIdentity() const noexcept { return x.isIdentity() && y.isIdentity(); }
  friend bool operator==(const MotionScale&, const MotionScale&) = default;
};

class MotionScaler {
 public:
  // The rest of less than one count is kept when only the wanted resolution changes, else it is dropped.
  void setScale(const MotionScale& scale) noexcept;

  // What to tell for so many counts of the mouse (EV_REL, REL_X and REL_Y). The sum of what was told since the own
  // resolution was set is the sum of counts * wanted / own, without its fraction. What is more than a kernel event
  // holds is cut off.
  std::int32_t scaledX(std::int32_t counts) noexcept { return mX.scaled(counts); }
  std::int32_t scaledY(std::int32_t counts) noexcept { return mY.scaled(counts); }

 private:
  class Axis {
   public:
    void setScale(const AxisScale& scale) noexcept;
    std::int32_t scaled(std::int32_t counts) noexcept;

   private:
    AxisScale mScale;
    std::int64_t mMoved = 0;  // in counts of the wanted resolution, times mScale.own
    std::int64_t mTold = 0;   // mMoved / mScale.own
  };

  Axis mX;
  Axis mY;
};

}  // namespace vorn::engine
