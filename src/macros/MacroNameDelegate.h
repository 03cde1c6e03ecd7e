// The rows of the table of macros, whose names are edited in place. Main thread.
#pragma once

#include <QPointer>

#include "widgets/RowDelegate.h"

namespace skarn {

class MacroNameDelegate : public RowDelegate {
  Q_OBJECT

 public:
  using RowDelegate::RowDelegate;

  // Ends an edit without a rename. Nothing without one.
  void discardEdit();

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
  // Begins with the whole name selected; what is being typed outlives a reload of the table.
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;

 signals:
  void editingStarted(int row) const;
  void editingEnded() const;  // after a commit or a cancel

 private:
  mutable QPointer<QWidget> mEditor;
};

}  // namespace skarn
