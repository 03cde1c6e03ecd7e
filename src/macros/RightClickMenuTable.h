// A table with a menu of its own: a right click on a row selects it, as a left click does, and opens the menu; the menu
// key opens it for the selected row. A disabled table opens none. The row that the keyboard is at has a frame, and
// Delete asks for its deletion. Main thread.
#pragma once

#include <QTableView>

class QMenu;

namespace skarn {

class RightClickMenuTable : public QTableView {
  Q_OBJECT

 public:
  using QTableView::QTableView;

  // The same menu, where something else stands in the place of a table without rows.
  void showMenuAt(const QPoint& globalPosition);

 signals:
  void deletionAsked();

 protected:
  // Adds the items, enabled as they are now, to an empty menu. The menu lives until it closes.
  virtual void fillMenu(QMenu& menu) = 0;
  // Carries out a key that is a shortcut of the menu. False for any other key.
  virtual bool takesKey(const QKeyEvent& key) = 0;

  void mousePressEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
};

}  // namespace skarn
