// Tells of every message port of the session that goes, with its owner or by the owner's will, without asking the bus
// about any of them. Belongs to the thread that made it, whose run loop calls the handler.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace vorn {

class PortLosses {
 public:
  // Without a bus nothing is told. A port that goes from one owner to another at once counts as lost.
  explicit PortLosses(std::function<void(const std::string& portName)> lost);
  ~PortLosses();
  PortLosses(const PortLosses&) = delete;
  PortLosses& operator=(const PortLosses&) = delete;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
