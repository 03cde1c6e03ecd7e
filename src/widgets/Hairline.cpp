#include "widgets/Hairline.h"

#include <QPainter>

namespace skarn {

Hairline::Hairline(QWidget* parent) : QWidget(parent) {
  setFixedHeight(1);
}

void Hairline::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), palette().color(QPalette::Mid));
}

}  // namespace skarn
