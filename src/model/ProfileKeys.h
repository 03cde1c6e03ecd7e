// The settings of a profile: what the engine accepts under each key of its record. A control of the configurator may
// offer less than that. Pure; any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace vorn {

enum class SettingType : std::uint8_t {
  Text,
  Integer,
  Flag,  // 0 or 1, or a boolean
  Dictionary,
  Array,    // of anything
  Texts,    // array of texts
  Keymaps,  // array of dictionaries whose "Keys" and "Buttons", where they have them, are dictionaries
  Stages,   // array of stage records with "dpix" and "dpiy"
  Colors,   // array of dictionaries whose components, where they have them, are numbers
};
enum class SettingUnit : std::uint8_t { None, Dpi, Hertz };
// A value of the device is the same for all profiles: an update of any of them repeats it in the device settings.
enum class SettingScope : std::uint8_t { Profile, Device };

// Both ends belong to it.
struct SettingRange {
  std::int32_t minimum = 0;
  std::int32_t maximum = 0;
  friend constexpr bool operator==(const SettingRange&, const SettingRange&) = default;
};

struct ProfileKey {
  keys::Key key;
  SettingType type;
  SettingRange range = {};  // of an integer or a flag; of the number of texts, keymaps, stages or colours
  SettingScope scope = SettingScope::Profile;
  SettingUnit unit = SettingUnit::None;
  SettingRange elements = {};  // of the sensitivities of a stage and of the components of a colour
};

inline constexpr SettingRange dpiRange = {100, 5600};  // of each axis

namespace detail {

// A position or a level that means something to its control alone.
inline constexpr SettingRange anyLevel = {0, 255};
inline constexpr SettingRange flag = {0, 1};

constexpr SettingRange positionIn(std::size_t count) {
  return {0, static_cast<std::int32_t>(count) - 1};
}
constexpr SettingRange upTo(std::size_t count) {
  return {1, static_cast<std::int32_t>(count)};
}

}  // namespace detail

// clang-format off
inline constexpr std::array<ProfileKey, 28> profileKeys = {{
    {keys::ProfileName, SettingType::Text},
    {keys::Keys, SettingType::Dictionary},
    {keys::Buttons, SettingType::Dictionary},
    {keys::Keymap, SettingType::Keymaps, detail::upTo(keys::keymapCount)},
    {keys::KeymapID, SettingType::Integer, detail::positionIn(keys::keymapCount)},
    {keys::KeymapNames, SettingType::Texts, detail::upTo(keys::keymapCount)},
    {keys::Stages, SettingType::Stages, detail::upTo(keys::maximumStages), SettingScope::Profile, SettingUnit::Dpi,
     dpiRange},
    {keys::StageValue, SettingType::Integer, detail::positionIn(keys::maximumStages)},
    {keys::DPIX, SettingType::Integer, dpiRange, SettingScope::Profile, SettingUnit::Dpi},
    {keys::DPIY, SettingType::Integer, dpiRange, SettingScope::Profile, SettingUnit::Dpi},
    {keys::IndependentXYOn, SettingType::Flag, detail::flag},
    {keys::SensitivityOSDOn, SettingType::Flag, detail::flag},
    {keys::MasterSensitivityOn, SettingType::Flag, detail::flag},
    {keys::Sensitivity, SettingType::Array},
    {keys::AccelerationOn, SettingType::Flag, detail::flag},
    {keys::Acceleration, SettingType::Integer, detail::anyLevel},
    {keys::PollingRate, SettingType::Integer, {125, 1000}, SettingScope::Device, SettingUnit::Hertz},
    {keys::LEDColors, SettingType::Colors, {1, 255}, SettingScope::Profile, SettingUnit::None, {0, 1}},
    {keys::LEDEffects, SettingType::Integer, detail::anyLevel},
    {keys::ScrollLED, SettingType::Flag, detail::flag},
    {keys::BrightnessKBNormal, SettingType::Integer, detail::anyLevel},
    {keys::BrightnessNormal, SettingType::Integer, detail::anyLevel, SettingScope::Device},
    {keys::BrightnessBattery, SettingType::Integer, detail::anyLevel, SettingScope::Device},
    {keys::PowerSaver, SettingType::Integer, detail::anyLevel, SettingScope::Device},
    {keys::BatteryCriticalLevel, SettingType::Integer, detail::anyLevel, SettingScope::Device},
    {keys::AppInfo, SettingType::Dictionary},
    {keys::AutoSwitchOn, SettingType::Flag, detail::flag},
    {keys::ProfileOSDOn, SettingType::Flag, detail::flag, SettingScope::Device},
}};
// clang-format on

// Null for a key that the engine keeps without looking at it.
const ProfileKey* profileKeyOf(std::string_view key);
// Whether the engine takes the value under this key. Of assignments it looks at more (rules of the engine).
bool fits(const ProfileKey& setting, const PropertyList& value);
// "DPI", "Hz" or empty.
std::string_view unitWord(SettingUnit unit);
// What a value must be, in English, for the end of a sentence: "a whole number from 100 to 5600 DPI", "0 or 1 (off,
// on)".
std::string expectation(const ProfileKey& setting);

// The values that a person may choose, where the mouse knows only some of those that the engine keeps; empty for any.
std::span<const std::int32_t> choicesOf(const ProfileKey& setting);
// Whether a person may choose the value, and what it must be: "125, 500 or 1000 Hz".
bool isChoice(const ProfileKey& setting, const PropertyList& value);
std::string choiceExpectation(const ProfileKey& setting);

}  // namespace vorn
