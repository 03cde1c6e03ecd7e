// The window and the desktop's tray: the small menu of the footer with its box, the item in the tray while the box is
// ticked and there is a tray, and the close button, which then only hides the window. Main thread.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "app/TrayIcon.h"
#include "app/WindowMemory.h"

class QAction;

namespace skarn {

class MouseMainWindow;
class TrayHost;

class TrayControls : public QObject {
  Q_OBJECT

 public:
  // The window outlives the controls.
  TrayControls(MouseMainWindow& window, WindowMemory memory);
  ~TrayControls() override;

  // Shows the item if it was wanted in an earlier run. Nothing is asked of the desktop before, or before the menu
  // opens.
  void begin();
  void setState(const TrayState& state);
  // nullptr while nothing stands in the tray.
  const TrayIcon* icon() const { return mIcon.get(); }

 signals:
  // name: that of the profile, as it was shown.
  void profileChosen(int profile, const QString& name);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void want(bool isWanted);
  void lookForTray();
  void refresh();
  void hideWindow();

  MouseMainWindow& mWindow;
  WindowMemory mMemory;
  QAction* mShowInTray;  // the item of the menu
  std::unique_ptr<TrayHost> mHost;
  std::unique_ptr<TrayIcon> mIcon;
  TrayState mState;
  bool mIsWanted = false;
  bool mHasExplained = false;  // in this run
};

}  // namespace skarn
