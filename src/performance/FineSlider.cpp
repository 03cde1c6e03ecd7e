#include "performance/FineSlider.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>

namespace skarn {

bool FineSlider::isOnHandle(const QPoint& point) const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).contains(point);
}

void FineSlider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !isOnHandle(event->position().toPoint())) {
    QSlider::mousePressEvent(event);
    return;
  }
  const int exact = value();
  const QSignalBlocker silence(this);
  QSlider::mousePressEvent(event);
  setValue(exact);
}

}  // namespace skarn
