#include "app/HistoryModel.h"

#include <QDateTime>
#include <QLocale>

#include "app/SettingsHistory.h"
#include "platform/HistoryText.h"
#include "platform/Localization.h"
#include "protocol/History.h"

namespace skarn {

namespace words = vorn::history::keys;
using vorn::PropertyList;

namespace {

// Without the date where it is today's.
QString timeText(const PropertyList& entry) {
  const QDateTime time = QDateTime::fromSecsSinceEpoch(entry[words::Time].toInt64());
  const QLocale locale;
  const QString clock = locale.toString(time.time(), QLocale::ShortFormat);
  if (time.date() == QDate::currentDate()) return clock;
  return locale.toString(time.date(), QLocale::ShortFormat) + QLatin1Char(' ') + clock;
}

}  // namespace

void HistoryModel::setEntries(const PropertyList& entries) {
  beginResetModel();
  mEntries = entries;
  endResetModel();
}

int HistoryModel::rowOf(qint64 id) const {
  for (int row = 0; row < rowCount(); ++row) {
    if (index(row, What).data(IdRole).toLongLong() == id) return row;
  }
  return -1;
}

int HistoryModel::rowOfNow() const {
  for (int row = 0; row < rowCount(); ++row) {
    if (index(row, What).data(IsNowRole).toBool()) return row;
  }
  return -1;
}

int HistoryModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid() || mEntries.isEmpty()) return 0;
  return static_cast<int>(mEntries.size()) + 1;
}

int HistoryModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columnCountOfHistory;
}

QString HistoryModel::textOf(int row, int column) const {
  if (isBeforeAll(row)) return column == What ? localized("lkeyHistoryBeforeAll") : QString();
  const PropertyList& entry = mEntries.at(row);
  switch (column) {
    case Time:
      return timeText(entry);
    case Who:
      return authorText(entry);
    default:
      break;
  }
  const QString what = changeTextWithPlace(entry);
  return entry[words::IsUndone].toBool() ? localized("lkeyHistoryUndone").arg(what) : what;
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const int row = index.row();
  const bool isUndone = mEntries.at(row)[words::IsUndone].toBool();
  switch (role) {
    case Qt::DisplayRole:
      return textOf(row, index.column());
    case IdRole:
      return static_cast<qint64>(isBeforeAll(row) ? SettingsHistory::beforeAll : mEntries.at(row)[words::ID].toInt64());
    case IsUndoneRole:
      return isUndone;
    case IsNowRole:
      return !isUndone && (row == 0 || mEntries.at(row - 1)[words::IsUndone].toBool());
    default:
      return {};
  }
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return QAbstractTableModel::headerData(section, orientation, role);
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  constexpr const char* titles[columnCountOfHistory] = {"lkeyHistoryTime", "lkeyHistoryWhat", "lkeyHistoryWho"};
  return localized(titles[section]);
}

}  // namespace skarn
