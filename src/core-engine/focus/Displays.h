// The displays of this session, as far as a program can find them that was started without one. One thread, the
// engine's.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace vorn::engine {

struct FoundDisplays {
  std::string waylandSocket{};  // the absolute path; empty where there is no Wayland display
  // Of the X server: empty where there is none.
  std::string x11Display{};    // ":0"
  std::string x11Socket{};     // its absolute path
  std::string x11Authority{};  // the path of the file of its keys; may not exist
  // What runs on the Wayland display.
  bool hasGnomeShell = false;
  bool hasKWin = false;
  friend bool operator==(const FoundDisplays&, const FoundDisplays&) = default;
};

class Displays {
 public:
  virtual ~Displays() = default;  // calls nothing any more
  // found is called once, later.
  virtual void find(std::function<void(const FoundDisplays&)> found) = 0;
  // changed is called when a display, or what runs on one, may have come; an empty one ends it.
  virtual void watch(std::function<void()> changed) = 0;
};

}  // namespace vorn::engine
