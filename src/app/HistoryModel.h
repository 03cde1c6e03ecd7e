// The rows of the history's list, the newest first: when, what and who. Those that are undone stand above the one that
// the settings are at now; the last row stands for the settings before all of them. Main thread.
#pragma once

#include <QAbstractTableModel>

#include "model/PropertyList.h"

namespace skarn {

class HistoryModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Time, What, Who, columnCountOfHistory };
  static constexpr int IdRole = Qt::UserRole;            // SettingsHistory::beforeAll of the last row
  static constexpr int IsUndoneRole = Qt::UserRole + 1;  // muted
  static constexpr int IsNowRole = Qt::UserRole + 2;     // what the settings are at

  using QAbstractTableModel::QAbstractTableModel;

  // As the engine tells them. No rows where there are none.
  void setEntries(const vorn::PropertyList& entries);
  int rowOf(qint64 id) const;  // -1 where there is none
  int rowOfNow() const;        // the same

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  bool isBeforeAll(int row) const { return row == static_cast<int>(mEntries.size()); }
  QString textOf(int row, int column) const;

  vorn::PropertyList mEntries = vorn::PropertyList::array();
};

}  // namespace skarn
