// A connection to the user's session bus or to the system bus. A connection belongs to the thread that opened it;
// nothing here may be called from another thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

struct sd_bus;
struct sd_event;

namespace vorn {

enum class Bus : std::uint8_t {
  Session,
  System,  // DBUS_SYSTEM_BUS_ADDRESS, or its usual place
};

class BusConnection {
 public:
  // This thread's connection to that bus, opened on first use and kept until the thread ends. A connection that was
  // lost is opened anew by the next call; check isOpen(). The session's bus has greeted when this returns. Nobody waits
  // for the system's: what does not block may be sent at once, and is told later where no bus takes it.
  static BusConnection& forThisThread(Bus bus = Bus::Session);
  // From now on the event loop serves this thread's connection to the system bus, whenever there is one; null: none
  // does. The connection is not opened for that.
  static void serveSystemBus(sd_event* loop);

  ~BusConnection();
  BusConnection(const BusConnection&) = delete;
  BusConnection& operator=(const BusConnection&) = delete;

  // False where there is no bus or it went away.
  bool isOpen() const;
  // Why the bus could not be reached, in English; empty while it is open.
  const std::string& error() const;

  // For an event loop: watch descriptor() for pollEvents() and call process() when it is ready or when timeout() has
  // passed.
  int descriptor() const;                                    // -1 when closed
  short pollEvents() const;                                  // POLLIN and so on
  std::optional<std::chrono::microseconds> timeout() const;  // from now; nothing = no limit, 0 = at once
  // Handles everything that has arrived, without blocking. False when the connection was lost.
  bool process();

  // Writes what is still to be written, as far as the bus takes it soon, and leaves the bus: whatever this thread has
  // there goes at once, without a word for each of it. The thread's next use of the bus would open another connection.
  void close();

  // A blocking call of this connection may receive other messages meanwhile; they wait in the connection, and its
  // descriptor does not become readable for them. The handler is then called, once per such call, so that the event
  // loop can arrange for process() to run. It must not call process() itself. It is also called when timeout() has
  // become shorter by a call that does not block.
  void setQueuedHandler(std::function<void()> handler);

  sd_bus* handle() const;         // null when closed; owned by the connection
  void announceQueuedMessages();  // called by src/ports after each blocking call
  void announceTimeout();         // called by src/ports after each call with a limit that does not block

 private:
  explicit BusConnection(Bus bus);
  static BusConnection& ofThisThread(Bus bus);
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
