// Watches the owner of a message port. Belongs to the thread that made it, whose run loop calls the handler.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vorn {

class PortWatch {
 public:
  // lost is called whenever the port goes, with its owner or by the owner's will. It may end the watch.
  PortWatch(std::string_view portName, std::function<void()> lost);
  ~PortWatch();
  PortWatch(const PortWatch&) = delete;
  PortWatch& operator=(const PortWatch&) = delete;

  const std::string& portName() const;
  // Whether the port was there after the watch had begun: from then on lost tells of its end.
  bool wasThere() const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
