// Hears a signal of other programs' objects. Belongs to the thread that made it, whose run loop calls the handler.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/PropertyList.h"
#include "ports/BusConnection.h"

namespace vorn {

// Which signal of which objects.
struct SignalSource {
  std::string path;
  std::string interface;
  std::string signal;
  Bus bus = Bus::Session;
  std::string busName{};         // whose signal; empty: anybody's
  bool hasObjectsBelow = false;  // also the objects whose paths begin with this one's
};

struct ReceivedSignal {
  std::string sender;  // the unique bus name of the connection that has sent it; anybody can, with a bus name or not
  std::string path;    // of the object
  std::vector<PropertyList> values;  // empty where it holds types that BusObject.h does not list
};

class SignalWatch {
 public:
  // May end the watch.
  using Handler = std::function<void(const ReceivedSignal& received)>;

  // Without a bus nothing is heard. The session's bus knows of the watch when it exists, the system's soon after.
  SignalWatch(const SignalSource& source, Handler received);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
