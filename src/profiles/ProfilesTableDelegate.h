// Draws the cells of the profiles table that show texts (the active row's dot beside its number, the application's icon
// beside its name, muted where nothing is switched for it) and edits names in their place. Main thread.
//
// Return, Tab and a loss of the keyboard take a typed name over: the line edit is closed, then nameEntered is sent, so
// that what follows from the rename finds no edit under way. While a name is edited, a new list leaves the typed text
// alone; the owner ends an edit that no longer belongs to its row with discardEdit.
#pragma once

#include <QPointer>

#include "widgets/RowDelegate.h"

namespace skarn {

class ProfilesTableDelegate : public RowDelegate {
  Q_OBJECT

 public:
  using RowDelegate::RowDelegate;

  // The row whose name is being edited; -1 for none.
  int editedRow() const { return mEditor ? mEditedIndex.row() : -1; }
  // The name that the edit began with.
  const QString& nameBefore() const { return mNameBefore; }
  // Goes on with the edit from the start: everything selected. Nothing without one.
  void restartEdit();
  // Ends the edit with a rename, or without one where the name is empty. Nothing without an edit.
  void takeEditOver();
  // Ends the edit without a rename. Nothing without one.
  void discardEdit();

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

 signals:
  void nameEntered(const QModelIndex& index, const QString& name);
  // The user gave up an edit, or left the name empty.
  void editAbandoned();

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  mutable QPointer<QWidget> mEditor;
  mutable QPersistentModelIndex mEditedIndex;
  mutable QString mNameBefore;
};

}  // namespace skarn
