// Where answers go: the clients' message ports. One thread, the engine's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "model/PropertyList.h"
#include "ports/PortLosses.h"

namespace vorn::engine {

class ReplyPorts {
 public:
  enum class Outcome {
    Sent,        // the port's owner has read it
    Gone,        // the port went with its owner, who may have read it before
    NoSuchPort,  // nobody has the port
    Unread,      // dropped: too many messages are unread, of the port, of the client or of all
    Failed,
  };
  using Done = std::function<void(Outcome outcome)>;
  using LostHandler = std::function<void(const std::string& portName)>;

  virtual ~ReplyPorts() = default;

  // Tells whether somebody has the port and reads; done is called once, now or later.
  virtual void lookUp(std::string_view portName, std::function<void(bool exists)> done) = 0;
  // Hands the message, which the client (unique bus name) asked for, over without waiting for anything. done is called
  // once, now or later.
  virtual void post(std::string_view client, std::string_view portName, std::int32_t messageID, BytesView data,
                    Done done) = 0;

  // Is told of every port that goes, and of one that an answer did not find.
  void setLostHandler(LostHandler handler) { mLostHandler = std::move(handler); }

 protected:
  void tellLost(const std::string& portName) const {
    if (mLostHandler) mLostHandler(portName);
  }

 private:
  LostHandler mLostHandler;
};

// Over the session bus. A port whose owner does not read loses what it does not read, and so does a client whose
// answers nobody reads, however many ports it names. Nobody else waits for them.
class BusReplyPorts : public ReplyPorts {
 public:
  // So many messages of a port may be unread, and of a client, and so many bytes beside a single larger one.
  static constexpr std::size_t maximumUnread = 64;
  static constexpr std::size_t maximumUnreadSize = std::size_t{8} * 1024 * 1024;
  // The same of all together; and so much more, where it is the first of both its port and its client.
  static constexpr std::size_t maximumTotal = 256;
  static constexpr std::size_t maximumTotalSize = std::size_t{32} * 1024 * 1024;
  static constexpr std::size_t maximumFirst = 1024;
  static constexpr std::size_t maximumFirstSize = std::size_t{16} * 1024 * 1024;

  BusReplyPorts();
  ~BusReplyPorts() override;
  BusReplyPorts(const BusReplyPorts&) = delete;
  BusReplyPorts& operator=(const BusReplyPorts&) = delete;

  void lookUp(std::string_view portName, std::function<void(bool exists)> done) override;
  void post(std::string_view client, std::string_view portName, std::int32_t messageID, BytesView data,
            Done done) override;

 private:
  class State;
  std::shared_ptr<State> mState;
  PortLosses mLosses;
};

}  // namespace vorn::engine
