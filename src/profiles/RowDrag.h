// A row of the profiles table that the mouse has pressed, and perhaps drags to another place. It belongs to the profile
// that was pressed: where profiles come, go or change their places meanwhile, the drag is over and moves none. Main
// thread.
#pragma once

#include <QPoint>
#include <optional>

#include "model/PropertyList.h"
#include "model/RememberedRecord.h"

class QPainter;
class QTableView;

namespace skarn {

class RowDrag {
 public:
  // position: in the viewport, where the row was pressed. The table outlives the drag.
  RowDrag(const QTableView& table, const vorn::PropertyList& profiles, int row, const QPoint& position);

  // A drag begins some pixels from the press.
  void moveTo(const QPoint& position);
  bool hasBegun() const { return mHasBegun; }
  // The row that was pressed, and where it would go now; nothing where it would stay, or where the list has changed.
  struct Move {
    int from;
    int to;
  };
  std::optional<Move> move(const vorn::PropertyList& profiles) const;
  // Where the pressed profile stands now, for a press that was a click; -1 when it is gone.
  int pressedRow(const vorn::PropertyList& profiles) const;
  const QPoint& pressedAt() const { return mPressedAt; }

  // Marks the row that is dragged, and the gap that it would go to.
  void paint(QPainter& painter, const vorn::PropertyList& profiles) const;

 private:
  bool isSameList(const vorn::PropertyList& profiles) const;
  // The gap above the row of this number.
  int gap() const;

  const QTableView& mTable;
  vorn::PropertyList mNames;
  vorn::RememberedRecord mProfile;
  int mRow;
  QPoint mPressedAt;
  QPoint mPosition;
  bool mHasBegun = false;
};

}  // namespace skarn
