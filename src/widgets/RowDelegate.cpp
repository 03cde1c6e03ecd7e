#include "widgets/RowDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "widgets/PlainToolTip.h"

namespace skarn {

namespace {

// Equally wide for every icon, so that the texts begin under each other.
QRect iconPlace(const QStyleOptionViewItem& cell) {
  const int padding = RowDelegate::sidePadding;
  return QStyle::alignedRect(cell.direction, Qt::AlignLeading | Qt::AlignVCenter, cell.decorationSize,
                             cell.rect.adjusted(padding, 0, -padding, 0));
}

}  // namespace

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->state &= ~QStyle::State_HasFocus;
  option->textElideMode = Qt::ElideMiddle;
}

QStyleOptionViewItem RowDelegate::cellOf(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  cell.decorationSize = option.decorationSize;
  cell.fontMetrics = QFontMetrics(cell.font);
  return cell;
}

QRect RowDelegate::textPlace(const QStyleOptionViewItem& cell, const QModelIndex&) const {
  const QRect place = cell.rect.adjusted(sidePadding, 0, -sidePadding, 0);
  if (!(cell.features & QStyleOptionViewItem::HasDecoration)) return place;
  const int shift = cell.decorationSize.width() + sidePadding;
  return cell.direction == Qt::RightToLeft ? place.adjusted(0, 0, -shift, 0) : place.adjusted(shift, 0, 0, 0);
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QStyleOptionViewItem cell = cellOf(option, index);
  const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
  if (option.state & QStyle::State_Selected) painter->fillRect(option.rect, option.palette.brush(QPalette::Highlight));
  painter->save();
  painter->setFont(cell.font);
  if (cell.features & QStyleOptionViewItem::HasDecoration) {
    cell.icon.paint(painter, iconPlace(cell), Qt::AlignCenter,
                    option.state & QStyle::State_Enabled ? QIcon::Normal : QIcon::Disabled);
  }
  const QRect place = textPlace(cell, index);
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

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  if (!view->isEnabled()) return false;
  QString tip;
  if (index.isValid()) {
    tip = index.data(Qt::ToolTipRole).toString();
    const QStyleOptionViewItem cell = cellOf(option, index);
    const bool isCut = cell.fontMetrics.horizontalAdvance(cell.text) > textPlace(cell, index).width();
    if (tip.isEmpty() && isCut) tip = cell.text;
  }
  if (tip.isEmpty()) {
    QToolTip::hideText();
    return false;
  }
  showPlainToolTip(*event, tip, view->viewport(), option.rect);
  return true;
}

}  // namespace skarn
