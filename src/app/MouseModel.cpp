#include "app/MouseModel.h"

#include <algorithm>

#include "app/MouseText.h"
#include "platform/Localization.h"

namespace skarn {

namespace {

int placeOf(const std::vector<MouseDescription>& mice, std::vector<MouseDescription>::const_iterator found) {
  return found == mice.end() ? -1 : static_cast<int>(found - mice.begin());
}

}  // namespace

void MouseModel::setMice(const std::vector<MouseDescription>& mice) {
  if (mice == mMice) return;
  beginResetModel();
  mMice = mice;
  endResetModel();
}

const MouseDescription* MouseModel::mouseAt(int row) const {
  return row >= 0 && row < rowCount() ? &mMice[static_cast<std::size_t>(row)] : nullptr;
}

int MouseModel::rowOf(const QString& id) const {
  return placeOf(mMice, std::ranges::find(mMice, id, &MouseDescription::id));
}

int MouseModel::rowInUse() const {
  return placeOf(mMice, std::ranges::find_if(mMice, &MouseDescription::isInUse));
}

int MouseModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mMice.size());
}

int MouseModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columnCountOfMice;
}

QVariant MouseModel::data(const QModelIndex& index, int role) const {
  const MouseDescription* mouse = mouseAt(index.row());
  if (mouse == nullptr || role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case Name:
      return mouse->name;
    case Connection:
      return connectionText(*mouse);
    case State:
      return stateText(*mouse);
    default:
      return {};
  }
}

QVariant MouseModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return QAbstractTableModel::headerData(section, orientation, role);
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  constexpr const char* titles[columnCountOfMice] = {"lkeyMouseColumnName", "lkeyMouseColumnConnection",
                                                     "lkeyMouseColumnState"};
  return localized(titles[section]);
}

}  // namespace skarn
