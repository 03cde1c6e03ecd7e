// A separator of one pixel in the palette's hairline colour, as wide as its place. Screen readers are told
// that it is one.
#pragma once

#include <QWidget>

namespace skarn {

class Hairline : public QWidget {
  Q_OBJECT

 public:
  explicit Hairline(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace skarn
