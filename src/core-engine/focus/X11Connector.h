// Connects to an X server of this machine, however slow or silent it is: what waits is a thread of its own, which lasts
// no longer than the attempt. Belongs to the engine's thread.
#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "core-engine/Scheduler.h"
#include "model/FileDescriptor.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

struct CloseX11Connection {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using X11Connection = std::unique_ptr<xcb_connection_t, CloseX11Connection>;

class X11Connector {
 public:
  // So long an answer is waited for.
  static constexpr Scheduler::Duration longest = std::chrono::seconds(2);

  // display: ":0"; authority: the file of its keys. done is called once, from the run loop: with a connection without
  // an error, or with none. It may end the connector.
  X11Connector(RunLoop& loop, Scheduler& scheduler, const std::string& socketPath, int display,
               const std::string& authority, std::function<void(X11Connection)> done);
  ~X11Connector();  // gives up what is under way
  X11Connector(const X11Connector&) = delete;
  X11Connector& operator=(const X11Connector&) = delete;

 private:
  struct Attempt;

  void end();

  Scheduler& mScheduler;
  std::function<void(X11Connection)> mDone;
  std::shared_ptr<Attempt> mAttempt;
  Scheduler::Ticket mLimit = 0;
  std::thread mThread;
};

// As X servers and windows name this machine; empty where it has none.
std::string localHostName();

}  // namespace vorn::engine
