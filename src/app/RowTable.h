// A list of which one row is selected, and carries the frame of the keyboard. Main thread.
#pragma once

#include <QTableView>

#include "widgets/RowFocus.h"

namespace skarn {

class RowTable : public QTableView {
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
