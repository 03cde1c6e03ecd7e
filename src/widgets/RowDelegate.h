// How the rows of the application's tables are drawn: room around the text, an icon before it, a hairline under each
// row, no focus frame around single cells. A column's text is elided in the middle.
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

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace skarn
