#include "performance/StagesTableModel.h"

#include <array>

#include "performance/SensitivityText.h"
#include "platform/Localization.h"

namespace skarn {

namespace {

struct ColumnDescriptor {
  const char* identifier;
  const char* titleKey;
};

constexpr std::array<ColumnDescriptor, 2> columns = {
    {{StagesTableModel::idColumn, "lkeyStageColumn"}, {StagesTableModel::valueColumn, "lkeyStageValueColumn"}}};

}  // namespace

void StagesTableModel::setStages(const vorn::PropertyList& stages) {
  const vorn::PropertyList rows = stages.arrayOrEmpty();
  const bool isAsLong = rows.size() == mStages.size();
  if (!isAsLong) beginResetModel();
  mStages = rows;
  if (!isAsLong) {
    endResetModel();
  } else if (rowCount() > 0) {
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  }
}

int StagesTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mStages.size());
}

int StagesTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant StagesTableModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignCenter);
  if (role != Qt::DisplayRole || !index.isValid()) return {};
  const char* column = columns[static_cast<std::size_t>(index.column())].identifier;
  return tableViewObjectValueForTableColumn(QLatin1String(column), index.row());
}

QVariant StagesTableModel::tableViewObjectValueForTableColumn(QLatin1String column, int row) const {
  if (column == QLatin1String(idColumn)) return row + 1;
  return stageText(mStages.at(row));
}

QVariant StagesTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ColumnDescriptor& column = columns[static_cast<std::size_t>(section)];
  switch (role) {
    case Qt::DisplayRole:
      return localized(column.titleKey);
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignCenter);
    case IdentifierRole:
      return QString::fromLatin1(column.identifier);
    default:
      return {};
  }
}

}  // namespace skarn
