#include "app/TrayIcon.h"

#include <QAction>
#include <QActionGroup>

#include "platform/Images.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"

namespace skarn {

QString trayMenuText(const QString& text) {
  QString result = text;
  result.replace('_', QStringLiteral("__"));
  // Qt makes a mark of the first one, whatever follows.
  return text.contains('&') ? '&' + result : result;
}

TrayIcon::TrayIcon(const TrayState& state) : mState(state), mIcon(applicationIcon()) {
  fill();
  mIcon.setContextMenu(&mMenu);
  connect(&mIcon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
    if (reason != QSystemTrayIcon::Context) emit openAsked();
  });
  connect(&mIcon, &QSystemTrayIcon::messageClicked, this, &TrayIcon::openAsked);
  mIcon.show();
}

void TrayIcon::setState(const TrayState& state) {
  if (state == mState) return;
  mState = state;
  fill();
}

void TrayIcon::say(const QString& title, const QString& text) {
  mIcon.showMessage(title, text, applicationIcon());
}

void TrayIcon::fill() {
  QStringList tip{QStringLiteral("Skarn")};
  mMenu.clear();
  if (!mState.mouse.isEmpty()) {
    tip << mState.mouse;
    mMenu.addAction(trayMenuText(mState.mouse))->setEnabled(false);
    mMenu.addSeparator();
  }
  delete mProfiles;
  mProfiles = new QActionGroup(&mMenu);
  for (qsizetype i = 0; i < mState.profiles.size(); ++i) {
    const QString& name = mState.profiles[i];
    const int profile = static_cast<int>(i);
    QAction* action = mMenu.addAction(trayMenuText(shownName(name)));
    // Later: a change of profile fills the menu anew.
    connect(
        action, &QAction::triggered, this, [this, profile, name] { emit profileChosen(profile, name); },
        Qt::QueuedConnection);
    action->setCheckable(true);
    action->setChecked(profile == mState.active);
    action->setEnabled(mState.canSwitch);
    mProfiles->addAction(action);
    if (profile == mState.active) tip.insert(1, shownName(name));
  }
  if (!mState.profiles.isEmpty()) mMenu.addSeparator();
  mMenu.addAction(trayMenuText(localized("lkeyTrayOpen")), this, &TrayIcon::openAsked);
  mMenu.addAction(trayMenuText(localized("lkeyTrayQuit")), this, &TrayIcon::quitAsked);
  mIcon.setToolTip(tip.join(QStringLiteral("\n")));
}

}  // namespace skarn
