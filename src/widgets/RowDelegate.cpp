#include "widgets/RowDelegate.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

namespace skarn {

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->state &= ~QStyle::State_HasFocus;
  option->textElideMode = Qt::ElideMiddle;
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
  if (option.state & QStyle::State_Selected) painter->fillRect(option.rect, option.palette.brush(QPalette::Highlight));
  painter->save();
  painter->setFont(cell.font);
  QRect place = option.rect.adjusted(sidePadding, 0, -sidePadding, 0);
  if (cell.features & QStyleOptionViewItem::HasDecoration) {
    // Equally wide for every icon, so that the texts begin under each other.
    const QRect iconPlace =
        QStyle::alignedRect(cell.direction, Qt::AlignLeading | Qt::AlignVCenter, option.decorationSize, place);
    cell.icon.paint(painter, iconPlace, Qt::AlignCenter,
                    option.state & QStyle::State_Enabled ? QIcon::Normal : QIcon::Disabled);
    const int shift = iconPlace.width() + sidePadding;
    place.adjust(cell.direction == Qt::RightToLeft ? 0 : shift, 0, cell.direction == Qt::RightToLeft ? -shift : 0, 0);
  }
  const QString text = cell.fontMetrics.elidedText(cell.text, cell.textElideMode, place.width());
  style->drawItemText(painter, place, static_cast<int>(cell.displayAlignment), cell.palette,
                      option.state & QStyle::State_Enabled, text,
                      (option.state & QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text);
  painter->setPen(QPen(option.palette.color(QPalette::Mid), 1));
  painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  painter->restore();
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QSize text = QStyledItemDelegate::sizeHint(option, index);
  return {text.width() + 2 * sidePadding, std::max(text.height(), rowHeight)};
}

}  // namespace skarn
