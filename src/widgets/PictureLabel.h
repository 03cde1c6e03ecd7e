// A label with a picture that shrinks with its place and keeps its proportions; it never grows beyond its own size.
#pragma once

#include <QLabel>

namespace skarn {

class PictureLabel : public QLabel {
  Q_OBJECT

 public:
  explicit PictureLabel(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override { return {1, 1}; }

 protected:
  // Where the picture is drawn, in the label's coordinates; empty without one.
  QRect shownRect() const;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace skarn
