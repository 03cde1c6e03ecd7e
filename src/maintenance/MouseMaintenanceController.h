// The Maintenance tab: versions of the driver and of the mouse's firmware, and the wireless mouse's power settings. It
// never talks to the engine; it keeps copies of the slices that its owner hands it and redraws from them, and its
// owner fills the two version fields. Main thread. Slices of a wrong shape are survived: what cannot be read shows
// nothing.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "maintenance/MouseMaintenanceDelegate.h"
#include "model/PropertyList.h"

class QLabel;

namespace skarn {

namespace Ui {
class MouseMaintenanceController;
}

class MouseMaintenanceController : public QWidget {
  Q_OBJECT

 public:
  explicit MouseMaintenanceController(QWidget* parent = nullptr);
  ~MouseMaintenanceController() override;

  // --- What the owner hands over. Delegate and window are not owned.
  const vorn::PropertyList& mMaintenanceSettingsDict() const { return maintenanceSettingsDict; }
  void setMMaintenanceSettingsDict(const vorn::PropertyList& deviceSettings) {
    maintenanceSettingsDict = deviceSettings;
  }
  const vorn::PropertyList& mMaintenanceDict() const { return maintenanceDict; }
  void setMMaintenanceDict(const vorn::PropertyList& profile) { maintenanceDict = profile; }
  const vorn::PropertyList& mDefaultDict() const { return defaultDict; }
  void setMDefaultDict(const vorn::PropertyList& defaultProfile) { defaultDict = defaultProfile; }
  MouseMaintenanceDelegate* mMouseMaintenanceDelegate() const { return mouseMaintenanceDelegate; }
  void setMMouseMaintenanceDelegate(MouseMaintenanceDelegate* delegate) { mouseMaintenanceDelegate = delegate; }
  QWidget* mMaintenanceWindow() const { return maintenanceWindow; }
  void setMMaintenanceWindow(QWidget* window) { maintenanceWindow = window; }

  // Text fields that the owner fills.
  QLabel* mFirmwareVersion() const;
  QLabel* mDriverVersion() const;

  // --- Drawing
  // Redraws from the slices; without device settings (none) nothing changes.
  void updateUISettings();
  void enableControlsState(bool enabled);
  // Shows and animates the indicator beside the firmware version; stops and hides it.
  void startProgresIndicatorAnimation();
  void stopProgressIndicatorAnimation();

 private:
  std::unique_ptr<Ui::MouseMaintenanceController> mUi;
  vorn::PropertyList maintenanceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList maintenanceDict = vorn::PropertyList::dictionary();
  vorn::PropertyList defaultDict = vorn::PropertyList::dictionary();
  MouseMaintenanceDelegate* mouseMaintenanceDelegate = nullptr;
  QPointer<QWidget> maintenanceWindow;
};

}  // namespace skarn
