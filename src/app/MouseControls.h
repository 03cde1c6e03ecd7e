// What the window offers for the choice of the mouse: the picture in the header as a button, the sheet behind it, and
// once, where a mouse is plugged in and the virtual one is in use, a line that asks. Main thread.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include "app/WindowMemory.h"

class QDialog;

namespace skarn {

class MouseChoice;
class MouseMainWindow;
class MouseSheet;
struct MouseDescription;
struct StripButton;

class MouseControls : public QObject {
  Q_OBJECT

 public:
  // Both outlive the controls.
  MouseControls(MouseMainWindow& window, MouseChoice& choice, WindowMemory memory);
  ~MouseControls() override;

  // Whether there is anything to choose from.
  bool canChoose() const;
  // Opens the sheet, unless nothing can be chosen.
  void openSheet();
  // nullptr while it is closed.
  QDialog* sheet() const;
  // For the strip, where no mouse is there. Without a text where nothing can be chosen.
  StripButton stripButton() const;
  // While a macro is recorded the header's button is off, and nothing is offered.
  void setRecording(bool isRecording);

 signals:
  // canChoose() may be different now.
  void changed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void refresh();
  QString toolTip() const;
  // Why nothing can be chosen; empty where it can.
  QString obstacle() const;
  // A mouse that could be used in place of the virtual one; nullptr where there is none, or nothing can be chosen.
  const MouseDescription* better() const;
  void offerOnce();
  // Takes the offer back where it is no longer one.
  void withdrawOffer();

  MouseMainWindow& mWindow;
  MouseChoice& mChoice;
  WindowMemory mMemory;
  QPointer<MouseSheet> mSheet;
  bool mIsRecording = false;
  bool mHasOffered = false;  // in this run
  QString mOffer;            // as the line says it; empty while it offers nothing
};

}  // namespace skarn
