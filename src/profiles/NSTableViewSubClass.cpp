#include "profiles/NSTableViewSubClass.h"

#include <QContextMenuEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include "platform/Localization.h"
#include "profiles/MouseProfilesController.h"
#include "profiles/ProfileMenu.h"
#include "profiles/ProfilesTableModel.h"
#include "widgets/RowFocus.h"

namespace skarn {

NSTableViewSubClass::NSTableViewSubClass(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectRows);
  setEditTriggers(DoubleClicked);
}

int NSTableViewSubClass::selectedRow() const {
  const QModelIndexList rows = selectionModel() ? selectionModel()->selectedRows() : QModelIndexList();
  return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void NSTableViewSubClass::rightMouseDown(const QPoint& globalPosition) {
  if (mouseProfilesController == nullptr) return;
  if (mMenu) mMenu->close();
  mMenu = new QMenu(this);
  mMenu->setToolTipsVisible(true);
  connect(mMenu, &QMenu::aboutToHide, mMenu, &QObject::deleteLater);
  mouseProfilesController->addMenuItems(*mMenu);
  for (QAction* item : mMenu->actions()) {
    explainItem(*item,
                isEnabled() ? mouseProfilesController->reasonAgainst(tagOf(*item)) : localized("lkeyNoMouseConnected"));
  }
  mMenu->popup(globalPosition);
}

bool NSTableViewSubClass::selectForMenu(int row) {
  if (row < 0 || !isEnabled() || mouseProfilesController == nullptr) return true;
  if (row != selectedRow()) {
    selectionModel()->setCurrentIndex(model()->index(row, ProfilesTableModel::Name),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
  // A switch that was refused has selected another row, which was not meant.
  if (row != selectedRow()) return false;
  mouseProfilesController->rememberTarget(row);
  return true;
}

void NSTableViewSubClass::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  const bool isOff = event->type() == QEvent::EnabledChange && !isEnabled();
  if (isOff || (event->type() == QEvent::ActivationChange && !isActiveWindow())) endDrag();
}

// A disabled table gets no mouse events but these.
bool NSTableViewSubClass::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    const auto* press = static_cast<QMouseEvent*>(event);
    if (press->button() == Qt::RightButton) {
      endDrag();
      if (selectForMenu(indexAt(press->pos()).row())) rightMouseDown(press->globalPosition().toPoint());
      return true;
    }
  }
  return QTableView::viewportEvent(event);
}

void NSTableViewSubClass::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  const bool isMouse = event->reason() == QContextMenuEvent::Mouse;
  // A press of the right button has opened it already.
  if (isMouse && mMenu) return;
  const QRect row = visualRect(model()->index(selectedRow(), ProfilesTableModel::Name));
  rightMouseDown(isMouse ? event->globalPos() : viewport()->mapToGlobal(row.bottomLeft()));
}

QModelIndex NSTableViewSubClass::boxAt(const QPoint& position) const {
  const QModelIndex index = indexAt(position);
  return index.column() == ProfilesTableModel::AutoSwitch ? index : QModelIndex();
}

void NSTableViewSubClass::toggle(const QModelIndex& box) {
  if (!box.isValid()) return;
  const bool isOn = box.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  model()->setData(box, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void NSTableViewSubClass::mousePressEvent(QMouseEvent* event) {
  endDrag();
  mPressedBox = event->button() == Qt::LeftButton ? boxAt(event->pos()) : QModelIndex();
  if (mPressedBox.isValid()) return;
  const int row = indexAt(event->pos()).row();
  if (event->button() == Qt::LeftButton && row >= 0 && mouseProfilesController) {
    mDrag.emplace(*this, mouseProfilesController->mProfilesArray(), row, event->pos());
  } else {
    QTableView::mousePressEvent(event);
  }
}

void NSTableViewSubClass::mouseDoubleClickEvent(QMouseEvent* event) {
  if (boxAt(event->pos()).isValid()) {
    mousePressEvent(event);
  } else {
    QTableView::mouseDoubleClickEvent(event);
  }
}

void NSTableViewSubClass::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) QTableView::mouseMoveEvent(event);
  if (!mDrag || !(event->buttons() & Qt::LeftButton)) return;
  mDrag->moveTo(event->pos());
  if (!mDrag->hasBegun()) return;
  viewport()->setCursor(Qt::ClosedHandCursor);
  viewport()->update();
}

void NSTableViewSubClass::mouseReleaseEvent(QMouseEvent* event) {
  if (mDrag && event->button() == Qt::LeftButton) {
    if (!mDrag->hasBegun()) return click(*event);
    mDrag->moveTo(event->pos());
    const auto move = mDrag->move(mouseProfilesController->mProfilesArray());
    endDrag();
    if (move) mouseProfilesController->moveProfile(move->from, move->to);
    return;
  }
  if (!mPressedBox.isValid()) {
    QTableView::mouseReleaseEvent(event);
    return;
  }
  const QModelIndex pressed = mPressedBox;
  mPressedBox = QModelIndex();
  if (boxAt(event->pos()) == pressed) toggle(pressed);
}

// The press that was kept back, at the row where its profile stands now, and its release.
void NSTableViewSubClass::click(const QMouseEvent& release) {
  const int row = mDrag->pressedRow(mouseProfilesController->mProfilesArray());
  const QPoint at(mDrag->pressedAt().x(), visualRect(model()->index(row, ProfilesTableModel::Name)).center().y());
  endDrag();
  if (row < 0) return;
  const QPointF global = viewport()->mapToGlobal(QPointF(at));
  QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, release.modifiers());
  QTableView::mousePressEvent(&press);
  QMouseEvent rest(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, release.modifiers());
  QTableView::mouseReleaseEvent(&rest);
}

void NSTableViewSubClass::endDrag() {
  if (!mDrag) return;
  mDrag.reset();
  viewport()->unsetCursor();
  viewport()->update();
}

void NSTableViewSubClass::keyPressEvent(QKeyEvent* event) {
  if (mDrag) {
    if (event->key() == Qt::Key_Escape) endDrag();
    return;
  }
  const int row = selectedRow();
  const bool canAct = row >= 0 && mouseProfilesController;
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (!(event->modifiers() & Qt::AltModifier)) return moveByKey(event);
      if (canAct) {
        mouseProfilesController->selectListItem(
            static_cast<int>(event->key() == Qt::Key_Up ? ProfileListItem::MoveUp : ProfileListItem::MoveDown));
      }
      break;
    case Qt::Key_Space:
      if (canAct) toggle(model()->index(row, ProfilesTableModel::AutoSwitch));
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
      if (canAct) mouseProfilesController->selectMenuItem(static_cast<int>(ProfileItem::Rename));
      break;
    case Qt::Key_Delete:
      if (canAct && mouseProfilesController->reasonAgainst(static_cast<int>(ProfileItem::Delete)).isEmpty()) {
        mouseProfilesController->clickDelete();
      }
      break;
    default:
      moveByKey(event);
  }
}

void NSTableViewSubClass::moveByKey(QKeyEvent* event) {
  const int row = selectedRow();
  // A switch that was refused has selected another row than the current one.
  if (row >= 0 && row != currentIndex().row()) {
    selectionModel()->setCurrentIndex(model()->index(row, ProfilesTableModel::Name), QItemSelectionModel::NoUpdate);
  }
  const QScopedValueRollback moving(mIsMovedByKey, true);
  QTableView::keyPressEvent(event);
}

// After a key has made a row current and so selected it, the view selects it once more, though a refused switch may
// have taken the selection back: the switch would be asked for twice.
void NSTableViewSubClass::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
  if (!mIsMovedByKey) QTableView::setSelection(rect, command);
}

bool NSTableViewSubClass::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  return index.row() == selectedRow() && QTableView::edit(index, trigger, event);
}

void NSTableViewSubClass::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  drawRowFocus(*this);
  if (!mDrag) return;
  QPainter painter(viewport());
  mDrag->paint(painter, mouseProfilesController->mProfilesArray());
}

// The frame of the focus goes beyond the rows that the view paints anew.
void NSTableViewSubClass::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  viewport()->update();
}

QItemSelectionModel::SelectionFlags NSTableViewSubClass::selectionCommand(const QModelIndex& index,
                                                                          const QEvent* event) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  const auto command = QTableView::selectionCommand(index, event);
  if (!(command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle))) return command;
  return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

}  // namespace skarn
