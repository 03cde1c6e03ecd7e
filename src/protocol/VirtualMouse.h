// The engine's virtual mouse on the session bus, as the engine offers it and clients call it: names, members, errors,
// words. resources/dbus/org.vorn.VirtualMouse1.xml says what each member takes and gives.
#pragma once

#include <string_view>

namespace vorn::virtualMouse {

inline constexpr const char* busName = "org.vorn.VirtualMouse";
inline constexpr const char* objectPath = "/org/vorn/VirtualMouse";
inline constexpr const char* interface = "org.vorn.VirtualMouse1";

namespace methods {
inline constexpr const char* Plug = "Plug";
inline constexpr const char* Unplug = "Unplug";
inline constexpr const char* Press = "Press";
inline constexpr const char* Release = "Release";
inline constexpr const char* Type = "Type";
inline constexpr const char* SetBattery = "SetBattery";
inline constexpr const char* SetCharging = "SetCharging";
inline constexpr const char* SetFirmware = "SetFirmware";
inline constexpr const char* State = "State";
inline constexpr const char* TakeOutput = "TakeOutput";
}  // namespace methods

inline constexpr const char* outputSignal = "Output";

namespace errors {
inline constexpr const char* BadArgument = "org.vorn.VirtualMouse1.Error.BadArgument";
inline constexpr const char* NotInUse = "org.vorn.VirtualMouse1.Error.NotInUse";  // another mouse is used
inline constexpr const char* Absent = "org.vorn.VirtualMouse1.Error.Absent";      // the mouse is not plugged in
}  // namespace errors

// How the mouse is connected: what Plug takes and State tells. Plug takes no "absent".
inline constexpr std::string_view wired = "wired";
inline constexpr std::string_view wireless = "wireless";
inline constexpr std::string_view absent = "absent";

// What SetCharging takes beside the words of protocol/DeviceStatus.h: the status that follows from the connection.
inline constexpr std::string_view usualCharging = "usual";

}  // namespace vorn::virtualMouse
