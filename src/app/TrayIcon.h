// The program's item in the desktop's tray: what the mouse is doing, its profiles to switch between, and the way into
// the window and out of the program. Main thread.
#pragma once

#include <QMenu>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QSystemTrayIcon>

class QActionGroup;

namespace skarn {

struct TrayState {
  QString mouse;  // its battery, or why there is none, as one line of text; empty for nothing to say
  QStringList profiles;
  int active = -1;  // position in profiles; none of them
  bool canSwitch = false;
  friend bool operator==(const TrayState&, const TrayState&) = default;
};

class TrayIcon : public QObject {
  Q_OBJECT

 public:
  // Make it only while there is a tray: Qt looks for one once.
  explicit TrayIcon(const TrayState& state);

  void setState(const TrayState& state);
  // A message of the desktop beside the icon, for some seconds.
  void say(const QString& title, const QString& text);
  const QMenu& menu() const { return mMenu; }

 signals:
  void openAsked();
  void quitAsked();
  // name: what stood in the menu.
  void profileChosen(int profile, const QString& name);

 private:
  void fill();

  TrayState mState;
  QMenu mMenu;
  QActionGroup* mProfiles = nullptr;  // the menu's child
  QSystemTrayIcon mIcon;
};

// What makes a menu of the tray show the text: there a single "_" marks a letter, and two are one
// ("com.canonical.dbusmenu").
QString trayMenuText(const QString& text);

}  // namespace skarn
