// The lines of a macro as rows: texts exactly as they were supplied, in one column. Main thread.
#pragma once

#include <QAbstractListModel>
#include <vector>

#include "model/PropertyList.h"

namespace skarn {

class MacroDetailsModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  // lines: array of strings; what is no string is an empty row.
  void setLines(const vorn::PropertyList& lines);  // resets the model
  void appendLines(const vorn::PropertyList& lines);
  vorn::PropertyList lines() const { return vorn::PropertyList::array(mLines); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::vector<vorn::PropertyList> mLines;
};

}  // namespace skarn
