#include "macros/MacroNameDelegate.h"

namespace skarn {

QWidget* MacroNameDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
  auto* editor = new QLineEdit(parent);
  mEditor = editor;
  emit editingStarted(index.row());
  return editor;
}

void MacroNameDelegate::commitEdit() {
  if (!mEditor) return;
  emit commitData(mEditor);
  // The rename may have ended it.
  if (mEditor) emit closeEditor(mEditor);
}

std::optional<QString> MacroNameDelegate::typedName() const {
  return mEditor && mEditor->isModified() ? std::optional(mEditor->text()) : std::nullopt;
}

void MacroNameDelegate::setTypedName(const QString& name) {
  if (!mEditor) return;
  mEditor->setText(name);
  mEditor->setModified(true);
}

void MacroNameDelegate::discardEdit() {
  if (mEditor) emit closeEditor(mEditor, RevertModelCache);
}

void MacroNameDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  mEditor = nullptr;
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
