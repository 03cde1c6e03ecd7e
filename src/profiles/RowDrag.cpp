#include "profiles/RowDrag.h"

#include <QApplication>
#include <QPainter>
#include <QTableView>

#include "model/ProfileOrder.h"
#include "model/SettingsKeys.h"

namespace skarn {

namespace {

constexpr int lineWidth = 2;
constexpr int knobSize = 8;
constexpr int veilAlpha = 150;

}  // namespace

RowDrag::RowDrag(const QTableView& table, const vorn::PropertyList& profiles, int row, const QPoint& position)
    : mTable(table),
      mNames(vorn::profileNames(profiles)),
      mProfile(profiles, row, vorn::keys::ProfileName),
      mRow(row),
      mPressedAt(position),
      mPosition(position) {}

void RowDrag::moveTo(const QPoint& position) {
  mPosition = position;
  if ((position - mPressedAt).manhattanLength() >= QApplication::startDragDistance()) mHasBegun = true;
}

bool RowDrag::isSameList(const vorn::PropertyList& profiles) const {
  return vorn::profileNames(profiles) == mNames;
}

int RowDrag::gap() const {
  const int count = mTable.model()->rowCount();
  for (int row = 0; row < count; ++row) {
    if (mPosition.y() < mTable.visualRect(mTable.model()->index(row, 0)).center().y()) return row;
  }
  return count;
}

std::optional<RowDrag::Move> RowDrag::move(const vorn::PropertyList& profiles) const {
  // Beside the table it is let go of for nothing.
  if (!mHasBegun || !isSameList(profiles) || !mTable.viewport()->rect().contains(mPosition)) return std::nullopt;
  const int to = gap() > mRow ? gap() - 1 : gap();
  return to == mRow ? std::nullopt : std::optional(Move{mRow, to});
}

int RowDrag::pressedRow(const vorn::PropertyList& profiles) const {
  return static_cast<int>(mProfile.placeIn(profiles).value_or(-1));
}

void RowDrag::paint(QPainter& painter, const vorn::PropertyList& profiles) const {
  if (!mHasBegun || !isSameList(profiles)) return;
  const auto rowRect = [this](int row) {
    QRect rect = mTable.visualRect(mTable.model()->index(row, 0));
    rect.setLeft(0);
    rect.setRight(mTable.viewport()->width() - 1);
    return rect;
  };
  QColor veil = mTable.palette().color(QPalette::Window);
  veil.setAlpha(veilAlpha);
  painter.fillRect(rowRect(mRow), veil);
  const auto there = move(profiles);
  if (!there) return;
  const int gapY = there->to > there->from ? rowRect(there->to).bottom() : rowRect(there->to).top();
  // At the edge of the table the whole knob is to be seen.
  const int y = qBound(knobSize / 2 + 1, gapY, mTable.viewport()->height() - knobSize / 2 - 1);
  const QColor mark = mTable.palette().color(QPalette::Text);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(QRect(knobSize, y - lineWidth / 2, mTable.viewport()->width() - knobSize, lineWidth), mark);
  painter.setPen(QPen(mark, lineWidth));
  painter.drawEllipse(QRectF(1, y - knobSize / 2.0 + 0.5, knobSize - 1, knobSize - 1));
}

}  // namespace skarn
