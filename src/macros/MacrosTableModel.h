// The rows of the table of macros: a row is a macro ID.
#pragma once

#include <QAbstractTableModel>

#include "model/PropertyList.h"

namespace skarn {

class MacrosTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Name, Events };

  using QAbstractTableModel::QAbstractTableModel;

  // macros: array of macro records. Resets the model.
  void setMacros(const vorn::PropertyList& macros);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  vorn::PropertyList mMacros;
};

}  // namespace skarn
