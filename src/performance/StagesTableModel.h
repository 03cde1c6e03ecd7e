// The rows of the table of stages: a row is an index into the working copy of the stages.
#pragma once

#include <QAbstractTableModel>

#include "model/PropertyList.h"

namespace skarn {

class StagesTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { StageId, StageValue };
  // The role under which a column's header gives its identifier: "stage id" or "stage value".
  static constexpr int IdentifierRole = Qt::UserRole;

  using QAbstractTableModel::QAbstractTableModel;

  // stages: array of stage records. Another number of stages resets the model.
  void setStages(const vorn::PropertyList& stages);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  vorn::PropertyList mStages;
};

}  // namespace skarn
