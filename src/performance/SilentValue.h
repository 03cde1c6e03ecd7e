// Values that the program gives to a control, which are no act of the user.
#pragma once

#include <QSignalBlocker>
#include <QSlider>

namespace skarn {

// Moves the slider to the value, or to the end of its range that is nearest, without its signals.
inline void setValueSilently(QSlider& slider, int value) {
  const QSignalBlocker silence(slider);
  slider.setValue(value);
}

}  // namespace skarn
