// The rows of the table of stages: a row is an index into the working copy of the stages.
#pragma once

#include <QAbstractTableModel>

#include "model/PropertyList.h"

namespace skarn {

class StagesTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { StageId, StageValue };
  // The role under which a column's header gives its identifier, one of those below.
  static constexpr int IdentifierRole = Qt::UserRole;
  static constexpr const char* idColumn = "stage id";
  static constexpr const char* valueColumn = "stage value";

  using QAbstractTableModel::QAbstractTableModel;

  // stages: array of stage records. Another number of stages resets the model.
  void setStages(const vorn::PropertyList& stages);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  // column: an identifier.
  QVariant tableViewObjectValueForTableColumn(QLatin1String column, int row) const;

  vorn::PropertyList mStages;
};

}  // namespace skarn
