// A line that says for some seconds what has just been done, such as where a file went, and asks for nothing. In a
// layout it takes the place of the space beside the buttons: it is as wide as that whether it says something or not,
// cuts a longer text in the middle and has the whole as its tooltip. Screen readers are told what it says. Main thread.
#pragma once

#include <QTimer>
#include <chrono>

#include "widgets/ElidedLabel.h"

namespace skarn {

class Notice : public ElidedLabel {
  Q_OBJECT

 public:
  static constexpr std::chrono::seconds lifetime{10};

  explicit Notice(QWidget* parent = nullptr);

  // Shows the text as it stands, in the place of what is shown, and takes it away after the lifetime.
  void say(const QString& text);
  // Takes away what is shown.
  void fallSilent();

 private:
  QTimer mTimer{this};
};

}  // namespace skarn
