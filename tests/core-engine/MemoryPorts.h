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

  void lookUp(std::string_view portName, std::function<void(bool exists)> done) override {
    done(names.contains(portName));
  }
  void post(std::string_view, std::string_view portName, std::int32_t messageID, BytesView data, Done done) override {
    if (!names.contains(portName)) {
      tellLost(std::string(portName));
      return done(Outcome::NoSuchPort);
    }
    if (isBroken) return done(Outcome::Failed);
    answers.push_back({std::string(portName), messageID, decodeBinaryPropertyList(data).value_or(PropertyList())});
    done(Outcome::Sent);
  }
  void lose(const std::string& portName) {
    names.erase(portName);
    tellLost(portName);
  }
};

}  // namespace vorn::engine::test
