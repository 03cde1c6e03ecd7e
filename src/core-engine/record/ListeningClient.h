// The client that records, or the one that captures: the connection that has its port, and the end of that port. One
// thread, the engine's.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "ports/PortOwner.h"

namespace vorn::engine {

class ListeningClient {
 public:
  // lost: nobody has the port of the client, any more or already when it began.
  explicit ListeningClient(std::function<void()> lost) : mLost(std::move(lost)) {}

  // From now on it is this one, by the name of its port; empty for nobody. Waits for nothing: the bus is asked, and
  // answers before the client can hear of what is sent to it from now on.
  void become(const std::string& portName);
  // To be told of every port that goes.
  void portLost(const std::string& portName);
  // Whether this connection (its unique bus name) has the port of the client.
  bool isConnection(const std::string& connection) const;

 private:
  std::function<void()> mLost;
  std::string mPortName;
  std::optional<PortOwner> mOwner;
};

}  // namespace vorn::engine
