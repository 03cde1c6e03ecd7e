// A slider with more values than pixels. A press on its handle takes hold of it and leaves the value exactly as it is,
// where a plain slider would round it to the pixel under the pointer.
#pragma once

#include <QSlider>

namespace skarn {

class FineSlider : public QSlider {
  Q_OBJECT

 public:
  using QSlider::QSlider;

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  bool isOnHandle(const QPoint& point) const;
};

}  // namespace skarn
