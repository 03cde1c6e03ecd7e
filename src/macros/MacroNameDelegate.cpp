#include "macros/MacroNameDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>

#include "widgets/PlainToolTip.h"

namespace skarn {

QWidget* MacroNameDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
  auto* editor = new QLineEdit(parent);
  emit editingStarted(index.row());
  return editor;
}

void MacroNameDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  RowDelegate::destroyEditor(editor, index);
  emit editingEnded();
}

void MacroNameDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* name = qobject_cast<QLineEdit*>(editor);
  if (name == nullptr || name->isModified()) return;
  name->setText(index.data(Qt::EditRole).toString());
  name->selectAll();
}

bool MacroNameDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const bool isCut = cell.fontMetrics.horizontalAdvance(cell.text) > option.rect.width() - 2 * sidePadding;
  // A disabled table says why it is.
  if (event->type() != QEvent::ToolTip || !isCut || !view->isEnabled()) {
    return RowDelegate::helpEvent(event, view, option, index);
  }
  showPlainToolTip(*event, cell.text, view->viewport());
  return true;
}

}  // namespace skarn
