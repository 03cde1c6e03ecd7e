// The application in front on the session bus, as the engine learns and tells it: names, members, keys, words.
// resources/dbus/org.vorn.Focus1.xml says what each member takes and gives.
#pragma once

#include <string_view>

namespace vorn::focus {

inline constexpr const char* busName = "org.vorn.Focus";
inline constexpr const char* objectPath = "/org/vorn/Focus";
inline constexpr const char* interface = "org.vorn.Focus1";

namespace methods {
inline constexpr const char* SetApplicationInFront = "SetApplicationInFront";
inline constexpr const char* State = "State";
}  // namespace methods

namespace signalNames {
inline constexpr const char* Changed = "Changed";
}  // namespace signalNames

// The keys of the state.
namespace keys {
using Key = std::string_view;
inline constexpr Key Source = "Source";          // string, one of the words below; empty where nothing works
inline constexpr Key IsUsed = "IsUsed";          // boolean: a profile asks for it
inline constexpr Key Identifier = "Identifier";  // string, and so the next two: the application in front
inline constexpr Key Executable = "Executable";
inline constexpr Key Name = "Name";
inline constexpr Key Profile = "Profile";  // string: the name of the profile that it chooses; empty for none
inline constexpr Key Needs = "Needs";      // string, one of the words below; empty where something works
}  // namespace keys

// Where it is known from.
namespace sources {
using Source = std::string_view;
inline constexpr Source X11 = "x11";
inline constexpr Source Wlroots = "wlroots";  // the protocol zwlr_foreign_toplevel_manager_v1 of the compositor
inline constexpr Source KWin = "kwin";
inline constexpr Source Bus = "bus";  // a program tells it: the extension of a desktop, for example
}  // namespace sources

// What is missing where nothing tells it.
namespace needs {
using Need = std::string_view;
inline constexpr Need GnomeExtension = "gnome-extension";  // GNOME Shell runs, without its extension
inline constexpr Need KDE = "kde";                         // KWin runs, and does not take the script
inline constexpr Need Display = "display";                 // there is none, or it cannot be reached
inline constexpr Need Compositor = "compositor";           // its compositor or window manager does not tell
}  // namespace needs

}  // namespace vorn::focus
