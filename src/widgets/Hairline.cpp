#include "widgets/Hairline.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>

namespace skarn {

namespace {

QAccessibleInterface* accessibleHairline(const QString&, QObject* object) {
  auto* line = qobject_cast<Hairline*>(object);
  return line == nullptr ? nullptr : new QAccessibleWidget(line, QAccessible::Separator);
}

}  // namespace

Hairline::Hairline(QWidget* parent) : QWidget(parent) {
  // Again does nothing more.
  QAccessible::installFactory(accessibleHairline);
  setFixedHeight(1);
}

void Hairline::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), palette().color(QPalette::Mid));
}

}  // namespace skarn
