// Where answers go: the clients' message ports. One thread, the engine's.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn::engine {

class ReplyPorts {
 public:
  enum class Outcome { Sent, NoSuchPort, Failed };

  virtual ~ReplyPorts() = default;

  virtual bool exists(std::string_view portName) = 0;
  // Hands the message over without waiting for its receiver.
  virtual Outcome post(std::string_view portName, std::int32_t messageID, BytesView data) = 0;
};

// Over the session bus.
class BusReplyPorts : public ReplyPorts {
 public:
  bool exists(std::string_view portName) override;
  Outcome post(std::string_view portName, std::int32_t messageID, BytesView data) override;
};

}  // namespace vorn::engine
