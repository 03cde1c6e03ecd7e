// The Profiles tab: the device's profiles in a table, with the active one marked and selected. It never talks to the
// engine; it keeps copies of the slices that its owner hands it and redraws from them. Main thread. Slices of a wrong
// shape are survived: what cannot be read shows nothing.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "model/PropertyList.h"
#include "profiles/ProfileControllerDelegate.h"

class QTableView;

namespace skarn {

class ProfilesTableModel;

namespace Ui {
class MouseProfilesController;
}

class MouseProfilesController : public QWidget {
  Q_OBJECT

 public:
  explicit MouseProfilesController(QWidget* parent = nullptr);
  ~MouseProfilesController() override;

  // --- What the owner hands over. Delegate and window are not owned.
  const vorn::PropertyList& mProfileSettingsDict() const { return profileSettingsDict; }
  void setMProfileSettingsDict(const vorn::PropertyList& profile) { profileSettingsDict = profile; }
  const vorn::PropertyList& mDeviceSettingsDict() const { return deviceSettingsDict; }
  void setMDeviceSettingsDict(const vorn::PropertyList& deviceSettings) { deviceSettingsDict = deviceSettings; }
  const vorn::PropertyList& mProfilesArray() const { return profilesArray; }
  void setMProfilesArray(const vorn::PropertyList& profiles) { profilesArray = profiles; }
  const vorn::PropertyList& mDefaultDict() const { return defaultDict; }
  void setMDefaultDict(const vorn::PropertyList& defaultProfile) { defaultDict = defaultProfile; }
  ProfileControllerDelegate* mProfileDelegate() const { return profileDelegate; }
  void setMProfileDelegate(ProfileControllerDelegate* delegate) { profileDelegate = delegate; }
  QWidget* mProfilesWindow() const { return profilesWindow; }
  void setMProfilesWindow(QWidget* window) { profilesWindow = window; }

  // The table of profiles; a row is a profile ID. At most one row is selected.
  QTableView* mProfilesTableView() const;

  // --- Drawing
  // Redraws and selects the active profile's row, no row when "ActiveProfile" is outside the list.
  void updateUISettings();
  // Reloads the table; the selected row stays selected by its index.
  void refreshTableDisplay();
  void enableControlsState(bool enabled);

 private:
  int activeProfile() const;  // -1 when there is none in the list
  void selectRow(int row);

  std::unique_ptr<Ui::MouseProfilesController> mUi;
  ProfilesTableModel* mModel;
  vorn::PropertyList profileSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList deviceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList profilesArray = vorn::PropertyList::array();
  vorn::PropertyList defaultDict = vorn::PropertyList::dictionary();
  ProfileControllerDelegate* profileDelegate = nullptr;
  QPointer<QWidget> profilesWindow;
};

}  // namespace skarn
