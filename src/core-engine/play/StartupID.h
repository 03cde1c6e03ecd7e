// What a program that is launched shows the desktop, so that its window comes to the front.
#pragma once

#include <string>
#include <string_view>

namespace vorn::engine {

// A startup ID with the time of now (freedesktop.org "Startup Notification Protocol Specification"), for a program that
// a person has just asked for. Empty but on an X server of this machine, whose clock is the system's: on Wayland only a
// window that has the keyboard is given something to hand on, and the engine has no window.
std::string startupID(std::string_view application);

}  // namespace vorn::engine
