#include "macros/MacroDetailsModel.h"

#include "macros/MacroMenus.h"
#include "model/eventParser.h"

namespace skarn {

void MacroDetailsModel::setLines(const vorn::PropertyList& lines) {
  beginResetModel();
  const auto elements = lines.elements();
  mLines.assign(elements.begin(), elements.end());
  mLayout.clear();
  mLayout.append(elements);
  endResetModel();
}

void MacroDetailsModel::appendLines(const vorn::PropertyList& lines) {
  const auto added = lines.elements();
  if (added.empty()) return;
  const int first = rowCount();
  beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
  mLines.insert(mLines.end(), added.begin(), added.end());
  mLayout.append(added);
  endInsertRows();
}

int MacroDetailsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mLines.size());
}

std::optional<int> MacroDetailsModel::partnerOf(int row) const {
  if (row < 0 || row >= rowCount()) return std::nullopt;
  const auto partner = mLayout.partnerOf(static_cast<std::size_t>(row));
  return partner ? std::optional(static_cast<int>(*partner)) : std::nullopt;
}

QVariant MacroDetailsModel::data(const QModelIndex& index, int role) const {
  if (index.row() < 0 || index.row() >= rowCount()) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const std::string_view line = mLines[row].string();
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
    case Qt::EditRole:
      if (const auto milliseconds = vorn::eventParser::delayOfLine(line)) return QVariant::fromValue(*milliseconds);
      return {};
    case ElapsedRole:
      if (isDelayLine(index.row())) return {};
      return QVariant::fromValue(mLayout.elapsedOf(row));
    case LanesRole:
      return QVariant::fromValue(mLayout.lanesOf(row));
    default:
      return {};
  }
}

Qt::ItemFlags MacroDetailsModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractListModel::flags(index);
  return index.isValid() && isDelayLine(index.row()) ? flags | Qt::ItemIsEditable : flags;
}

}  // namespace skarn
