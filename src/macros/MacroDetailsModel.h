// The lines of a macro as rows: texts exactly as they were supplied, in one column. Delays (odd rows) can be edited, in
// milliseconds; what is entered is told and changes nothing here. Main thread.
#pragma once

#include <QAbstractListModel>
#include <optional>
#include <vector>

#include "model/MacroLineLayout.h"
#include "model/PropertyList.h"

namespace skarn {

using vorn::PairLanes;

class MacroDetailsModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    // Milliseconds from the first event, of an event; none of a delay.
    ElapsedRole = Qt::UserRole,
    LanesRole,  // PairLanes
  };

  using QAbstractListModel::QAbstractListModel;

  // lines: array of strings; what is no string is an empty row.
  void setLines(const vorn::PropertyList& lines);  // resets the model
  void appendLines(const vorn::PropertyList& lines);
  vorn::PropertyList lines() const { return vorn::PropertyList::array(mLines); }
  // The row of the other event of a pair; nothing where it has none.
  std::optional<int> partnerOf(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  // For editing: the milliseconds of a delay.
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  std::vector<vorn::PropertyList> mLines;
  vorn::MacroLineLayout mLayout;
};

}  // namespace skarn

Q_DECLARE_METATYPE(vorn::PairLanes)
