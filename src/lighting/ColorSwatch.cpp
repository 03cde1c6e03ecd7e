#include "lighting/ColorSwatch.h"

#include <QPainter>

namespace skarn {

namespace {

constexpr qreal radius = 6;
constexpr float disabledOpacity = 0.35F;

}  // namespace

void ColorSwatch::setColor(const QColor& color) {
  if (mColor == color) return;
  mColor = color;
  update();
}

void ColorSwatch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  QColor fill = mColor;
  if (fill.isValid() && !isEnabled()) fill.setAlphaF(disabledOpacity);
  painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

}  // namespace skarn
