// Looks after the engine's installation.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <cstdint>

namespace skarn {

class VRCDeviceManager;

class VRCEngineInterface {
 public:
  // engineFramework: the folder whose absence means that the engine is not installed.
  explicit VRCEngineInterface(VRCDeviceManager* deviceManager = nullptr,
                              QString engineFramework = QStringLiteral("/Library/Frameworks/VrCoreEngine.framework"));

  QWidget* mParentWindow() const { return parentWindow; }
  void setMParentWindow(QWidget* window) { parentWindow = window; }
  VRCDeviceManager* mDeviceManagerInstance() const { return deviceManagerInstance; }
  std::uint32_t mDevice() const { return device; }  // never set

  // Tells the user in an alert on the parent window when the engine's folder is missing. Start-up does not call it.
  void checkEngine() const;

 private:
  VRCDeviceManager* deviceManagerInstance;  // not owned
  std::uint32_t device = 0;
  QString mEngineFramework;
  QPointer<QWidget> parentWindow;
};

}  // namespace skarn
