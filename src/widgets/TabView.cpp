#include "widgets/TabView.h"

#include <QPainter>
#include <QTabBar>

namespace skarn {

TabView::TabView(QWidget* parent) : QTabWidget(parent) {
  tabBar()->setDrawBase(false);
  // Otherwise the first control of the new page takes the keyboard from the page that goes.
  tabBar()->setFocusPolicy(Qt::StrongFocus);
  connect(this, &QTabWidget::currentChanged, this, &TabView::namePages);
}

void TabView::showEvent(QShowEvent* event) {
  namePages();
  QTabWidget::showEvent(event);
}

void TabView::namePages() {
  for (int index = 0; index < count(); ++index) widget(index)->setAccessibleName(tabText(index));
  // The pane around them, too.
  if (QWidget* page = currentWidget()) page->parentWidget()->setAccessibleName(page->accessibleName());
}

void TabView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  const int y = tabBar()->geometry().bottom();
  painter.drawLine(0, y, width(), y);
}

}  // namespace skarn
