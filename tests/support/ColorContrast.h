// How well one colour is read on another.
#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

namespace skarn::test {

inline double luminance(const QColor& color) {
  const auto linear = [](double share) {
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(static_cast<double>(color.redF())) + 0.7152 * linear(static_cast<double>(color.greenF())) +
         0.0722 * linear(static_cast<double>(color.blueF()));
}

// As the accessibility guidelines of the web define it: 1 to 21.
inline double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace skarn::test
