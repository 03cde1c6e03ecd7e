// Which changes the person at the screen is told of by a message, and in which words:
//   the profile      when the settings of the device have "ProfileOSDOn"
//   the sensitivity  when the active profile has "SensitivityOSDOn"
//   the battery      when it falls to the "BatteryCriticalLevel" of the device's settings
// What a person does in the configurator's window, or takes back, is seen where it was done and told by no message.
// Nor is anything of a mouse that is not there.
// One thread, the engine's.
#pragma once

#include "core-engine/device/Device.h"
#include "core-engine/news/MessageScreen.h"
#include "core-engine/news/ScreenTexts.h"
#include "core-engine/storage/ChangeOrigin.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class ScreenMessages {
 public:
  // All of them outlive the messages.
  ScreenMessages(const Device& device, MessageScreen& screen, const ScreenTexts& texts)
      : mDevice(device), mScreen(screen), mTexts(texts) {}

  // Looks at a change of the settings, once it is on the disk. Both are complete bundles.
  void settingsChanged(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin);
  // Looks at the battery of the mouse, whose level, charging status or connection may have changed. The bundle in
  // force; none without settings.
  void batteryChanged(const PropertyList& bundle);
  // Another mouse comes in use; its battery is another one.
  void mouseLeaves() { mIsBatteryLow = false; }

 private:
  void showSensitivity(const PropertyList& profile);

  const Device& mDevice;
  MessageScreen& mScreen;
  const ScreenTexts& mTexts;
  bool mIsBatteryLow = false;  // and told; stays while the mouse is not there
};

}  // namespace vorn::engine
