#include "model/VRCDictionaryInspector.h"

#include <gtest/gtest.h>

#include "model/RawBinaryList.h"
#include "model/SettingsKeys.h"
#include "support/StandardBundle.h"

namespace vorn {
namespace {

using Number = std::int32_t (VRCDictionaryInspector::*)() const;
using Text = std::string (VRCDictionaryInspector::*)() const;
using Value = PropertyList (VRCDictionaryInspector::*)() const;

struct NumberRow {
  std::string_view key;
  Number read;
};

// The reads of the profile record.
const std::vector<NumberRow> numbers = {{"StageValue", &VRCDictionaryInspector::sensitivityStage},
                                        {"DPIX", &VRCDictionaryInspector::dpiX},
                                        {"DPIY", &VRCDictionaryInspector::dpiY},
                                        {"IndependentXYOn", &VRCDictionaryInspector::enableIndependentXY},
                                        {"MasterSensitivityOn", &VRCDictionaryInspector::enableSensitivityOSD},
                                        {"AccelerationOn", &VRCDictionaryInspector::enableAccelerationOSD},
                                        {"AccelerationOn", &VRCDictionaryInspector::acceleration},
                                        {"PollingRate", &VRCDictionaryInspector::pollingRate},
                                        {"AutoSwitchOn", &VRCDictionaryInspector::enableAutoSwitch}};

const std::vector<std::pair<std::string_view, Text>> texts = {
    {"ProfileName", &VRCDictionaryInspector::profileName},
    {"application", &VRCDictionaryInspector::applicationName},
    {"executable", &VRCDictionaryInspector::applicationExecutableName},
    {"identifier", &VRCDictionaryInspector::applicationIdentifier},
    {"signature", &VRCDictionaryInspector::applicationSignature}};

VRCDictionaryInspector inspectorOf(const PropertyList& settings) {
  VRCDictionaryInspector inspector;
  inspector.setMSettingsDictionary(settings);
  return inspector;
}

TEST(VRCDictionaryInspectorTest, ReadsEachNumberUnderItsOwnKeyAlone) {
  for (const NumberRow& row : numbers) {
    const VRCDictionaryInspector inspector = inspectorOf(PropertyList::dictionary({{row.key, 41}}));
    for (const NumberRow& other : numbers) {
      EXPECT_EQ((inspector.*other.read)(), other.key == row.key ? 41 : 0) << row.key << " " << other.key;
    }
    EXPECT_EQ(inspector.enableProfileOSD(), 0);
  }
}

TEST(VRCDictionaryInspectorTest, ReadsEachTextUnderItsOwnKeyAlone) {
  for (const auto& [key, read] : texts) {
    const VRCDictionaryInspector inspector = inspectorOf(PropertyList::dictionary({{key, "text"}}));
    for (const auto& [otherKey, otherRead] : texts) {
      EXPECT_EQ((inspector.*otherRead)(), otherKey == key ? "text" : "") << key << " " << otherKey;
    }
  }
}

TEST(VRCDictionaryInspectorTest, ReadsContainersAsTheyAre) {
  const PropertyList buttons = PropertyList::dictionary({{"03", PropertyList::dictionary({{"command", 1}})}});
  const PropertyList colours = PropertyList::array({PropertyList::dictionary({{"Red", 1.0}})});
  const PropertyList stages = PropertyList::array({800, 1600});
  const PropertyList application = PropertyList::dictionary({{"application", "Editor"}});
  const VRCDictionaryInspector inspector = inspectorOf(PropertyList::dictionary(
      {{"Buttons", buttons}, {"LEDColors", colours}, {"Sensitivity", stages}, {"AppInfo", application}}));
  EXPECT_EQ(inspector.buttonsValues(), buttons);
  EXPECT_EQ(inspector.ledColors(), colours);
  EXPECT_EQ(inspector.sensitivityStageValues(), stages);
  EXPECT_EQ(inspector.applicationInfo(), application);
  EXPECT_EQ(inspectorOf(inspector.applicationInfo()).applicationName(), "Editor");
}

TEST(VRCDictionaryInspectorTest, ReadsTheAccelerationFlagAndNotItsLevel) {
  const VRCDictionaryInspector inspector =
      inspectorOf(PropertyList::dictionary({{keys::AccelerationOn, true}, {keys::Acceleration, 7}}));
  EXPECT_EQ(inspector.acceleration(), 1);
  EXPECT_EQ(inspector.enableAccelerationOSD(), 1);
}

TEST(VRCDictionaryInspectorTest, ReadsTheMasterSwitchAndNotTheSensitivityDisplay) {
  const VRCDictionaryInspector inspector =
      inspectorOf(PropertyList::dictionary({{keys::SensitivityOSDOn, 1}, {keys::MasterSensitivityOn, 0}}));
  EXPECT_EQ(inspector.enableSensitivityOSD(), 0);
}

TEST(VRCDictionaryInspectorTest, ReadsTheProfileDisplayFromTheDeviceSettings) {
  VRCDictionaryInspector inspector = inspectorOf(PropertyList::dictionary({{keys::ProfileOSDOn, 5}}));
  EXPECT_EQ(inspector.enableProfileOSD(), 0);
  inspector.setMDeviceSettingsDictionary(PropertyList::dictionary({{keys::ProfileOSDOn, true}, {keys::DPIX, 9}}));
  EXPECT_EQ(inspector.enableProfileOSD(), 1);
  EXPECT_EQ(inspector.dpiX(), 0);
}

TEST(VRCDictionaryInspectorTest, GivesZeroOrSomethingEmptyForAMissingKey) {
  for (const PropertyList& settings : {PropertyList(), PropertyList::dictionary(), PropertyList("no dictionary")}) {
    const VRCDictionaryInspector inspector = inspectorOf(settings);
    for (const NumberRow& row : numbers) EXPECT_EQ((inspector.*row.read)(), 0) << row.key;
    for (const auto& [key, read] : texts) EXPECT_EQ((inspector.*read)(), "") << key;
    EXPECT_EQ(inspector.enableProfileOSD(), 0);
    EXPECT_EQ(inspector.buttonsValues(), PropertyList::dictionary());
    EXPECT_EQ(inspector.sensitivityStageValues(), PropertyList::array());
    EXPECT_EQ(inspector.applicationInfo(), PropertyList::dictionary());
    EXPECT_EQ(inspector.ledColors(), PropertyList());
  }
}

TEST(VRCDictionaryInspectorTest, ReadsAFlagStoredAsABooleanAsZeroOrOne) {
  EXPECT_EQ(inspectorOf(PropertyList::dictionary({{keys::AutoSwitchOn, true}})).enableAutoSwitch(), 1);
  EXPECT_EQ(inspectorOf(PropertyList::dictionary({{keys::AutoSwitchOn, false}})).enableAutoSwitch(), 0);
}

TEST(VRCDictionaryInspectorTest, KeepsTheDictionariesThatItWasGiven) {
  const PropertyList bundle = test::standardBundle();
  VRCDictionaryInspector inspector = inspectorOf(bundle[keys::Profiles].at(0));
  inspector.setMDeviceSettingsDictionary(bundle[keys::DeviceSettings]);
  EXPECT_EQ(inspector.mSettingsDictionary(), bundle[keys::Profiles].at(0));
  EXPECT_EQ(inspector.mDeviceSettingsDictionary(), bundle[keys::DeviceSettings]);
}

}  // namespace
}  // namespace vorn
