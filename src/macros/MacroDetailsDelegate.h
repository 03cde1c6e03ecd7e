// Draws the lines of a macro: events with a small picture of what is pressed or released, the delays between them (odd
// rows) indented, muted and with figures of one width. A line break at the end of a line is not drawn.
#pragma once

#include "widgets/RowDelegate.h"

namespace skarn {

class MacroDetailsDelegate : public RowDelegate {
  Q_OBJECT

 public:
  using RowDelegate::RowDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  QRect textPlace(const QStyleOptionViewItem& cell, const QModelIndex& index) const override;
};

}  // namespace skarn
