// Every key of the settings dictionaries, and the fixed sizes of their records. Keys are case-sensitive and spelled
// here only.
//
//   settings bundle   { Profiles: [profile], Macros: [macro], DeviceSettings: {...} }
//   profile           position in Profiles = profile ID; keys below under "Profile record"
//   macro             position in Macros = macro ID; keys below under "Macro record"
//   assignment        { command, param1, param2 }, under its control's identifier (Controls.h) in Keys or Buttons
#pragma once

#include <cstddef>
#include <string_view>

namespace vorn::keys {

using Key = std::string_view;

// Default-settings file
inline constexpr Key DefaultSettings = "Default Settings";

// Settings bundle
inline constexpr Key Profiles = "Profiles";
inline constexpr Key Macros = "Macros";
inline constexpr Key DeviceSettings = "DeviceSettings";

// Device settings (with the device-wide keys of the profile record below)
inline constexpr Key ActiveProfile = "ActiveProfile";  // zero-based index into Profiles

// Profile record
inline constexpr Key ProfileName = "ProfileName";
inline constexpr Key Buttons = "Buttons";
inline constexpr Key Keys = "Keys";
inline constexpr Key Keymap = "Keymap";            // eight dictionaries with Buttons and Keys
inline constexpr Key KeymapID = "KeymapID";        // 0 to 7
inline constexpr Key KeymapNames = "KeymapNames";  // by the number of the keymap; an empty one is none
inline constexpr Key Stages = "Stages";
inline constexpr Key StageValue = "StageValue";  // index of the stage in force
inline constexpr Key DPIX = "DPIX";
inline constexpr Key DPIY = "DPIY";
inline constexpr Key IndependentXYOn = "IndependentXYOn";
inline constexpr Key SensitivityOSDOn = "SensitivityOSDOn";
inline constexpr Key AccelerationOn = "AccelerationOn";
inline constexpr Key Acceleration = "Acceleration";
inline constexpr Key PollingRate = "PollingRate";  // Hz
inline constexpr Key LEDColors = "LEDColors";
inline constexpr Key LEDEffects = "LEDEffects";  // 0 fixed colour, 4 spectrum cycling
inline constexpr Key ScrollLED = "ScrollLED";    // light on
inline constexpr Key BrightnessKBNormal = "BrightnessKBNormal";
inline constexpr Key AppInfo = "AppInfo";
inline constexpr Key AutoSwitchOn = "AutoSwitchOn";
inline constexpr Key ProfileOSDOn = "ProfileOSDOn";
inline constexpr Key BrightnessNormal = "BrightnessNormal";
inline constexpr Key BrightnessBattery = "BrightnessBattery";
inline constexpr Key PowerSaver = "PowerSaver";
inline constexpr Key BatteryCriticalLevel = "BatteryCriticalLevel";
inline constexpr Key Sensitivity = "Sensitivity";
inline constexpr Key MasterSensitivityOn = "MasterSensitivityOn";

// Assignment record
inline constexpr Key Command = "command";
inline constexpr Key Param1 = "param1";
inline constexpr Key Param2 = "param2";

// Stage record
inline constexpr Key StageDpiX = "dpix";
inline constexpr Key StageDpiY = "dpiy";
inline constexpr Key StageIndependentXY = "independentxy";

// Element of LEDColors; components from 0.0 to 1.0
inline constexpr Key Red = "Red";
inline constexpr Key Green = "Green";
inline constexpr Key Blue = "Blue";

// AppInfo
inline constexpr Key Application = "application";
inline constexpr Key Executable = "executable";
inline constexpr Key Identifier = "identifier";
inline constexpr Key Signature = "signature";

// Macro record
inline constexpr Key MacroName = "MacroName";
inline constexpr Key MacroID = "macroID";
inline constexpr Key Delay = "delay";                              // milliseconds
inline constexpr Key ResponseMsgPortName = "ResponseMsgPortName";  // reply port of the client that made the macro
inline constexpr Key Sequence = "sequence";
inline constexpr Key Events = "events";  // within the sequence: array of macro events, in their order

// Macro event (with command and delay)
inline constexpr Key Page = "page";
inline constexpr Key Argument = "argument";

// Record shapes
inline constexpr std::size_t maximumProfiles = 5;
inline constexpr std::size_t maximumStages = 5;
inline constexpr std::size_t keymapCount = 8;
inline constexpr std::size_t lightingZoneCount = 3;

}  // namespace vorn::keys
