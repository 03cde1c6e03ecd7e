// Clients' ports in memory.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/requests/ReplyPorts.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine::test {

class MemoryPorts : public ReplyPorts {
 public:
  struct Answer {
    std::string port;
    std::int32_t messageID = 0;
    PropertyList body;
    friend bool operator==(const Answer&, const Answer&) = default;
  };

  std::set<std::string, std::less<>> names;  // the ports that exist
  bool isBroken = false;                     // messages cannot be handed over
  std::vector<Answer> answers;

  bool exists(std::string_view portName) override { return names.contains(portName); }
  Outcome post(std::string_view portName, std::int32_t messageID, BytesView data) override {
    if (!exists(portName)) return Outcome::NoSuchPort;
    if (isBroken) return Outcome::Failed;
    answers.push_back({std::string(portName), messageID, decodeBinaryPropertyList(data).value_or(PropertyList())});
    return Outcome::Sent;
  }
};

}  // namespace vorn::engine::test
