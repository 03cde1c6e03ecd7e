#include "model/VRCDictionaryInspector.h"

#include "model/SettingsKeys.h"

namespace vorn {

std::int32_t VRCDictionaryInspector::sensitivityStage() const {
  return settingsDictionary[keys::StageValue].toInt();
}

std::int32_t VRCDictionaryInspector::dpiX() const {
  return settingsDictionary[keys::DPIX].toInt();
}

std::int32_t VRCDictionaryInspector::dpiY() const {
  return settingsDictionary[keys::DPIY].toInt();
}

std::int32_t VRCDictionaryInspector::enableIndependentXY() const {
  return settingsDictionary[keys::IndependentXYOn].toInt();
}

std::int32_t VRCDictionaryInspector::enableSensitivityOSD() const {
  return settingsDictionary[keys::MasterSensitivityOn].toInt();
}

std::int32_t VRCDictionaryInspector::enableAccelerationOSD() const {
  return settingsDictionary[keys::AccelerationOn].toInt();
}

std::int32_t VRCDictionaryInspector::acceleration() const {
  return settingsDictionary[keys::AccelerationOn].toInt();
}

std::int32_t VRCDictionaryInspector::pollingRate() const {
  return settingsDictionary[keys::PollingRate].toInt();
}

PropertyList VRCDictionaryInspector::buttonsValues() const {
  return settingsDictionary[keys::Buttons].dictionaryOrEmpty();
}

PropertyList VRCDictionaryInspector::ledColors() const {
  return settingsDictionary[keys::LEDColors];
}

PropertyList VRCDictionaryInspector::sensitivityStageValues() const {
  return settingsDictionary[keys::Sensitivity].arrayOrEmpty();
}

std::string VRCDictionaryInspector::profileName() const {
  return settingsDictionary[keys::ProfileName].toString();
}

PropertyList VRCDictionaryInspector::applicationInfo() const {
  return settingsDictionary[keys::AppInfo].dictionaryOrEmpty();
}

std::string VRCDictionaryInspector::applicationName() const {
  return settingsDictionary[keys::Application].toString();
}

std::string VRCDictionaryInspector::applicationExecutableName() const {
  return settingsDictionary[keys::Executable].toString();
}

std::string VRCDictionaryInspector::applicationIdentifier() const {
  return settingsDictionary[keys::Identifier].toString();
}

std::string VRCDictionaryInspector::applicationSignature() const {
  return settingsDictionary[keys::Signature].toString();
}

std::int32_t VRCDictionaryInspector::enableAutoSwitch() const {
  return settingsDictionary[keys::AutoSwitchOn].toInt();
}

std::int32_t VRCDictionaryInspector::enableProfileOSD() const {
  return deviceSettingsDictionary[keys::ProfileOSDOn].toInt();
}

}  // namespace vorn
