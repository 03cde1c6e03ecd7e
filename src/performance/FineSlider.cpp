#include "performance/FineSlider.h"

#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>
#include <cstdlib>

namespace skarn {

FineSlider::FineSlider(QWidget* parent) : QSlider(parent) {
  connect(this, &QSlider::actionTriggered, this, &FineSlider::keepToSteps);
}

int FineSlider::stepped(int step) const {
  const int grid = singleStep();
  const int below = minimum() + (value() - minimum()) / grid * grid;
  const int above = below == value() ? below : below + grid;
  return (step > 0 ? below : above) + step;
}

void FineSlider::keepToSteps(int action) {
  switch (action) {
    case SliderSingleStepAdd:
      return setSliderPosition(stepped(singleStep()));
    case SliderSingleStepSub:
      return setSliderPosition(stepped(-singleStep()));
    case SliderPageStepAdd:
      return setSliderPosition(stepped(pageStep()));
    case SliderPageStepSub:
      return setSliderPosition(stepped(-pageStep()));
    case SliderMove:
      if (mIsMovedByMouse) {
        const int steps = qRound(static_cast<double>(sliderPosition() - minimum()) / singleStep());
        setSliderPosition(minimum() + steps * singleStep());
      }
      return;
    default:
      return;
  }
}

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
  const QPoint at = event->position().toPoint();
  mPressed.reset();
  if (event->button() != Qt::LeftButton || !isOnHandle(at)) {
    const QScopedValueRollback moving(mIsMovedByMouse, true);
    QSlider::mousePressEvent(event);
    return;
  }
  mPressed = at;
  const int exact = value();
  const QSignalBlocker silence(this);
  QSlider::mousePressEvent(event);
  setValue(exact);
}

void FineSlider::mouseMoveEvent(QMouseEvent* event) {
  if (mPressed == event->position().toPoint()) return;
  mPressed.reset();
  const QScopedValueRollback moving(mIsMovedByMouse, true);
  QSlider::mouseMoveEvent(event);
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
  if (notches != 0) setSliderPosition(stepped(notches * (isPage ? pageStep() : singleStep())));
  event->accept();
}

}  // namespace skarn
