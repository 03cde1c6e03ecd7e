// The application that a person works with.
#pragma once

#include <string>

namespace vorn::engine {

// All empty: none is in front, the bare desktop.
struct Application {
  // Its desktop-file ID without ".desktop", the application ID of its Wayland window or the class of its X11 window.
  std::string identifier;
  // The program of its window's process: an absolute path, or a file name where no more is known. May be empty.
  std::string executable;
  std::string name;        // for people; may be empty
  std::string instance{};  // of an X11 window, beside its class; may be empty

  bool isNone() const { return identifier.empty() && executable.empty() && name.empty() && instance.empty(); }
  friend bool operator==(const Application&, const Application&) = default;
};

}  // namespace vorn::engine
