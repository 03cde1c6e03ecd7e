#include "widgets/SegmentedControl.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

constexpr int segmentWidth = 36;
constexpr int verticalPadding = 6;

}  // namespace

SegmentedControl::SegmentedControl(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setMouseTracking(true);
}

void SegmentedControl::setSegmentCount(int count) {
  mCount = std::max(count, 0);
  mCurrent = 0;
  if (mSelected >= mCount) mSelected = -1;
  updateGeometry();
  update();
}

void SegmentedControl::setSegmentNames(const QStringList& names) {
  mNames = names;
}

QString SegmentedControl::segmentName(int segment) const {
  return mNames.value(segment, QString::number(segment + 1));
}

void SegmentedControl::selectSegment(int segment) {
  mSelected = segment >= 0 && segment < mCount ? segment : -1;
  update();
}

QRect SegmentedControl::segmentRect(int segment) const {
  const int left = width() * segment / std::max(mCount, 1);
  const int right = width() * (segment + 1) / std::max(mCount, 1);
  return QStyle::visualRect(layoutDirection(), rect(), QRect(left, 0, right - left, height()));
}

int SegmentedControl::segmentAt(const QPointF& position) const {
  for (int segment = 0; segment < mCount; ++segment) {
    if (segmentRect(segment).contains(position.toPoint())) return segment;
  }
  return -1;
}

QSize SegmentedControl::sizeHint() const {
  return {mCount * segmentWidth, fontMetrics().height() + 2 * verticalPadding};
}

bool SegmentedControl::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && isEnabled()) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const int segment = segmentAt(help->pos());
    if (segment >= 0) QToolTip::showText(help->globalPos(), segmentName(segment).toHtmlEscaped(), this);
    return true;
  }
  return QWidget::event(event);
}

void SegmentedControl::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath outline;
  outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), SkarnStyle::cornerRadius,
                         SkarnStyle::cornerRadius);
  painter.fillPath(outline, palette().brush(QPalette::Button));
  for (int segment = 0; segment < mCount; ++segment) {
    const QRect place = segmentRect(segment);
    const bool isSelected = segment == mSelected;
    const QColor ground = isSelected ? accentColor(palette()) : palette().color(QPalette::Midlight);
    painter.save();
    painter.setClipRect(place);
    if (isSelected || (segment == mHovered && isEnabled())) painter.fillPath(outline, ground);
    painter.restore();
    QFont digits = font();
    if (isSelected) digits.setWeight(QFont::Bold);
    painter.setFont(digits);
    painter.setPen(isSelected ? palette().color(QPalette::Base) : palette().color(QPalette::ButtonText));
    painter.drawText(place, Qt::AlignCenter, QString::number(segment + 1));
  }
  painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Dark : QPalette::Mid), 1));
  painter.drawPath(outline);
}

void SegmentedControl::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) mPressed = segmentAt(event->position());
}

void SegmentedControl::mouseMoveEvent(QMouseEvent* event) {
  const int segment = segmentAt(event->position());
  if (std::exchange(mHovered, segment) != segment) update();
}

void SegmentedControl::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int segment = segmentAt(event->position());
  if (segment >= 0 && std::exchange(mPressed, -1) == segment) choose(segment);
}

void SegmentedControl::leaveEvent(QEvent*) {
  mHovered = -1;
  update();
}

void SegmentedControl::keyPressEvent(QKeyEvent* event) {
  const int forward = isRightToLeft() ? -1 : 1;
  switch (event->key()) {
    case Qt::Key_Right:
      moveTo(mCurrent + forward);
      return;
    case Qt::Key_Left:
      moveTo(mCurrent - forward);
      return;
    case Qt::Key_Home:
      moveTo(0);
      return;
    case Qt::Key_End:
      moveTo(mCount - 1);
      return;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (mCurrent < mCount) choose(mCurrent);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void SegmentedControl::focusInEvent(QFocusEvent* event) {
  mCurrent = std::max(mSelected, 0);
  QWidget::focusInEvent(event);
}

void SegmentedControl::choose(int segment) {
  mCurrent = segment;
  selectSegment(segment);
  emit segmentChosen(segment);
}

void SegmentedControl::moveTo(int segment) {
  mCurrent = std::clamp(segment, 0, std::max(mCount - 1, 0));
  update();
}

}  // namespace skarn
