// Where messages for the person at the screen leave. One thread, the engine's.
#pragma once

#include <cstdint>
#include <string>

namespace vorn::engine {

struct ScreenMessage {
  // A message takes the place of the former one of its kind.
  enum class Kind : std::uint8_t {
    Change,   // what has just changed; of interest for a moment
    Warning,  // something to be done soon
  };

  Kind kind = Kind::Change;
  std::string title;   // one line of plain text
  std::string text{};  // plain text without "&", "<" and ">", which some desktops take for markup; may be empty
  friend bool operator==(const ScreenMessage&, const ScreenMessage&) = default;
};

class MessageScreen {
 public:
  virtual ~MessageScreen() = default;
  // Shows the message as soon as the screen takes it, and returns without waiting. Of several that come while it takes
  // none, the last one of each kind is shown.
  virtual void show(const ScreenMessage& message) = 0;
};

}  // namespace vorn::engine
