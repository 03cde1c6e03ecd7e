// The choice of the mouse on the session bus, as the engine offers it and clients ask for it: names, members, errors,
// keys. resources/dbus/org.vorn.Mice1.xml says what each member takes and gives.
#pragma once

#include <string_view>

namespace vorn::mice {

inline constexpr const char* busName = "org.vorn.Mice";
inline constexpr const char* objectPath = "/org/vorn/Mice";
inline constexpr const char* interface = "org.vorn.Mice1";

namespace methods {
inline constexpr const char* List = "List";
inline constexpr const char* Choose = "Choose";
inline constexpr const char* Teach = "Teach";
inline constexpr const char* Forget = "Forget";
inline constexpr const char* SetResolution = "SetResolution";
}  // namespace methods

namespace signalNames {
inline constexpr const char* Changed = "Changed";
inline constexpr const char* Taught = "Taught";
}  // namespace signalNames

namespace errors {
inline constexpr const char* NotFound = "org.vorn.Mice1.Error.NotFound";      // no such mouse
inline constexpr const char* NotAllowed = "org.vorn.Mice1.Error.NotAllowed";  // this user may not use it
inline constexpr const char* NotTeachable =
    "org.vorn.Mice1.Error.NotTeachable";                                        // the mouse in use is virtual or absent
inline constexpr const char* BadArgument = "org.vorn.Mice1.Error.BadArgument";  // no such control, no such resolution
inline constexpr const char* Busy = "org.vorn.Mice1.Error.Busy";                // another program teaches
inline constexpr const char* NotSaved = "org.vorn.Mice1.Error.NotSaved";        // the disk did not take it
}  // namespace errors

// The device file that makes keyboards and pointers, by which the engine types and clicks.
inline constexpr const char* outputNode = "/dev/uinput";

// The ID of the virtual mouse.
inline constexpr std::string_view virtualMouse = "virtual";

// Resolutions that SetResolution takes, in DPI; 0 is what the system knows of the mouse.
inline constexpr int minimumResolution = 100;
inline constexpr int maximumResolution = 32'000;

// The keys of a mouse.
namespace keys {
using Key = std::string_view;
inline constexpr Key ID = "id";                  // string
inline constexpr Key Name = "name";              // string
inline constexpr Key IsInUse = "isInUse";        // boolean: chosen, plugged in or not
inline constexpr Key IsPresent = "isPresent";    // boolean: plugged in
inline constexpr Key IsAllowed = "isAllowed";    // boolean: this user may use it
inline constexpr Key Forbidden = "forbidden";    // array of strings: the device files that the user may not use
inline constexpr Key Connection = "connection";  // string, one of the words below
inline constexpr Key Nodes = "nodes";            // array of strings: its device files
inline constexpr Key Controls = "controls";      // array of strings: identifiers of the controls that it has
inline constexpr Key Taught = "taught";          // array of strings: those of them that it was taught
inline constexpr Key Resolution = "resolution";  // integer: DPI without scaling; 0 where nobody knows
// Of the mouse in use, what it can do. sensitivity: one of the words below; the others are booleans.
inline constexpr Key Sensitivity = "sensitivity";
inline constexpr Key HasPollingRate = "hasPollingRate";
inline constexpr Key HasLight = "hasLight";
inline constexpr Key HasPower = "hasPower";
inline constexpr Key HasBattery = "hasBattery";
// Of the mouse in use, arrays of strings: its device files that are not used though something is assigned there, since
// something on them is held down, or another program keeps them for itself.
inline constexpr Key Held = "held";
inline constexpr Key Busy = "busy";
}  // namespace keys

namespace connections {
inline constexpr std::string_view Wired = "wired";
inline constexpr std::string_view Wireless = "wireless";
inline constexpr std::string_view Virtual = "virtual";
}  // namespace connections

// How the sensitivity comes about.
namespace sensitivities {
inline constexpr std::string_view Hardware = "hardware";
inline constexpr std::string_view Scaled = "scaled";  // the engine scales what the mouse sends
inline constexpr std::string_view Missing = "missing";
}  // namespace sensitivities

}  // namespace vorn::mice
