// The number of a control, on a small rounded ground that is as wide for one digit as for two. The ground is quiet, or
// filled.
#pragma once

#include <QLabel>

namespace skarn {

class NumberBadge : public QLabel {
  Q_OBJECT

 public:
  explicit NumberBadge(QWidget* parent = nullptr);

  void setFilled(bool filled);
  bool isFilled() const { return mIsFilled; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool mIsFilled = false;
};

}  // namespace skarn
