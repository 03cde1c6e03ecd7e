// The number of a control, on a small rounded ground that is as wide for one digit as for two.
#pragma once

#include <QLabel>

namespace skarn {

class NumberBadge : public QLabel {
  Q_OBJECT

 public:
  explicit NumberBadge(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace skarn
