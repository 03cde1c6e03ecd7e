#include "profiles/ProfilesTableDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include "profiles/ProfilesTableModel.h"
#include "widgets/Palettes.h"

namespace skarn {

namespace {

constexpr int dotSize = 8;
constexpr int dotFromRight = 8;

}  // namespace

void ProfilesTableDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  RowDelegate::initStyleOption(option, index);
  // The box is drawn here, in the middle of its cell.
  option->features &= ~QStyleOptionViewItem::HasCheckIndicator;
  if (index.column() == ProfilesTableModel::Name && index.data(ProfilesTableModel::IsActiveRole).toBool()) {
    option->font.setWeight(QFont::DemiBold);
  }
  if (index.column() == ProfilesTableModel::Id) option->displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
}

void ProfilesTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
  RowDelegate::paint(painter, option, index);
  const QWidget* view = option.widget;
  if (index.column() == ProfilesTableModel::Id && index.data(ProfilesTableModel::IsActiveRole).toBool()) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush((option.state & QStyle::State_Enabled)
                          ? accentColor(option.palette)
                          : option.palette.color(QPalette::Disabled, QPalette::Text));
    const QRectF dot(option.rect.right() - dotFromRight - dotSize, option.rect.center().y() - dotSize / 2.0 + 0.5,
                     dotSize, dotSize);
    painter->drawEllipse(dot);
    painter->restore();
  }
  if (index.column() == ProfilesTableModel::AutoSwitch) {
    const QStyle* style = view ? view->style() : QApplication::style();
    QStyleOptionButton box;
    box.palette = option.palette;
    box.state = QStyle::State_Enabled & option.state;
    box.state |= index.data(Qt::CheckStateRole).toInt() == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &box, view),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, &box, view));
    box.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, view);
  }
}

}  // namespace skarn
