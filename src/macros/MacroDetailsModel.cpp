#include "macros/MacroDetailsModel.h"

#include "macros/MacroMenus.h"
#include "model/MacroLines.h"
#include "model/eventParser.h"

namespace skarn {

void MacroDetailsModel::setLines(const vorn::PropertyList& lines) {
  beginResetModel();
  const auto elements = lines.elements();
  mLines.assign(elements.begin(), elements.end());
  mIsLaidOut = false;
  endResetModel();
}

void MacroDetailsModel::appendLines(const vorn::PropertyList& lines) {
  const auto added = lines.elements();
  if (added.empty()) return;
  const int first = rowCount();
  beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
  mLines.insert(mLines.end(), added.begin(), added.end());
  mIsLaidOut = false;
  endInsertRows();
}

int MacroDetailsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(mLines.size());
}

void MacroDetailsModel::layOut() const {
  if (mIsLaidOut) return;
  mIsLaidOut = true;
  const vorn::PropertyList all = lines();
  mElapsed = vorn::elapsedOf(all);
  mPartners = vorn::pairRowsOf(all);
  mLanes.assign(mLines.size(), {});
  for (const vorn::PairLine& pair : vorn::pairLinesOf(all, PairLanes::laneCount)) {
    for (std::size_t row = pair.first; row <= pair.last; ++row) mLanes[row].parts[pair.lane] = PairLanes::Passes;
    mLanes[pair.first].parts[pair.lane] = PairLanes::Begins;
    mLanes[pair.last].parts[pair.lane] = PairLanes::Ends;
  }
}

std::optional<int> MacroDetailsModel::partnerOf(int row) const {
  if (row < 0 || row >= rowCount()) return std::nullopt;
  layOut();
  const auto partner = mPartners[static_cast<std::size_t>(row)];
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
      layOut();
      return QVariant::fromValue(mElapsed[row]);
    case LanesRole:
      layOut();
      return QVariant::fromValue(mLanes[row]);
    default:
      return {};
  }
}

Qt::ItemFlags MacroDetailsModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractListModel::flags(index);
  return index.isValid() && isDelayLine(index.row()) ? flags | Qt::ItemIsEditable : flags;
}

}  // namespace skarn
