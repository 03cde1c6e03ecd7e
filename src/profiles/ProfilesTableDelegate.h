// Draws the cells of the profiles table: the active row's dot beside its number, and auto switch in words.
#pragma once

#include "widgets/RowDelegate.h"

namespace skarn {

class ProfilesTableDelegate : public RowDelegate {
  Q_OBJECT

 public:
  using RowDelegate::RowDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace skarn
