#include "profiles/ProfilesTableDelegate.h"

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
  // The state is drawn here, in words, in the middle of its cell.
  option->features &= ~QStyleOptionViewItem::HasCheckIndicator;
  if (index.column() == ProfilesTableModel::Name && index.data(ProfilesTableModel::IsActiveRole).toBool()) {
    option->font.setWeight(QFont::DemiBold);
  }
  if (index.column() == ProfilesTableModel::Id) option->displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
}

void ProfilesTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
  RowDelegate::paint(painter, option, index);
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
    painter->setPen(option.palette.color(option.state & QStyle::State_Enabled ? QPalette::Normal : QPalette::Disabled,
                                         QPalette::Text));
    painter->drawText(option.rect, Qt::AlignCenter, index.data(Qt::AccessibleTextRole).toString());
  }
}

}  // namespace skarn
