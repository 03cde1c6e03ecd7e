#include "macros/RightClickMenuTable.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include "widgets/RowFocus.h"

namespace skarn {

void RightClickMenuTable::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::RightButton) {
    QTableView::mousePressEvent(event);
    return;
  }
  const int row = rowAt(event->position().toPoint().y());
  if (row >= 0 && !selectionModel()->isRowSelected(row)) selectRow(row);
  showMenuAt(event->globalPosition().toPoint());
}

void RightClickMenuTable::contextMenuEvent(QContextMenuEvent* event) {
  // The press of the mouse has opened it already.
  if (event->reason() == QContextMenuEvent::Mouse) return;
  const QRect row = visualRect(currentIndex());
  showMenuAt(viewport()->mapToGlobal(row.isValid() ? row.center() : QPoint()));
}

void RightClickMenuTable::keyPressEvent(QKeyEvent* event) {
  if (takesKey(*event)) return;
  const bool isArrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
  if (event->key() == Qt::Key_Delete) {
    if (!event->isAutoRepeat()) emit deletionAsked();
  } else if (isArrow && currentIndex().isValid() && !selectionModel()->hasSelection()) {
    // The row that the keyboard begins at would be passed over otherwise, and an only row never be selected.
    selectRow(currentIndex().row());
  } else {
    QTableView::keyPressEvent(event);
  }
}

void RightClickMenuTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  drawRowFocus(*this);
}

// The frame of the focus goes beyond the rows that the view paints anew.
void RightClickMenuTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  viewport()->update();
}

void RightClickMenuTable::showMenuAt(const QPoint& globalPosition) {
  if (!isEnabled()) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fillMenu(*menu);
  menu->popup(globalPosition);
}

}  // namespace skarn
