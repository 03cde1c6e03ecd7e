// A label for numbers that change: every digit takes the same width, so that the text does not jitter, whatever the
// font. One line, shown as it stands.
#pragma once

#include <QLabel>

namespace skarn {

class FigureLabel : public QLabel {
  Q_OBJECT

 public:
  explicit FigureLabel(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace skarn
