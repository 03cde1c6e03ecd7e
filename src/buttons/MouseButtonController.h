// The Buttons tab: the 27 programmable controls of the mouse with what each of them does in the current profile and
// keymap. It never talks to the engine; it keeps copies of the slices that its owner hands it and redraws from them.
// Main thread. Slices of a wrong shape are survived: what cannot be read shows nothing.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <array>
#include <memory>

#include "buttons/ControlTable.h"
#include "buttons/MouseButtonDelegate.h"
#include "model/NotificationCenter.h"
#include "model/PropertyList.h"

namespace skarn {

class ControlRow;

namespace Ui {
class MouseButtonController;
}

class MouseButtonController : public QWidget {
  Q_OBJECT

 public:
  explicit MouseButtonController(QWidget* parent = nullptr);
  ~MouseButtonController() override;

  // --- What the owner hands over. Delegate, window and centre are not owned.
  const vorn::PropertyList& mButtonsSettingsDict() const { return buttonsSettingsDict; }
  void setMButtonsSettingsDict(const vorn::PropertyList& profile) { buttonsSettingsDict = profile; }
  const vorn::PropertyList& mAllProfiles() const { return allProfiles; }
  void setMAllProfiles(const vorn::PropertyList& profiles) { allProfiles = profiles; }
  const vorn::PropertyList& mAllMacros() const { return allMacros; }
  void setMAllMacros(const vorn::PropertyList& macros) { allMacros = macros; }
  const vorn::PropertyList& mDeviceSettingsDict() const { return deviceSettingsDict; }
  void setMDeviceSettingsDict(const vorn::PropertyList& deviceSettings) { deviceSettingsDict = deviceSettings; }
  const vorn::PropertyList& mDefaultDict() const { return defaultDict; }
  void setMDefaultDict(const vorn::PropertyList& defaultSettings) { defaultDict = defaultSettings; }
  MouseButtonDelegate* mButtonDelegate() const { return buttonDelegate; }
  void setMButtonDelegate(MouseButtonDelegate* delegate) { buttonDelegate = delegate; }
  QWidget* mButtonWindow() const { return buttonWindow; }
  void setMButtonWindow(QWidget* window) { buttonWindow = window; }
  vorn::NotificationCenter* mNotificationCenter() const { return notificationCenter; }
  void setMNotificationCenter(vorn::NotificationCenter* center) { notificationCenter = center; }

  // --- Drawing
  // Fills what each control does from the groups that the last updateUISettings took over.
  void populateUISettings();
  // Takes the groups and the active keymap out of the profile record and redraws the tab.
  void updateUISettings();
  void enableControlsState(bool enabled);
  // Shows the mouse with the keymap's number; a keymap outside 0 to 7 leaves the picture as it is.
  void changeKeymapImage(int keymap);

  // --- Clean-up
  // After a macro (forMapping 10) or a profile (17) was deleted: in every profile, puts back to its default each
  // record that points at the deleted index or past the end of the present list, and hands all profiles to the
  // delegate. Any other mapping counts as an empty list.
  void removeMacroProfileMappings(int deletedIndex, int forMapping);

 private:
  // "Default" or "Assigned"; empty for a control without a record.
  QString assignmentText(const ControlDescriptor& control) const;

  std::unique_ptr<Ui::MouseButtonController> mUi;
  std::array<ControlRow*, controlTable.size()> mRows{};
  vorn::PropertyList buttonsSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList allProfiles = vorn::PropertyList::array();
  vorn::PropertyList allMacros = vorn::PropertyList::array();
  vorn::PropertyList deviceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList defaultDict = vorn::PropertyList::dictionary();
  vorn::PropertyList mKeysDict;
  vorn::PropertyList mButtonsDict;
  MouseButtonDelegate* buttonDelegate = nullptr;
  QPointer<QWidget> buttonWindow;
  vorn::NotificationCenter* notificationCenter = nullptr;
};

}  // namespace skarn
