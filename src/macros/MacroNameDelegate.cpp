#include "macros/MacroNameDelegate.h"

#include <QLineEdit>

namespace skarn {

QWidget* MacroNameDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
  auto* editor = new QLineEdit(parent);
  mEditor = editor;
  emit editingStarted(index.row());
  return editor;
}

void MacroNameDelegate::discardEdit() {
  if (mEditor) emit closeEditor(mEditor, RevertModelCache);
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

}  // namespace skarn
