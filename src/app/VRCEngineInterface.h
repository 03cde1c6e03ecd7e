// Looks after the engine's installation.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

namespace skarn {

class VRCDeviceManager;

class VRCEngineInterface {
 public:
  // engineFramework: the folder whose absence means that the engine is not installed.
  explicit VRCEngineInterface(
      VRCDeviceManager* deviceManager = nullptr,
      QString engineFramework = QStringLiteral("/Library/Frameworks/VrCoreEngine.framework"));

  QWidget* mParentWindow() const { return parentWindow; }
  void setMParentWindow(QWidget* window) { parentWindow = window; }
  VRCDeviceManager* mDeviceManagerInstance() const { return deviceManagerInstance; }

  // Tells the user in an alert on the parent window when the engine's folder is missing. Start-up does not call it.
  void checkEngine() const;

 private:
  VRCDeviceManager* deviceManagerInstance;  // not owned
  QString mEngineFramework;
  QPointer<QWidget> parentWindow;
};

}  // namespace skarn
