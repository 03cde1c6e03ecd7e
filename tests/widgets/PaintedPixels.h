// What is seen of a widget that is painted offscreen.
#pragma once

#include <QColor>
#include <QImage>
#include <QPair>
#include <QWidget>

namespace skarn::test {

inline bool shows(QWidget& widget, const QColor& color) {
  const QImage picture = widget.grab().toImage();
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (QColor(picture.pixel(x, y)) == color) return true;
    }
  }
  return false;
}

// The columns of pixels from the first to the last that is not all ground, in a picture or a part of it.
inline QPair<int, int> inkColumns(const QImage& picture, const QRect& part) {
  const QRgb ground = picture.pixel(part.topLeft());
  QPair<int, int> ink(-1, -1);
  for (int x = part.left(); x <= part.right(); ++x) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
      if (picture.pixel(x, y) == ground) continue;
      if (ink.first < 0) ink.first = x;
      ink.second = x;
    }
  }
  return ink;
}

}  // namespace skarn::test
