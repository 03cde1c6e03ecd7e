// The application in front on an X server, as its window manager tells it ("Extended Window Manager Hints": the
// property _NET_ACTIVE_WINDOW of the root window). Where there is no window manager that does, it is silent until one
// comes. One thread, the engine's.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "core-engine/Scheduler.h"
#include "core-engine/focus/ApplicationInFront.h"
#include "core-engine/focus/X11Connector.h"
#include "core-engine/focus/X11Questions.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

class X11Focus : public ApplicationInFront {
 public:
  struct Server {
    std::string socketPath;
    std::string display;    // ":0.1"; the screen is the last number
    std::string authority;  // the file of the keys
  };

  // Windows are looked at so often at most.
  static constexpr Scheduler::Duration pause = std::chrono::milliseconds(10);

  // The loop and the scheduler outlive this.
  X11Focus(RunLoop& loop, Scheduler& scheduler, Server server, Handlers handlers);
  ~X11Focus() override;
  X11Focus(const X11Focus&) = delete;
  X11Focus& operator=(const X11Focus&) = delete;

  std::string_view name() const override;
  void start() override;

 private:
  enum Atom : std::size_t {
    Supported,
    Manager,
    ActiveWindow,
    Process,
    Title,
    WindowType,
    Desktop,
    Dock,
    atomCount,
  };
  // What a window says of itself.
  struct Window {
    xcb_window_t id = XCB_WINDOW_NONE;
    bool isMapped = false;
    X11Property names;
    X11Property title;
    X11Property process;
    X11Property machine;
    X11Property type;
  };

  void connected(X11Connection connection);
  void take();
  void note(const xcb_generic_event_t& event);
  void noteProperty(const xcb_property_notify_event_t& changed);
  void noteWindow(xcb_window_t window);
  void askForAtoms();
  // Looks for the window manager and the window in front, now or when a look that is under way has ended.
  void look();
  void askManager();
  void askWhetherTelling();
  void askActive();
  void askWindow(xcb_window_t window);
  void lookedAt(const Window& window);
  void ended();
  void beSilent();
  bool isPassedOver(const Window& window) const;
  Application applicationOf(const Window& window) const;
  // Its window is told of from now on, and the one before no longer.
  void watchWindow(const Window& window);
  void select(xcb_window_t window, std::uint32_t events);
  void fail();

  RunLoop& mLoop;
  Scheduler& mScheduler;
  Server mServer;
  std::string mHost;
  std::unique_ptr<X11Connector> mConnector;
  std::unique_ptr<X11Questions> mQuestions;
  RunLoop::Watch mWatch = 0;
  Scheduler::Ticket mTicket = 0;
  xcb_window_t mRoot = XCB_WINDOW_NONE;
  xcb_window_t mManager = XCB_WINDOW_NONE;  // its own window, which goes with it
  xcb_window_t mInFront = XCB_WINDOW_NONE;
  std::array<xcb_atom_t, atomCount> mAtoms{};
  bool mIsLooking = false;
  bool mIsToLook = false;
  bool mHasTold = false;
  Application mTold;
};

}  // namespace vorn::engine
