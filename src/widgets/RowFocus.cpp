#include "widgets/RowFocus.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QTableView>

namespace skarn {

void drawRowFocus(QTableView& table) {
  if (!table.hasFocus()) return;
  QStyleOptionFocusRect frame;
  frame.initFrom(&table);
  const QModelIndexList rows = table.selectionModel() ? table.selectionModel()->selectedRows() : QModelIndexList();
  if (rows.isEmpty()) {
    frame.rect = table.viewport()->rect().adjusted(1, 1, -1, -1);
  } else {
    const QModelIndex current = table.currentIndex();
    const bool isSelected = current.isValid() && table.selectionModel()->isRowSelected(current.row(), {});
    const int row = isSelected ? current.row() : rows.constFirst().row();
    frame.rect = {0, table.rowViewportPosition(row), table.horizontalHeader()->length(), table.rowHeight(row)};
  }
  QPainter painter(table.viewport());
  table.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, &table);
}

}  // namespace skarn
