#include "support/StandardBundle.h"

#include <string>
#include <utility>
#include <vector>

#include "model/Controls.h"
#include "model/SettingsKeys.h"

namespace vorn::test {

namespace {

constexpr std::size_t profileCount = 5;
constexpr std::size_t eventCount = 40;

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
    entries.emplace_back(identifier, PropertyList::dictionary({{keys::Command, (position + variant) % 50},
                                                               {keys::Param1, PropertyList(identifier).toInt()},
                                                               {keys::Param2, (position * variant) % 7}}));
    ++position;
  }
  return PropertyList::dictionary(std::move(entries));
}

PropertyList keymap(int variant) {
  return PropertyList::dictionary({{keys::Keys, assignments(keys::keyIdentifiers, variant)},
                                   {keys::Buttons, assignments(keys::buttonIdentifiers, variant)}});
}

PropertyList stage(int index) {
  return PropertyList::dictionary({{keys::StageDpiX, 800 * (index + 1)},
                                   {keys::StageDpiY, 800 * (index + 1)},
                                   {keys::StageIndependentXY, index % 2}});
}

PropertyList colour(int zone) {
  return PropertyList::dictionary({{keys::Red, 0.25 * zone}, {keys::Green, 1.0}, {keys::Blue, 0.5}});
}

PropertyList profile(int index) {
  const PropertyList first = keymap(8 * index);
  return PropertyList::dictionary(
      {{keys::ProfileName, "Profile " + std::to_string(index + 1)},
       {keys::Keymap, arrayOf(keys::keymapCount, [index](int map) { return keymap(8 * index + map); })},
       {keys::KeymapID, 0},
       {keys::Keys, first[keys::Keys]},
       {keys::Buttons, first[keys::Buttons]},
       {keys::Stages, arrayOf(keys::maximumStages, stage)},
       {keys::StageValue, index % 5},
       {keys::DPIX, 1800},
       {keys::DPIY, 1800},
       {keys::IndependentXYOn, 0},
       {keys::SensitivityOSDOn, 1},
       {keys::AccelerationOn, 0},
       {keys::Acceleration, 3},
       {keys::PollingRate, 1000},
       {keys::LEDColors, arrayOf(keys::lightingZoneCount, colour)},
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

PropertyList macro(int index) {
  const PropertyList events = arrayOf(eventCount, [index](int event) {
    return PropertyList::dictionary({{keys::Command, 1 - event % 2},
                                     {keys::Delay, 10 + (7 * event + 13 * index) % 500},
                                     {keys::Page, 7},
                                     {keys::Argument, 4 + (event / 2 + index) % 36}});
  });
  return PropertyList::dictionary({{keys::MacroName, "Macro " + std::to_string(index + 1)},
                                   {keys::MacroID, index},
                                   {keys::Delay, 20},
                                   {keys::Sequence, PropertyList::dictionary({{"events", events}})}});
}

}  // namespace

PropertyList bundleWithMacros(std::size_t macros) {
  return PropertyList::dictionary(
      {{keys::Profiles, arrayOf(profileCount, profile)},
       {keys::Macros, arrayOf(macros, macro)},
       {keys::DeviceSettings, PropertyList::dictionary({{keys::ActiveProfile, 0},
                                                        {keys::ProfileOSDOn, 1},
                                                        {keys::BrightnessNormal, 100},
                                                        {keys::BrightnessBattery, 50},
                                                        {keys::PowerSaver, 10},
                                                        {keys::BatteryCriticalLevel, 5}})}});
}

}  // namespace vorn::test
