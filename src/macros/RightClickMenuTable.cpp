#include "macros/RightClickMenuTable.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>

namespace skarn {

void RightClickMenuTable::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::RightButton) {
    QTableView::mousePressEvent(event);
    return;
  }
  showMenu(event->position().toPoint());
}

void RightClickMenuTable::contextMenuEvent(QContextMenuEvent* event) {
  // The press of the mouse has opened it already.
  if (event->reason() == QContextMenuEvent::Mouse) return;
  const QRect row = visualRect(currentIndex());
  showMenu(row.isValid() ? row.center() : QPoint());
}

void RightClickMenuTable::showMenu(const QPoint& place) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fillMenu(*menu);
  menu->popup(viewport()->mapToGlobal(place));
}

}  // namespace skarn
