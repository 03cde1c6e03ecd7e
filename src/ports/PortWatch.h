// Watches the owner of a message port. Belongs to the thread that made it, whose run loop calls the handlers.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vorn {

class PortWatch {
 public:
  // lost is called whenever the port goes, with its owner or by the owner's will; found, where given, whenever it
  // comes. A port that goes from one owner to another is lost and found. Either may end the watch.
  PortWatch(std::string_view portName, std::function<void()> lost, std::function<void()> found = {});
  ~PortWatch();
  PortWatch(const PortWatch&) = delete;
  PortWatch& operator=(const PortWatch&) = delete;

  const std::string& portName() const;
  // Whether the port was there after the watch had begun: from then on lost tells of its end.
  bool wasThere() const;
  // The connection (unique bus name) that has the port; empty while nobody has it.
  const std::string& owner() const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
