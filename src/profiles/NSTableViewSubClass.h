// The table of profiles: a table with a menu on the right mouse button and the Menu key. Main thread.
//
// A press of the right button on a row selects it first, as the left one does; the menu acts on that row, and on the
// selected one where the press is on none. A click in the column of check boxes acts on the box alone. From the
// keyboard, Space ticks or unticks the selected row's box, Return or F2 edits its name and Delete asks to delete it.
// One row is selected: neither Ctrl nor Shift takes a row out or adds one, and a click below the rows leaves it
// selected.
//
// A row that is dragged moves its profile to another place and selects nothing, so a press selects its row when it is
// let go. Escape and a right click end a drag, and so does letting go beside the table. With Alt, Up and Down move the
// selected row's profile.
#pragma once

#include <QMenu>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableView>
#include <optional>

#include "profiles/RowDrag.h"

namespace skarn {

class MouseProfilesController;

class NSTableViewSubClass : public QTableView {
  Q_OBJECT

 public:
  explicit NSTableViewSubClass(QWidget* parent = nullptr);

  using QTableView::edit;

  // The selected row, -1 without one.
  int selectedRow() const;

  // Opens a fresh menu at a position on the screen and returns at once. In a disabled table all its items are disabled.
  void rightMouseDown(const QPoint& globalPosition);

  // Set by the controller when it is made; not owned. Without it there is no menu and nothing to act on.
  MouseProfilesController* mouseProfilesController = nullptr;

 protected:
  bool viewportEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  // The selected row alone is edited: a rename goes to it.
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  // With the keyboard's focus, the selected row has the frame that shows it; without a row, the whole list.
  void paintEvent(QPaintEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  QModelIndex boxAt(const QPoint& position) const;
  void toggle(const QModelIndex& box);
  // False when the row cannot be selected: there is no menu then. True where there is no row.
  bool selectForMenu(int row);
  void moveByKey(QKeyEvent* event);
  void click(const QMouseEvent& release);
  void endDrag();

  QPersistentModelIndex mPressedBox;
  std::optional<RowDrag> mDrag;
  bool mIsMovedByKey = false;
  QPointer<QMenu> mMenu;
};

}  // namespace skarn
