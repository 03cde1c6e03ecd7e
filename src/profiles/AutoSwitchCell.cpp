#include "profiles/AutoSwitchCell.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace skarn {

void AutoSwitchCell::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  RowDelegate::paint(painter, option, index);
  const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  const QStyle& style = *option.widget->style();
  QStyleOptionButton box;
  box.palette = option.palette;
  box.state =
      (option.state & (QStyle::State_Enabled | QStyle::State_Active)) | (isOn ? QStyle::State_On : QStyle::State_Off);
  const QSize size(style.pixelMetric(QStyle::PM_IndicatorWidth), style.pixelMetric(QStyle::PM_IndicatorHeight));
  box.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
  style.drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, option.widget);
}

}  // namespace skarn
