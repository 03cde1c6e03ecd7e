// Counts the paints of a widget.
#pragma once

#include <QEvent>
#include <QWidget>

namespace skarn::test {

class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
  int paints = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
};

}  // namespace skarn::test
