#include "widgets/TextRoles.h"

#include <QApplication>
#include <QLabel>

namespace skarn {

namespace {

constexpr qreal headingScale = 1.4;
constexpr qreal titleScale = 1.1;
constexpr qreal captionScale = 0.92;
constexpr qreal readoutScale = 2.2;

QFont scaled(QFont font, qreal scale) {
  if (font.pointSizeF() > 0) {
    font.setPointSizeF(font.pointSizeF() * scale);
  } else {
    font.setPixelSize(qRound(font.pixelSize() * scale));
  }
  return font;
}

}  // namespace

QFont semibold(QFont font) {
  font.setWeight(QFont::DemiBold);
  return font;
}

QFont titleFont(const QWidget* widget) {
  return semibold(scaled(widget ? widget->font() : qApp->font(), titleScale));
}

QFont captionFont(const QFont& font) {
  return scaled(font, captionScale);
}

void applyTextRole(QLabel& label, const QString& role) {
  if (role == QLatin1String("heading")) {
    label.setFont(semibold(scaled(label.font(), headingScale)));
  } else if (role == QLatin1String("title")) {
    label.setFont(titleFont(&label));
  } else if (role == QLatin1String("caption")) {
    label.setFont(captionFont(label.font()));
    label.setForegroundRole(QPalette::PlaceholderText);
  } else if (role == QLatin1String("muted")) {
    label.setForegroundRole(QPalette::PlaceholderText);
  } else if (role == QLatin1String("value")) {
    label.setFont(semibold(label.font()));
  } else if (role == QLatin1String("readout")) {
    label.setFont(scaled(label.font(), readoutScale));
  }
}

}  // namespace skarn
