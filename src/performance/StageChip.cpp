#include "performance/StageChip.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <algorithm>

#include "widgets/Palettes.h"

namespace skarn {

namespace {

constexpr int sidePadding = 16;
constexpr int leastWidth = 64;
constexpr int verticalPadding = 8;
constexpr qreal radius = 6;
constexpr qreal outlineWidth = 2;
constexpr int focusInset = 3;

}  // namespace

StageChip::StageChip(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

QFont StageChip::shownFont(bool current) const {
  QFont shown = font();
  shown.setWeight(current ? QFont::DemiBold : QFont::Normal);
  return shown;
}

QSize StageChip::sizeHint() const {
  // The wider font counts, so that a change of the stage moves no chip.
  const QFontMetrics metrics(shownFont(true));
  return {metrics.horizontalAdvance(text()) + 2 * sidePadding, metrics.height() + 2 * verticalPadding};
}

QSize StageChip::minimumSizeHint() const {
  const QSize whole = sizeHint();
  return {std::min(whole.width(), leastWidth), whole.height()};
}

void StageChip::setCurrent(bool current) {
  if (mIsCurrent == current) return;
  mIsCurrent = current;
  update();
}

QPalette::ColorRole StageChip::groundRole() const {
  if (isDown() || (isEnabled() && underMouse())) return QPalette::Mid;
  return mIsCurrent ? QPalette::Base : QPalette::Midlight;
}

void StageChip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const qreal inset = outlineWidth / 2;
  painter.setBrush(palette().color(groundRole()));
  painter.setPen(Qt::NoPen);
  if (mIsCurrent) {
    const QColor outline = isEnabled() ? accentColor(palette()) : palette().color(QPalette::Dark);
    painter.setPen(QPen(outline, outlineWidth));
  }
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
  if (hasFocus()) {
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    // Within the outline of the current stage, which would hide it.
    if (mIsCurrent) frame.rect.adjust(focusInset, focusInset, -focusInset, -focusInset);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
  }
  painter.setFont(shownFont(mIsCurrent));
  // A chip in its natural width keeps its whole text, however the font rounds.
  const int room = rect().width() - sidePadding;
  const QString shown = QFontMetrics(painter.font()).elidedText(text(), Qt::ElideMiddle, room);
  style()->drawItemText(&painter, rect(), Qt::AlignCenter, palette(), isEnabled(), shown, foregroundRole());
}

}  // namespace skarn
