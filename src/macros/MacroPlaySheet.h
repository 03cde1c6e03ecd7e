// Plays a macro into a field of its own, with its delays, so that it can be tried: nothing of it reaches the desktop.
// Begins when the sheet opens; "Stop", Escape and closing the sheet end it. Main thread.
#pragma once

#include <QDialog>
#include <QTimer>
#include <cstddef>
#include <memory>

#include "model/MacroEdits.h"

namespace skarn {

namespace Ui {
class MacroPlaySheet;
}

class MacroPlaySheet : public QDialog {
  Q_OBJECT

 public:
  // A sheet of the window that deletes itself. name: the macro's.
  MacroPlaySheet(QWidget* window, const QString& name, vorn::MacroEventList events);
  ~MacroPlaySheet() override;

  bool isPlaying() const { return mIsPlaying; }

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void start();
  void stop();
  void step();
  void setPlaying(bool isPlaying);
  void tell(const QString& text);

  std::unique_ptr<Ui::MacroPlaySheet> mUi;
  vorn::MacroEventList mEvents;
  std::size_t mNext = 0;  // the event that comes next
  bool mIsPlaying = false;
  QTimer mTimer;
};

}  // namespace skarn
