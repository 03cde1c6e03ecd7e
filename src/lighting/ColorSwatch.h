// A colour of the light, painted on a rounded ground with a hairline around it. Nothing but the hairline without one.
#pragma once

#include <QColor>
#include <QLabel>

namespace skarn {

class ColorSwatch : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  // An invalid colour stands for none.
  QColor color() const { return mColor; }
  void setColor(const QColor& color);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor mColor;
};

}  // namespace skarn
