// Who has a message port, asked of the bus once and without waiting. Belongs to the thread that made it, whose run loop
// takes the bus's word.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vorn {

class PortOwner {
 public:
  // missing is called from the run loop when nobody has the port, or none can have that name; it may end the question.
  // Without a bus nothing is ever known.
  PortOwner(std::string_view portName, std::function<void()> missing);
  ~PortOwner();
  PortOwner(const PortOwner&) = delete;
  PortOwner& operator=(const PortOwner&) = delete;

  // The connection (unique bus name) that had the port when the question reached the bus; empty until the bus has said
  // so. It has by the time that the answer arrives to anything that is sent after the question.
  const std::string& connection() const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
