#include "performance/FineSlider.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>
#include <cstdlib>

namespace skarn {

bool FineSlider::isOnHandle(const QPoint& point) const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).contains(point);
}

bool FineSlider::event(QEvent* event) {
  if (event->type() == QEvent::WindowBlocked) setSliderDown(false);
  return QSlider::event(event);
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

void FineSlider::wheelEvent(QWheelEvent* event) {
  const QPoint turned = event->angleDelta();
  const int angle =
      (std::abs(turned.x()) > std::abs(turned.y()) ? turned.x() : turned.y()) * (event->inverted() ? -1 : 1);
  // A turn back does not have to undo the rest of the turn before.
  if ((angle > 0) != (mWheelAngle > 0)) mWheelAngle = 0;
  mWheelAngle += angle;
  const int notches = mWheelAngle / QWheelEvent::DefaultDeltasPerStep;
  mWheelAngle %= QWheelEvent::DefaultDeltasPerStep;
  const bool isPage = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
  setSliderPosition(sliderPosition() + notches * (isPage ? pageStep() : singleStep()));
  event->accept();
}

}  // namespace skarn
