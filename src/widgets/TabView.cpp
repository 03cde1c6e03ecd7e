#include "widgets/TabView.h"

#include <QPainter>
#include <QTabBar>

namespace skarn {

TabView::TabView(QWidget* parent) : QTabWidget(parent) {
  tabBar()->setDrawBase(false);
}

void TabView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  const int y = tabBar()->geometry().bottom();
  painter.drawLine(0, y, width(), y);
}

}  // namespace skarn
