// Typed reads of a profile record and of the device settings. Every read of a missing key gives 0 or something empty.
#pragma once

#include <cstdint>
#include <string>

#include "model/PropertyList.h"

namespace vorn {

class VRCDictionaryInspector {
 public:
  const PropertyList& mSettingsDictionary() const { return settingsDictionary; }
  void setMSettingsDictionary(const PropertyList& dictionary) { settingsDictionary = dictionary; }
  const PropertyList& mDeviceSettingsDictionary() const { return deviceSettingsDictionary; }
  void setMDeviceSettingsDictionary(const PropertyList& dictionary) { deviceSettingsDictionary = dictionary; }

  std::int32_t sensitivityStage() const;
  std::int32_t dpiX() const;
  std::int32_t dpiY() const;
  std::int32_t enableIndependentXY() const;
  std::int32_t enableSensitivityOSD() const;   // the master switch of the sensitivity
  std::int32_t enableAccelerationOSD() const;  // the acceleration flag
  std::int32_t acceleration() const;           // the acceleration flag too, not its level
  std::int32_t pollingRate() const;
  PropertyList buttonsValues() const;
  PropertyList ledColors() const;  // the stored value itself, whatever its type
  PropertyList sensitivityStageValues() const;
  std::string profileName() const;
  PropertyList applicationInfo() const;

  // These four read the top level of mSettingsDictionary; they serve when it holds an application dictionary.
  std::string applicationName() const;
  std::string applicationExecutableName() const;
  std::string applicationIdentifier() const;
  std::string applicationSignature() const;

  std::int32_t enableAutoSwitch() const;
  std::int32_t enableProfileOSD() const;  // the only read of the device settings

 private:
  PropertyList settingsDictionary;
  PropertyList deviceSettingsDictionary;
};

}  // namespace vorn
