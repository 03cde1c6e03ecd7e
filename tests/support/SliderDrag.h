// A drag of a slider with the mouse, in its parts. Positions are values of the slider; the pointer goes to the pixel
// that is nearest.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QSlider>
#include <QStyleOptionSlider>

namespace skarn::test {

// The middle of the handle when it stands at a position.
inline QPoint handleAt(const QSlider& slider, int position) {
  QStyleOptionSlider option;
  option.initFrom(&slider);
  option.orientation = slider.orientation();
  option.minimum = slider.minimum();
  option.maximum = slider.maximum();
  option.sliderPosition = position;
  option.subControls = QStyle::SC_All;
  return slider.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider).center();
}

inline void sendMouse(QSlider& slider, QEvent::Type type, int position, Qt::MouseButton button,
                      Qt::MouseButtons buttons) {
  const QPoint at = handleAt(slider, position);
  QMouseEvent event(type, at, slider.mapToGlobal(at), button, buttons, Qt::NoModifier);
  QApplication::sendEvent(&slider, &event);
}

inline void pressSlider(QSlider& slider, int position) {
  sendMouse(slider, QEvent::MouseButtonPress, position, Qt::LeftButton, Qt::LeftButton);
}

inline void dragSlider(QSlider& slider, int position) {
  sendMouse(slider, QEvent::MouseMove, position, Qt::NoButton, Qt::LeftButton);
}

inline void releaseSlider(QSlider& slider, int position) {
  sendMouse(slider, QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton);
}

}  // namespace skarn::test
