// A table with a menu of its own: a right click or the menu key opens it at once, without changing the selection. A
// disabled table opens none. Main thread.
#pragma once

#include <QTableView>

class QMenu;

namespace skarn {

class RightClickMenuTable : public QTableView {
  Q_OBJECT

 public:
  using QTableView::QTableView;

 protected:
  // Adds the items, enabled as they are now, to an empty menu. The menu lives until it closes.
  virtual void fillMenu(QMenu& menu) = 0;

  void mousePressEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void showMenu(const QPoint& place);  // in the viewport
};

}  // namespace skarn
