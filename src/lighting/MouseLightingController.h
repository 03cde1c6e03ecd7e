// The Lighting tab: profile, light, effect, colour and brightness of the current profile. It never talks to the engine;
// it keeps copies of the slices that its owner hands it, redraws from them, and asks its delegate for every change.
// Main thread. Slices of a wrong shape are survived: they read as empty.
//
// Only the main zone is live. The controls of the side strips, the underglow and the in-game lights exist by their
// names, stand in a part of the page that is never shown, and do nothing.
//
// The brightness slider counts from 1: 1 off, 2 dim, 3 normal, 4 bright. Both brightness keys hold its position.
//
// The first redraw sends the profile's own effect and brightness back to the device, once. A delegate may call
// updateUISettings from within any request; it then only shows values.
#pragma once

#include <QWidget>
#include <memory>
#include <string_view>

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
  // Whether the profile is one of the mouse, as at the start, or one of the default file: that is only shown, and never
  // sent to the mouse.
  void setShowsDevice(bool isOfDevice) { showsDevice = isOfDevice; }
  MouseLightingDelegate* mLightingDelegate() const { return lightingDelegate; }
  void setMLightingDelegate(MouseLightingDelegate* delegate) { lightingDelegate = delegate; }

  // What the user ticked and did not apply yet: a dictionary of profile keys, empty at start and never cleared.
  const vorn::PropertyList& mUserSettingsDict() const { return userSettingsDict; }
  // A redraw sends nothing any more.
  bool mShouldUpdateUIOnly() const { return shouldUpdateUIOnly; }
  // The brightness has not been sent back yet.
  bool mShouldUpdateBrightness() const { return shouldUpdateBrightness; }

  // --- Handlers of the controls
  void selectProfile();
  // Keeps the light's state in mUserSettingsDict; sends nothing.
  void tickMain();
  void clickMainColor();
  void selectColor();
  void selectSpectrumCycling();
  void brightnessValueChange();
  void updateBrightnessSettings();
  void updateValue(int value, std::string_view ofSetting);

  // --- Drawing
  void populateProfileListPopUpMenu();
  void updateMainColorSettings();
  // Redraws from the slices; without a profile record (none) only the profile list is redrawn.
  void updateUISettings();
  // Without a usable device every control is disabled and says why.
  void enableControlsState(bool enabled);
  // A light that the mouse in use lacks is set all the same, for one that has it; the tooltips say so. At first it is
  // offered.
  void setMouseOffersLight(bool isOffered);

 private:
  void explain();
  void wireControls();
  void send(const vorn::PropertyList& settings);
  void sendEffectAndBrightness();
  void selectEffectCell(int effect);
  void describeBrightness();
  // The picture, and the colour in figures.
  void updatePreview();

  std::unique_ptr<Ui::MouseLightingController> mUi;
  vorn::PropertyList lightingDict = vorn::PropertyList::dictionary();
  vorn::PropertyList deviceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList allProfiles = vorn::PropertyList::array();
  vorn::PropertyList userSettingsDict = vorn::PropertyList::dictionary();
  MouseLightingDelegate* lightingDelegate = nullptr;
  QString mShownProfile;  // by its name
  bool showsDevice = true;
  bool mIsEnabled = true;
  bool mOffersLight = true;
  bool shouldUpdateUIOnly = false;
  bool shouldUpdateBrightness = true;
};

}  // namespace skarn
