// A horizontal slider with labelled ticks: a container that places a QSlider and, under their ticks, the QLabels that
// name positions. In a layout file, put the slider and the labels into it (no layout inside); a label's position on
// the slider's scale is its dynamic property "position" (an integer). Labels are centred under their tick, those at the
// ends aligned with the slider's ends as far as they fit; a label that would overlap its neighbour is the layout's
// error. The slider keeps its keyboard and wheel steps.
#pragma once

#include <QWidget>

class QLabel;
class QSlider;

namespace skarn {

class SliderScale : public QWidget {
  Q_OBJECT

 public:
  static constexpr const char* positionProperty = "position";

  explicit SliderScale(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QSlider* slider() const;
  QList<QLabel*> labels() const;
  // Where the middle of the slider's handle stands at a position, in this widget's coordinates.
  int middleAt(const QSlider& slider, int position) const;
  void placeChildren();
};

}  // namespace skarn
