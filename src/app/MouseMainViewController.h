// The content of the main window; a view without behaviour of its own.
#pragma once

#include <QWidget>

namespace skarn {

class MouseMainViewController : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;
};

}  // namespace skarn
