#include "widgets/SegmentedControl.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "widgets/Palettes.h"
#include "widgets/PlainToolTip.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

constexpr int segmentWidth = 36;
constexpr int verticalPadding = 6;
constexpr int separatorInset = 7;
constexpr int focusInset = 3;
constexpr qreal dotRadius = 1.75;
constexpr qreal dotHeight = 4.5;  // of its middle above the lower edge

// The accent reads best under the darker ink of either palette.
QColor inkOnAccent(const QPalette& palette) {
  return palette.color(isDark(palette) ? QPalette::Base : QPalette::Text);
}

}  // namespace

// Seen by screen readers only; neither drawn nor pointed at: the control does both for all its segments.
class SegmentedControl::Segment : public QRadioButton {
 public:
  explicit Segment(QWidget* parent) : QRadioButton(parent) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

  // Silently. One of an exclusive group cannot be unchecked alone.
  void mark(bool isSelected) {
    const QSignalBlocker blocker(this);
    setAutoExclusive(false);
    setChecked(isSelected);
    setAutoExclusive(true);
  }

 protected:
  void paintEvent(QPaintEvent*) override {}
};

// The focus is the control's; a segment tells that the keyboard has reached it.
class SegmentedControl::AccessibleSegment : public QAccessibleWidget {
 public:
  explicit AccessibleSegment(Segment* segment) : QAccessibleWidget(segment, QAccessible::RadioButton) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    const auto& control = static_cast<const SegmentedControl&>(*segment().parentWidget());
    const auto place = std::ranges::find(control.mSegments, &segment()) - control.mSegments.begin();
    state.checkable = true;
    state.checked = segment().isChecked();
    state.focusable = segment().isEnabled();
    state.focused = control.hasFocus() && place == control.mCurrent;
    return state;
  }
  QStringList actionNames() const override { return isEnabled() ? QStringList{toggleAction()} : QStringList(); }
  void doAction(const QString& action) override {
    if (action == toggleAction() && isEnabled()) segment().setChecked(true);
  }

 private:
  Segment& segment() const { return *static_cast<Segment*>(widget()); }
  bool isEnabled() const { return widget()->isEnabled(); }
};

QAccessibleInterface* SegmentedControl::makeAccessible(const QString&, QObject* object) {
  if (auto* control = qobject_cast<SegmentedControl*>(object))
    return new QAccessibleWidget(control, QAccessible::Grouping);
  if (auto* segment = dynamic_cast<Segment*>(object)) return new AccessibleSegment(segment);
  return nullptr;
}

SegmentedControl::SegmentedControl(QWidget* parent) : QWidget(parent) {
  QAccessible::installFactory(&SegmentedControl::makeAccessible);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setMouseTracking(true);
}

void SegmentedControl::setSegmentCount(int count) {
  const std::size_t wanted = static_cast<std::size_t>(std::max(count, 0));
  while (mSegments.size() > wanted) {
    delete mSegments.back();
    mSegments.pop_back();
  }
  while (mSegments.size() < wanted) {
    const int segment = segmentCount();
    auto* button = new Segment(this);
    button->setAccessibleName(QString::number(segment + 1));
    connect(button, &QAbstractButton::toggled, this, [this, segment](bool isChecked) {
      if (isChecked) choose(segment);
    });
    mSegments.push_back(button);
  }
  mCurrent = 0;
  selectSegment(mSelected);
  updateGeometry();
}

void SegmentedControl::setSegmentNames(const QStringList& names) {
  for (int segment = 0; segment < segmentCount(); ++segment) {
    mSegments[static_cast<std::size_t>(segment)]->setAccessibleName(names.value(segment, QString::number(segment + 1)));
  }
}

QString SegmentedControl::segmentName(int segment) const {
  return segment >= 0 && segment < segmentCount() ? mSegments[static_cast<std::size_t>(segment)]->accessibleName()
                                                  : QString();
}

void SegmentedControl::setMark(int segment, const QString& words) {
  if (segment < 0 || segment >= segmentCount() || wordsOfMark(segment) == words) return;
  mSegments[static_cast<std::size_t>(segment)]->setAccessibleDescription(words);
  update();
}

bool SegmentedControl::isMarked(int segment) const {
  return !wordsOfMark(segment).isEmpty();
}

QString SegmentedControl::wordsOfMark(int segment) const {
  return segment >= 0 && segment < segmentCount()
             ? mSegments[static_cast<std::size_t>(segment)]->accessibleDescription()
             : QString();
}

void SegmentedControl::selectSegment(int segment) {
  mSelected = segment >= 0 && segment < segmentCount() ? segment : -1;
  for (int one = 0; one < segmentCount(); ++one) mSegments[static_cast<std::size_t>(one)]->mark(one == mSelected);
  update();
}

QRect SegmentedControl::segmentRect(int segment) const {
  const int count = std::max(segmentCount(), 1);
  const int left = width() * segment / count;
  const int right = width() * (segment + 1) / count;
  return QStyle::visualRect(layoutDirection(), rect(), QRect(left, 0, right - left, height()));
}

int SegmentedControl::segmentAt(const QPointF& position) const {
  for (int segment = 0; segment < segmentCount(); ++segment) {
    if (segmentRect(segment).contains(position.toPoint())) return segment;
  }
  return -1;
}

QSize SegmentedControl::sizeHint() const {
  return {segmentCount() * segmentWidth, fontMetrics().height() + 2 * verticalPadding};
}

bool SegmentedControl::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && isEnabled()) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const int segment = segmentAt(help->pos());
    QString text = segmentName(segment);
    if (isMarked(segment)) text += QStringLiteral(": ") + wordsOfMark(segment);
    if (segment >= 0) showPlainToolTip(*help, text, this);
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
  painter.save();
  painter.setClipPath(outline);
  for (int segment = 0; segment < segmentCount(); ++segment) drawSegment(painter, segment);
  painter.restore();
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  painter.drawPath(outline);
  if (hasFocus() && segmentCount() > 0) drawFocus(painter);
}

void SegmentedControl::drawSegment(QPainter& painter, int segment) const {
  const QRect place = segmentRect(segment);
  const bool isSelected = segment == mSelected;
  if (isSelected) {
    painter.fillRect(place, isEnabled() ? accentColor(palette()) : palette().color(QPalette::Mid));
  } else if (segment == mHovered && isEnabled()) {
    painter.fillRect(place, palette().brush(QPalette::Midlight));
  }
  if (segment > 0 && !isSelected && segment - 1 != mSelected) {
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    const qreal x = isRightToLeft() ? place.right() + 0.5 : place.left() + 0.5;
    painter.drawLine(QPointF(x, place.top() + separatorInset), QPointF(x, place.bottom() - separatorInset));
  }
  QFont digits = font();
  if (isSelected) digits.setWeight(QFont::Bold);
  painter.setFont(digits);
  const QColor ink = isSelected && isEnabled() ? inkOnAccent(palette()) : palette().color(QPalette::ButtonText);
  painter.setPen(ink);
  painter.drawText(place, Qt::AlignCenter, QString::number(segment + 1));
  if (!isMarked(segment)) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(ink);
  painter.drawEllipse(QPointF(QRectF(place).center().x(), place.bottom() + 1 - dotHeight), dotRadius, dotRadius);
}

void SegmentedControl::drawFocus(QPainter& painter) const {
  const QRectF ring = QRectF(segmentRect(mCurrent)).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(mCurrent == mSelected ? inkOnAccent(palette()) : palette().color(QPalette::PlaceholderText), 1));
  painter.drawRoundedRect(ring.adjusted(focusInset, focusInset, -focusInset, -focusInset), focusInset, focusInset);
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
  if (std::exchange(mPressed, -1) == segment && segment >= 0) choose(segment);
}

void SegmentedControl::leaveEvent(QEvent*) {
  mHovered = -1;
  update();
}

void SegmentedControl::resizeEvent(QResizeEvent*) {
  for (int segment = 0; segment < segmentCount(); ++segment)
    mSegments[static_cast<std::size_t>(segment)]->setGeometry(segmentRect(segment));
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
      moveTo(segmentCount() - 1);
      return;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event->isAutoRepeat() && mCurrent < segmentCount()) choose(mCurrent);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void SegmentedControl::contextMenuEvent(QContextMenuEvent* event) {
  const bool isMouse = event->reason() == QContextMenuEvent::Mouse;
  const int segment = isMouse ? segmentAt(event->pos()) : mCurrent;
  if (segment < 0 || segment >= segmentCount()) return;
  emit menuAsked(segment, isMouse ? event->globalPos() : mapToGlobal(segmentRect(segment).bottomLeft()));
}

void SegmentedControl::focusInEvent(QFocusEvent*) {
  moveTo(mSelected);
}

void SegmentedControl::focusOutEvent(QFocusEvent*) {
  update();
}

void SegmentedControl::choose(int segment) {
  mCurrent = segment;
  selectSegment(segment);
  emit segmentChosen(segment);
}

void SegmentedControl::moveTo(int segment) {
  mCurrent = std::clamp(segment, 0, std::max(segmentCount() - 1, 0));
  update();
  if (segmentCount() == 0) return;
  QAccessibleEvent reached(mSegments[static_cast<std::size_t>(mCurrent)], QAccessible::Focus);
  QAccessible::updateAccessibility(&reached);
}

}  // namespace skarn
