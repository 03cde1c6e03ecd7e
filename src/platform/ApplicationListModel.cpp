#include "platform/ApplicationListModel.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

namespace skarn {

namespace {

constexpr int initialSize = 32;
constexpr qreal initialRadius = 6;
constexpr qreal initialPenWidth = 1.5;

QIcon initialIcon(const QString& name) {
  const qreal ratio = qGuiApp->devicePixelRatio();
  QPixmap picture(QSize(initialSize, initialSize) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor color = QGuiApplication::palette().color(QPalette::Disabled, QPalette::Text);
  painter.setPen(QPen(color, initialPenWidth));
  const QRectF frame = QRectF(0, 0, initialSize, initialSize).adjusted(2, 2, -2, -2);
  painter.drawRoundedRect(frame, initialRadius, initialRadius);
  QFont font = QGuiApplication::font();
  font.setPixelSize(initialSize / 2);
  font.setWeight(QFont::DemiBold);
  painter.setFont(font);
  const bool isPair = !name.isEmpty() && name.front().isHighSurrogate();
  painter.drawText(frame, Qt::AlignCenter, name.left(isPair ? 2 : 1).toUpper());
  return picture;
}

}  // namespace

ApplicationListModel::ApplicationListModel(std::vector<ApplicationInfo::Installed> applications, QObject* parent)
    : QAbstractListModel(parent), mApplications(std::move(applications)), mIcons(mApplications.size()) {}

int ApplicationListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mApplications.size());
}

QVariant ApplicationListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const auto row = static_cast<std::size_t>(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return mApplications[row].name;
    case Qt::DecorationRole:
      return iconOf(row);
    case Qt::ToolTipRole:
    case pathRole:
      return mApplications[row].path;
    default:
      return {};
  }
}

const QIcon& ApplicationListModel::iconOf(std::size_t row) const {
  QIcon& icon = mIcons[row];
  if (icon.isNull()) icon = ApplicationInfo::icon(mApplications[row].path);
  if (icon.isNull()) icon = initialIcon(mApplications[row].name);
  return icon;
}

}  // namespace skarn
