#include "app/TrayControls.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <utility>

#include "app/MouseMainWindow.h"
#include "app/TrayHost.h"
#include "platform/Localization.h"
#include "ui_MouseMainWindow.h"
#include "widgets/PullDownButton.h"

namespace skarn {

TrayControls::TrayControls(MouseMainWindow& window, WindowMemory memory) : mWindow(window), mMemory(std::move(memory)) {
  PullDownButton& button = *window.ui().mWindowSettings;
  button.setItems({{.tag = 0, .title = localized("lkeyTrayShow"), .isCheckable = true}}, QStringLiteral("mShowInTray"),
                  [this](int) { want(mShowInTray->isChecked()); });
  mShowInTray = taggedItems(*button.menu()).first();
  button.menu()->setToolTipsVisible(true);
  connect(button.menu(), &QMenu::aboutToShow, this, &TrayControls::lookForTray);
  window.installEventFilter(this);
  refresh();
}

TrayControls::~TrayControls() {
  mWindow.ui().mWindowSettings->menu()->clear();
}

void TrayControls::begin() {
  mIsWanted = mMemory.isInTray();
  if (mIsWanted) lookForTray();
}

void TrayControls::setState(const TrayState& state) {
  mState = state;
  if (mIcon) mIcon->setState(state);
}

void TrayControls::want(bool isWanted) {
  mIsWanted = isWanted;
  mMemory.setInTray(isWanted);
  refresh();
}

void TrayControls::lookForTray() {
  if (!mHost) {
    mHost = std::make_unique<TrayHost>();
    connect(mHost.get(), &TrayHost::changed, this, &TrayControls::refresh);
  }
  refresh();
}

void TrayControls::refresh() {
  const bool isThere = mHost && mHost->isThere();
  mShowInTray->setChecked(mIsWanted);
  // What was wanted where there was a tray can be given up where there is none.
  mShowInTray->setEnabled(isThere || mIsWanted);
  mShowInTray->setToolTip(localized(isThere ? "lkeyTrayShowTip" : "lkeyTrayMissing"));
  if (mIsWanted && isThere == (mIcon != nullptr)) return;
  mIcon.reset();
  if (!mIsWanted || !isThere) return;
  mIcon = std::make_unique<TrayIcon>(mState);
  connect(mIcon.get(), &TrayIcon::openAsked, &mWindow, [this] { mWindow.comeToFront(); });
  connect(mIcon.get(), &TrayIcon::profileChosen, this, &TrayControls::profileChosen);
  // A quit that asks the windows could be refused by a sheet.
  connect(mIcon.get(), &TrayIcon::quitAsked, qApp, [] { QCoreApplication::exit(); });
}

bool TrayControls::eventFilter(QObject* watched, QEvent* event) {
  // The desktop's button alone: who quits by a key, or ends the session, means it.
  if (event->type() == QEvent::Close && event->spontaneous() && mIcon) {
    event->ignore();
    hideWindow();
    return true;
  }
  if (event->type() == QEvent::Show) QApplication::setQuitOnLastWindowClosed(true);
  return QObject::eventFilter(watched, event);
}

void TrayControls::hideWindow() {
  // Another window of the program may be closed meanwhile.
  QApplication::setQuitOnLastWindowClosed(false);
  mWindow.hide();
  if (mHasExplained || mMemory.isTrayExplained()) return;
  mHasExplained = true;
  mMemory.setTrayExplained();
  mIcon->say(localized("lkeyTrayHiddenTitle"), localized("lkeyTrayHiddenText"));
}

}  // namespace skarn
