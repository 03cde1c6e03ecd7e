// The Maintenance tab: versions of the driver and of the mouse's firmware, the wireless mouse's power settings, and the
// way back to the factory settings. It never talks to the engine; it keeps copies of the slices that its owner hands
// it, redraws from them, and asks its delegate for every change; its owner fills the two version fields. Main thread.
// Slices of a wrong shape are survived: they read as empty.
//
// Positions of the sliders count from 1, as the engine reads them:
//   "BrightnessBattery"      1 off, 2 dim, 3 normal, 4 bright
//   "PowerSaver"             sleep after 1, 5, 10, 15 minutes
//   "BatteryCriticalLevel"   flash at 5, 10, 15, 20, 25 percent
// Restoring gives 2, 3 and 1: dim, 10 minutes and 5 percent.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <string_view>

#include "maintenance/MouseMaintenanceDelegate.h"
#include "model/PropertyList.h"
#include "platform/WebPages.h"

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

  // What opens an address in the web browser; nothing opens without it.
  void setOpenAddress(OpenAddress openAddress) { mOpenAddress = std::move(openAddress); }

  // The settings that the last redraw showed.
  const vorn::PropertyList& mUserSettings() const { return userSettings; }

  // Text fields that the owner fills.
  QLabel* mFirmwareVersion() const;
  QLabel* mDriverVersion() const;

  // --- Handlers of the controls
  void lightBrightnessValueChanges();
  void sleepModeValueChanges();
  void flashScrollWheelValueChanges();
  void updateValue(int value, std::string_view forSetting);
  // Opens the support page.
  void clickCheckUpdates();
  // Asks in a sheet on the tab's window first.
  void clickRestoreSettings();

  // --- Drawing
  // Redraws from the slices; without device settings nothing changes (none), or the sliders stay where they are (an
  // empty dictionary).
  void updateUISettings();
  // Without a usable device the sliders and the restore button are disabled and say why.
  void enableControlsState(bool enabled);
  // Settings that the mouse in use lacks are set all the same, for one that has them; the tooltips say so. light: its
  // brightness on battery; power: the others. At first both are offered.
  void setMouseOffers(bool light, bool power);
  // Shows and animates the indicator beside the firmware version; stops and hides it.
  void startProgresIndicatorAnimation();
  void stopProgressIndicatorAnimation();

 private:
  void explain();
  void wireControls();
  void send(const vorn::PropertyList& settings);
  QWidget* sheetParent() const;
  void restoreProfile(const QString& name);
  void restoreSettings();

  std::unique_ptr<Ui::MouseMaintenanceController> mUi;
  vorn::PropertyList maintenanceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList maintenanceDict = vorn::PropertyList::dictionary();
  vorn::PropertyList defaultDict = vorn::PropertyList::dictionary();
  vorn::PropertyList userSettings = vorn::PropertyList::dictionary();
  MouseMaintenanceDelegate* mouseMaintenanceDelegate = nullptr;
  QPointer<QWidget> maintenanceWindow;
  OpenAddress mOpenAddress;
  bool mIsEnabled = true;
  bool mOffersLight = true;
  bool mOffersPower = true;
};

}  // namespace skarn
