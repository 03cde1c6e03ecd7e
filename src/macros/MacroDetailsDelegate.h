// Draws the lines of a macro: events with a small picture of what is pressed or released and, at the right, the time
// from the first event; the delays between them (odd rows) indented, muted and with figures of one width. Thin lines at
// the left join a press and its release. A line break at the end of a line is not drawn. A delay is edited in place, as
// a number of milliseconds. Main thread.
#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <optional>

#include "macros/MacroDetailsModel.h"
#include "widgets/RowDelegate.h"

namespace skarn {

class NumberOnlyTextField;

class MacroDetailsDelegate : public RowDelegate {
  Q_OBJECT

 public:
  // Where the picture of an event begins, behind the lines that join pairs; device-independent pixels.
  static constexpr int laneWidth = 6;
  static constexpr int pictureLeft = sidePadding + static_cast<int>(PairLanes::laneCount) * laneWidth + 4;

  using RowDelegate::RowDelegate;

  // Each does nothing without an edit.
  void commitEdit();   // ends it with what is entered
  void discardEdit();  // ends it without a new delay
  bool isEditing() const { return mEdited.isValid(); }
  // The delay as far as it has been typed; none without an edit, or as long as nothing has been typed.
  std::optional<QString> typedDelay() const;
  void setTypedDelay(const QString& delay);  // as if it had been typed

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 signals:
  void editingStarted(int row) const;
  // The edit has ended; with another delay than before, or with nothing to do.
  void editingEnded(std::optional<int> milliseconds) const;
  void editRefused() const;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  QRect textPlace(const QStyleOptionViewItem& cell, const QModelIndex& index) const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  mutable QPointer<NumberOnlyTextField> mEditor;
  mutable QPersistentModelIndex mEdited;
  mutable std::optional<int> mEntered;
};

}  // namespace skarn
