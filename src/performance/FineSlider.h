// A slider with more values than pixels, for values that people think of in whole steps. Its range begins at a multiple
// of its single step. Whoever moves it with the mouse, the keys or the wheel comes to multiples of the single step,
// from whatever value it stood at: half a step to the next multiple counts as one. A press on its handle takes hold of
// it and leaves the value exactly as it is, where a plain slider would round it to the pixel under the pointer; values
// set by the program stay exact. A notch of the wheel is a single step, with Ctrl or Shift a page step. A sheet or an
// alert that opens over the window ends a drag where it is: the release of the mouse would never arrive.
#pragma once

#include <QSlider>
#include <optional>

namespace skarn {

class FineSlider : public QSlider {
  Q_OBJECT

 public:
  explicit FineSlider(QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool isOnHandle(const QPoint& point) const;
  // Where so much of a step leads to from the value in force.
  int stepped(int step) const;
  // Moves what an action of the user has chosen to a whole step, before it becomes the value.
  void keepToSteps(int action);

  bool mIsMovedByMouse = false;
  std::optional<QPoint> mPressed;  // the handle was taken hold of there, and has not moved since
  int mWheelAngle = 0;             // turned since the last whole notch, in eighths of a degree
};

}  // namespace skarn
