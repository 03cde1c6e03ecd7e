// The configurator's road to the engine: send a request, wait for whatever answer lands in the single reply slot.
//
// An answer is not matched to its request: the wait takes any dictionary that the slot holds, also a late answer to
// an earlier request. Of two answers before a wait only the newer survives. Order of calls for one command:
// send, waitForReply, reply, emptySlot.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/PropertyList.h"
#include "ports/ServiceActivation.h"
#include "protocol/EngineProtocol.h"

namespace vorn {

// How long a wait blocks the thread before it looks after the rest.
inline constexpr std::chrono::milliseconds waitTurn{60};

// How long the engine may take to answer what is asked beside the requests: as long as for a request.
inline constexpr std::chrono::milliseconds besideTimeout = maximumPolls * pollInterval;

struct TypedKey {
  std::uint16_t usagePage = 0;  // 7 for a key, 9 for a mouse button (USB HID Usage Tables)
  std::uint16_t usage = 0;
  bool isPressed = false;
  std::chrono::milliseconds time{};
  friend bool operator==(const TypedKey&, const TypedKey&) = default;
};

// What can be asked of the engine's history of changes (protocol/History.h).
enum class HistoryCall : std::uint8_t { Undo, Redo, GoTo, Entries };

struct HistoryRequest {
  HistoryCall call = HistoryCall::Entries;
  // Its ID. Of Undo and Redo the one that has to come next, or 0 for whichever does; of GoTo 0 for the settings before
  // all changes.
  std::int64_t change = 0;
  friend bool operator==(const HistoryRequest&, const HistoryRequest&) = default;
};

struct HistoryAnswer {
  enum class Outcome : std::uint8_t {
    Done,
    NothingLeft,   // to be taken back or made again
    ChangedSince,  // all of the change has been changed again since: nothing is done, and it is no longer offered
    Outdated,      // another change comes next than the one that was to be taken back or made again: nothing is done
    NotSaved,      // nothing is done
    NoHistory,     // the engine keeps none
    NoAnswer,      // in time; whether it is done is not known
    NoEngine,
  };
  Outcome outcome = Outcome::NoEngine;
  // Of Undo and Redo the change, of GoTo how many there were, of Entries an array of them, the newest first. None where
  // it is not done.
  PropertyList value{};
  std::int64_t conflicts = 0;  // how many values of the change stay as they are, since others have changed them
};

// What can be asked about the choice of the mouse (protocol/Mice.h).
enum class MiceCall : std::uint8_t { List, Choose, Teach, Forget, SetResolution };

struct MiceRequest {
  MiceCall call = MiceCall::List;
  std::string name{};  // of Choose the mouse's ID, of Teach and Forget the control's identifier or nothing
  int resolution = 0;  // of SetResolution, in DPI
  friend bool operator==(const MiceRequest&, const MiceRequest&) = default;
};

struct MiceAnswer {
  enum class Outcome : std::uint8_t {
    Done,
    NotFound,  // no such mouse
    NotAllowed,
    NotTeachable,  // the mouse in use is virtual or absent
    BadArgument,
    Busy,  // another program teaches
    NotSaved,
    NoMice,    // the engine offers no choice
    NoAnswer,  // in time; whether it is done is not known
    NoEngine,
  };
  Outcome outcome = Outcome::NoEngine;
  PropertyList mice{};  // of List an array of dictionaries; none where it is not done
};

// A teaching has ended.
struct TaughtControl {
  std::string control;
  bool isTaught = false;
  std::string source{};  // "BTN_SIDE", of a wheel with its direction "REL_HWHEEL +"; empty where nothing was taught
  std::string former{};  // the control that had this before; empty for none
  friend bool operator==(const TaughtControl&, const TaughtControl&) = default;
};

// What the engine tells of the mice.
struct MiceNews {
  std::function<void()> changed;
  std::function<void(const TaughtControl&)> taught;
};

class EngineLink {
 public:
  virtual ~EngineLink() = default;

  // Starts the reply thread, which owns the reply port until this object goes. Returns when the port exists or could
  // not be created (false; the failure is told on standard error, and no answer will ever be heard).
  virtual bool createLocalPort() = 0;
  // Whether a port of the engine's name exists now. Any thread.
  virtual bool isEngineAvailable() = 0;
  // Calls changed on the calling thread's run loop whenever the engine's port goes or comes, from now on, in the place
  // of an earlier one; an empty one ends that. Returns whether the port is there now.
  virtual bool watchEngine(std::function<void(bool isThere)> changed) = 0;
  // Asks the bus to start the engine, and returns at once; nothing else here starts it. done is called once, now or
  // from the calling thread's run loop: at the latest after engineStartTimeout, and where the engine came, after
  // changed.
  virtual void startEngine(std::function<void(const ServiceStart&)> done) = 0;
  // What the waiting thread does while send or waitForReply blocks it: called about every waitTurn, the first time
  // after one. Where it answers false, both end at once, as if their time had passed. Not during a request. Empty:
  // none.
  virtual void setWhileWaiting(std::function<bool()> whileWaiting) = 0;
  // Serialises the request and sends it to the engine's port; without a port nothing is sent. The outcome is never
  // told: the result is always sendRequestResult. One thread at a time, as a rule the main thread; blocks up to
  // sendTimeout.
  virtual int send(const PropertyList& request, MessageID messageID) = 0;
  // Sends a request that has no answer on the reply port, and does not wait until the engine has taken it either. Any
  // thread.
  virtual void post(const PropertyList& request, MessageID messageID) = 0;
  // Tells the engine of a key or mouse button that this program received while it records or captures; the engine takes
  // it after the requests that were sent before. time: of the event, by any clock; only differences count. Waits for
  // nothing. The thread of send.
  virtual void type(const TypedKey& key) = 0;
  // Calls changed on the calling thread's run loop whenever the engine's history has changed, from now on, in the place
  // of an earlier one; an empty one ends that. Only the engine that watchEngine tells of is believed.
  virtual void watchHistory(std::function<void()> changed) = 0;
  // Asks that engine and returns at once; the engine serves what is asked in that order, after the requests that were
  // answered before. done is called once: from the calling thread's run loop, at the latest after besideTimeout, or
  // now where there is no engine to ask. The thread of watchEngine.
  virtual void askHistory(const HistoryRequest& request, std::function<void(const HistoryAnswer&)> done) = 0;
  // The same for the mice. Both functions are there, or none, to end it.
  virtual void watchMice(MiceNews news) = 0;
  virtual void askMice(const MiceRequest& request, std::function<void(const MiceAnswer&)> done) = 0;
  // The same for the application in front: its state, by the keys of protocol/Focus.h, or none where nobody answers. An
  // engine that no profile needs it for finds it out now, which takes some time.
  virtual void watchFocus(std::function<void()> changed) = 0;
  virtual void askFocus(std::function<void(const PropertyList& state)> done) = 0;
  // Polls the slot at most polls times with interval in between and ends as soon as it holds a dictionary; true when
  // it does. One thread at a time, as a rule the main thread.
  virtual bool waitForReply(int polls = maximumPolls, std::chrono::milliseconds interval = pollInterval) = 0;
  // The slot's dictionary, which stays there; none when the slot is empty.
  virtual PropertyList reply() const = 0;
  virtual void emptySlot() = 0;
};

}  // namespace vorn
