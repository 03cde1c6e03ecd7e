// The rows of the table of macros: a row is a macro ID. Names can be edited. Main thread.
#pragma once

#include <QAbstractTableModel>
#include <map>

#include "model/PropertyList.h"

namespace skarn {

class MacrosTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Name, Events };

  using QAbstractTableModel::QAbstractTableModel;

  // macros: array of macro records. Rows are added and removed at the end, so that a selection and an open editor stay
  // at their row.
  void setMacros(const vorn::PropertyList& macros);
  // What the macro has where its record does not tell yet; until other macros are set.
  void setEventCount(int macro, int events);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // Changes nothing itself; says nameEdited.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 signals:
  void nameEdited(int row, const QString& text);

 private:
  vorn::PropertyList mMacros;
  std::map<int, int> mEventCounts;  // by macro; those that were told
};

}  // namespace skarn
