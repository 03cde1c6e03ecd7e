// The Lighting tab: colour, effect and brightness of the current profile. It never talks to the engine; it keeps
// copies of the slices that its owner hands it and redraws from them. Main thread. Slices of a wrong shape are
// survived: what cannot be read shows nothing.
#pragma once

#include <QWidget>
#include <memory>

#include "lighting/MouseLightingDelegate.h"
#include "model/PropertyList.h"

namespace skarn {

namespace Ui {
class MouseLightingController;
}

class MouseLightingController : public QWidget {
  Q_OBJECT

 public:
  explicit MouseLightingController(QWidget* parent = nullptr);
  ~MouseLightingController() override;

  // --- What the owner hands over. The delegate is not owned.
  const vorn::PropertyList& mLightingDict() const { return lightingDict; }
  void setMLightingDict(const vorn::PropertyList& profile) { lightingDict = profile; }
  const vorn::PropertyList& mDeviceSettingsDict() const { return deviceSettingsDict; }
  void setMDeviceSettingsDict(const vorn::PropertyList& deviceSettings) { deviceSettingsDict = deviceSettings; }
  const vorn::PropertyList& mAllProfiles() const { return allProfiles; }
  void setMAllProfiles(const vorn::PropertyList& profiles) { allProfiles = profiles; }
  MouseLightingDelegate* mLightingDelegate() const { return lightingDelegate; }
  void setMLightingDelegate(MouseLightingDelegate* delegate) { lightingDelegate = delegate; }

  // What the user ticked and did not apply yet: a dictionary of profile keys, empty at start.
  const vorn::PropertyList& mUserSettingsDict() const { return userSettingsDict; }

  // --- Drawing
  // Redraws from the slices; without a profile record (none) nothing changes.
  void updateUISettings();
  void enableControlsState(bool enabled);

 private:
  void updateMainColorSettings();

  std::unique_ptr<Ui::MouseLightingController> mUi;
  vorn::PropertyList lightingDict = vorn::PropertyList::dictionary();
  vorn::PropertyList deviceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList allProfiles = vorn::PropertyList::array();
  vorn::PropertyList userSettingsDict = vorn::PropertyList::dictionary();
  MouseLightingDelegate* lightingDelegate = nullptr;
};

}  // namespace skarn
