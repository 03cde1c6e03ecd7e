// The rows of the list of mice: name, connection, and what there is to know at a glance. Main thread.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "app/MouseDescription.h"

namespace skarn {

class MouseModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Name, Connection, State, columnCountOfMice };

  using QAbstractTableModel::QAbstractTableModel;

  void setMice(const std::vector<MouseDescription>& mice);
  // nullptr outside.
  const MouseDescription* mouseAt(int row) const;
  int rowOf(const QString& id) const;  // -1 where there is none
  int rowInUse() const;                // the same

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  std::vector<MouseDescription> mMice;
};

}  // namespace skarn
