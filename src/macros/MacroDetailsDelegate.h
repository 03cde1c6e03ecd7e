// Draws the lines of a macro: events as they stand, the delays between them (odd rows) indented and muted. A line
// break at the end of a line is not drawn.
#pragma once

#include "widgets/RowDelegate.h"

namespace skarn {

class MacroDetailsDelegate : public RowDelegate {
  Q_OBJECT

 public:
  using RowDelegate::RowDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace skarn
