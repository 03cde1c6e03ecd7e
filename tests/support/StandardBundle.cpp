#include "support/StandardBundle.h"

#include <string>
#include <utility>
#include <vector>

#include "model/Controls.h"
#include "model/SettingsKeys.h"
#include "support/SampleSettings.h"

namespace vorn::test {

namespace {

constexpr std::size_t profileCount = 5;
constexpr int eventCount = 40;

template <typename Make>
PropertyList arrayOf(std::size_t count, const Make& make) {
  std::vector<PropertyList> elements;
  elements.reserve(count);
  for (std::size_t i = 0; i < count; ++i) elements.push_back(make(static_cast<int>(i)));
  return PropertyList::array(std::move(elements));
}

template <typename Identifiers>
PropertyList assignments(const Identifiers& identifiers, int variant) {
  std::vector<PropertyList::Pair> entries;
  int position = 0;
  for (const std::string_view identifier : identifiers) {
    entries.emplace_back(
        identifier, assignment((position + variant) % 50, PropertyList(identifier).toInt(), (position * variant) % 7));
    ++position;
  }
  return PropertyList::dictionary(std::move(entries));
}

PropertyList keymap(int variant) {
  return keymapOf(assignments(keys::keyIdentifiers, variant), assignments(keys::buttonIdentifiers, variant));
}

PropertyList stageAt(int index) {
  return stage(800 * (index + 1), 800 * (index + 1), index % 2 == 1);
}

PropertyList colorOf(int zone) {
  return color(0.25 * zone, 1.0, 0.5);
}

PropertyList profileAt(int index) {
  const PropertyList first = keymap(8 * index);
  return PropertyList::dictionary(
      {{keys::ProfileName, "Profile " + std::to_string(index + 1)},
       {keys::Keymap, arrayOf(keys::keymapCount, [index](int map) { return keymap(8 * index + map); })},
       {keys::KeymapID, 0},
       {keys::Keys, first[keys::Keys]},
       {keys::Buttons, first[keys::Buttons]},
       {keys::Stages, arrayOf(keys::maximumStages, stageAt)},
       {keys::StageValue, index % 5},
       {keys::DPIX, 1800},
       {keys::DPIY, 1800},
       {keys::IndependentXYOn, 0},
       {keys::SensitivityOSDOn, 1},
       {keys::AccelerationOn, 0},
       {keys::Acceleration, 3},
       {keys::PollingRate, 1000},
       {keys::LEDColors, arrayOf(keys::lightingZoneCount, colorOf)},
       {keys::LEDEffects, 0},
       {keys::ScrollLED, 1},
       {keys::BrightnessKBNormal, 255},
       {keys::AppInfo, PropertyList::dictionary({{keys::Application, "Editor"},
                                                 {keys::Executable, "editor"},
                                                 {keys::Identifier, "org.example.Editor"},
                                                 {keys::Signature, "????"}})},
       {keys::AutoSwitchOn, 0},
       {keys::ProfileOSDOn, 1},
       {keys::BrightnessNormal, 100},
       {keys::BrightnessBattery, 50},
       {keys::PowerSaver, 10},
       {keys::BatteryCriticalLevel, 5},
       {keys::Sensitivity, PropertyList::array({800, 1800, 3600})},
       {keys::MasterSensitivityOn, 0}});
}

PropertyList macroAt(int index) {
  std::vector<PropertyList> events;
  for (int event = 0; event < eventCount; ++event) {
    events.push_back(macroEvent(1 - event % 2, 10 + (7 * event + 13 * index) % 500, 7, 4 + (event / 2 + index) % 36));
  }
  return macro("Macro " + std::to_string(index + 1), std::move(events))
      .with(keys::MacroID, index)
      .with(keys::Delay, 20);
}

}  // namespace

PropertyList bundleWithMacros(std::size_t macros) {
  return PropertyList::dictionary(
      {{keys::Profiles, arrayOf(profileCount, profileAt)},
       {keys::Macros, arrayOf(macros, macroAt)},
       {keys::DeviceSettings, PropertyList::dictionary({{keys::ActiveProfile, 0},
                                                        {keys::ProfileOSDOn, 1},
                                                        {keys::BrightnessNormal, 100},
                                                        {keys::BrightnessBattery, 50},
                                                        {keys::PowerSaver, 10},
                                                        {keys::BatteryCriticalLevel, 5}})}});
}

}  // namespace vorn::test
