// The windows of a Wayland compositor that speaks zwlr_foreign_toplevel_manager_v1, of the public protocol
// "wlr-foreign-toplevel-management-unstable-v1": which they are and which of them is activated. It never waits for the
// compositor; whoever has it calls read() when the descriptor can be read from. One thread.
#pragma once

#include <memory>
#include <string>

#include "core-engine/focus/Application.h"

struct wl_display;

namespace vorn::engine {

class WaylandWindows {
 public:
  // Null where nobody takes connections at this socket, an absolute path, right now.
  static std::unique_ptr<WaylandWindows> connect(const std::string& socket);
  ~WaylandWindows();
  WaylandWindows(const WaylandWindows&) = delete;
  WaylandWindows& operator=(const WaylandWindows&) = delete;

  int descriptor() const;
  // Takes what has arrived. False when the compositor has gone, has broken the protocol or does not speak this one:
  // nothing may be called any more but front() then.
  bool read();
  enum class Sent { All, Part, None };  // None: as when read() returns false
  // Sends what is to be sent, as far as the compositor takes it; what it does not take is for another call.
  Sent send();

  // Whether it has told of all windows that were there at the beginning.
  bool isComplete() const;
  // That of the window that was activated last; with the title of the window for its name.
  Application front() const;

 private:
  struct State;
  explicit WaylandWindows(wl_display* display);

  std::unique_ptr<State> mState;
};

}  // namespace vorn::engine
