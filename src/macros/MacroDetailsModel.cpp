#include "macros/MacroDetailsModel.h"

namespace skarn {

void MacroDetailsModel::setLines(const vorn::PropertyList& lines) {
  beginResetModel();
  const auto elements = lines.elements();
  mLines.assign(elements.begin(), elements.end());
  endResetModel();
}

void MacroDetailsModel::appendLines(const vorn::PropertyList& lines) {
  const auto added = lines.elements();
  if (added.empty()) return;
  const int first = rowCount();
  beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
  mLines.insert(mLines.end(), added.begin(), added.end());
  endInsertRows();
}

int MacroDetailsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mLines.size());
}

QVariant MacroDetailsModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || index.row() < 0 || index.row() >= rowCount()) return {};
  const std::string_view line = mLines[static_cast<std::size_t>(index.row())].string();
  return QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
}

}  // namespace skarn
