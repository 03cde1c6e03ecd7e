// A slider with more values than pixels. A press on its handle takes hold of it and leaves the value exactly as it is,
// where a plain slider would round it to the pixel under the pointer. A notch of the wheel is a single step, with Ctrl
// or Shift a page step. A sheet or an alert that opens over the window ends a drag where it is: the release of the
// mouse would never arrive.
#pragma once

#include <QSlider>

namespace skarn {

class FineSlider : public QSlider {
  Q_OBJECT

 public:
  using QSlider::QSlider;

 protected:
  bool event(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool isOnHandle(const QPoint& point) const;

  int mWheelAngle = 0;  // turned since the last whole notch, in eighths of a degree
};

}  // namespace skarn
