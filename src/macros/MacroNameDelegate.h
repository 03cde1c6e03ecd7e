// The rows of the table of macros, whose names are edited in place. Main thread.
#pragma once

#include <QLineEdit>
#include <QPointer>
#include <optional>

#include "widgets/RowDelegate.h"

namespace skarn {

class MacroNameDelegate : public RowDelegate {
  Q_OBJECT

 public:
  using RowDelegate::RowDelegate;

  // Each does nothing without an edit.
  void commitEdit();   // ends it with a rename
  void discardEdit();  // ends it without one
  // The name as far as it has been typed; none without an edit, or as long as nothing has been typed.
  std::optional<QString> typedName() const;
  void setTypedName(const QString& name);  // as if it had been typed

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
  // Begins with the whole name selected; what is being typed outlives a reload of the table.
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;

 signals:
  void editingStarted(int row) const;
  void editingEnded() const;  // after a commit or a cancel

 private:
  mutable QPointer<QLineEdit> mEditor;
};

}  // namespace skarn
