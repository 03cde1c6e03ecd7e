#include "widgets/NumberBadge.h"

#include <QPainter>
#include <QStyle>

namespace skarn {

namespace {

constexpr int sidePadding = 5;
constexpr qreal radius = 5;

}  // namespace

NumberBadge::NumberBadge(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignCenter);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize NumberBadge::sizeHint() const {
  return {fontMetrics().horizontalAdvance(QStringLiteral("00")) + 2 * sidePadding, fontMetrics().height()};
}

void NumberBadge::setFilled(bool filled) {
  mIsFilled = filled;
  update();
}

void NumberBadge::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().brush(mIsFilled ? QPalette::PlaceholderText : QPalette::Midlight));
  painter.drawRoundedRect(QRectF(rect()), radius, radius);
  style()->drawItemText(&painter, rect(), Qt::AlignCenter, palette(), isEnabled(), text(),
                        mIsFilled ? QPalette::Base : foregroundRole());
}

}  // namespace skarn
