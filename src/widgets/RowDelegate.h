// How the rows of the application's tables are drawn: room around the text, an icon before it, a hairline under each
// row, no focus frame around single cells. A column's text is elided in the middle; its tooltip is then the whole text.
// Main thread.
#pragma once

#include <QStyledItemDelegate>

namespace skarn {

class RowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  static constexpr int rowHeight = 36;   // device-independent pixels
  static constexpr int sidePadding = 8;  // left and right of a cell's text

  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  // Tells the cell's own tooltip, if it has one, and else a text that is cut, both as plain text. In a disabled view it
  // tells nothing, so that the view can say why it is disabled.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  // Where the text of a cell is drawn.
  virtual QRect textPlace(const QStyleOptionViewItem& cell, const QModelIndex& index) const;

 private:
  QStyleOptionViewItem cellOf(const QStyleOptionViewItem& option, const QModelIndex& index) const;
};

}  // namespace skarn
