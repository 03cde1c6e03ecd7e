// The walk over the controls: the drawn mouse asks for one after the other, and what the mouse in use sends next
// becomes that control. Then a summary. It closes as by Cancel when that mouse, or the engine, goes.
//
// What is pressed on the mouse may reach this window too, as a key or a click. So no key alone does anything here while
// a control is asked for: not Return, not the blank, not Escape. The buttons take clicks, and chords with Ctrl. The
// engine never takes the left and the right button, with which a person works the sheet. Main thread.
#pragma once

#include <QDialog>
#include <QTimer>
#include <chrono>
#include <map>
#include <memory>
#include <string>

#include "app/MouseChoice.h"

namespace skarn {

namespace Ui {
class TeachingSheet;
}

struct ControlDescriptor;

class TeachingSheet : public QDialog {
  Q_OBJECT

 public:
  // So that what was just taught is seen, and the rest of a turned wheel is not taken for the next control.
  static constexpr std::chrono::milliseconds rest{500};
  static constexpr std::chrono::milliseconds restOfWheel{1000};

  // Opens on the window and deletes itself when it closes. A mouse that can be taught is in use; the choice outlives
  // the sheet.
  static TeachingSheet* open(QWidget* window, MouseChoice& choice);
  ~TeachingSheet() override;

  void done(int result) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool isNext) override;
  bool event(QEvent* event) override;

 private:
  TeachingSheet(QWidget* window, MouseChoice& choice);
  void wire();
  void showMouse();
  void ask(std::size_t step);
  void skip();
  void back();
  // Nothing is asked for any more, for this reason; what is shown can be asked for again.
  void pause(const QString& why);
  void taught(const vorn::TaughtControl& taught);
  void note(const vorn::TaughtControl& taught);
  void showStep();
  void finish();
  void say(const QString& text);

  std::unique_ptr<Ui::TeachingSheet> mUi;
  MouseChoice& mChoice;
  QString mMouse;  // its ID
  std::size_t mStep = 0;
  bool mIsAsking = false;
  unsigned mQuestion = 0;                   // which one is asked
  bool mIsHeard = false;                    // whether the engine has taken it: what it tells before ends another one
  std::map<std::string, QString> mResults;  // by control: what it is now; empty where it has lost what it was
  QTimer mRest{this};
};

}  // namespace skarn
