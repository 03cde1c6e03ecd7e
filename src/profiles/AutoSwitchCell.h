// The cell of the column "auto switch": a check box without a title in the middle of its cell. It draws only; the table
// ticks it. Main thread.
#pragma once

#include "widgets/RowDelegate.h"

namespace skarn {

class AutoSwitchCell : public RowDelegate {
  Q_OBJECT

 public:
  using RowDelegate::RowDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace skarn
