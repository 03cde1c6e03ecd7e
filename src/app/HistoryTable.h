// The list of the history: one row is selected, and it carries the frame of the keyboard. Main thread.
#pragma once

#include <QTableView>

#include "widgets/RowFocus.h"

namespace skarn {

class HistoryTable : public QTableView {
  Q_OBJECT

 public:
  using QTableView::QTableView;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QTableView::paintEvent(event);
    drawRowFocus(*this);
  }
};

}  // namespace skarn
