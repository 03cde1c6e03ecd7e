#include "widgets/BusyIndicator.h"

#include <QPainter>
#include <QTimerEvent>
#include <algorithm>

namespace skarn {

namespace {

constexpr int stepMilliseconds = 60;
constexpr int stepsPerTurn = 16;
constexpr int leastMilliseconds = 400;
constexpr int arcDegrees = 270;

}  // namespace

BusyIndicator::BusyIndicator(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BusyIndicator::start() {
  mIsRunning = true;
  mIsSeen = true;
  mRunningSince.start();
  if (isVisible()) mTimer.start(stepMilliseconds, this);
  update();
}

void BusyIndicator::stop() {
  mIsRunning = false;
  endIfSeenEnough();
}

void BusyIndicator::turn() {
  if (!mIsRunning || !isVisible()) return;
  mStep = (mStep + 1) % stepsPerTurn;
  repaint();
}

void BusyIndicator::endIfSeenEnough() {
  if (mIsRunning || !mIsSeen || (mTimer.isActive() && !mRunningSince.hasExpired(leastMilliseconds))) return;
  mIsSeen = false;
  mTimer.stop();
  update();
}

void BusyIndicator::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (mIsRunning) mTimer.start(stepMilliseconds, this);
}

void BusyIndicator::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  mTimer.stop();
  endIfSeenEnough();
}

void BusyIndicator::timerEvent(QTimerEvent* event) {
  if (event->timerId() != mTimer.timerId()) return;
  mStep = (mStep + 1) % stepsPerTurn;
  update();
  endIfSeenEnough();
}

void BusyIndicator::paintEvent(QPaintEvent*) {
  if (!mIsSeen) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const qreal thickness = 2;
  const qreal side = std::min(width(), height()) - 2 * thickness;
  const QRectF circle((width() - side) / 2, (height() - side) / 2, side, side);
  painter.setPen(QPen(palette().color(QPalette::Mid), thickness));
  painter.drawEllipse(circle);
  painter.setPen(QPen(palette().color(QPalette::WindowText), thickness, Qt::SolidLine, Qt::RoundCap));
  // Angles of arcs count in sixteenths of a degree, against the clock.
  painter.drawArc(circle, -mStep * (360 * 16 / stepsPerTurn), (360 - arcDegrees) * 16);
}

}  // namespace skarn
