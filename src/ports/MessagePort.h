// Named message ports. A port NAME is the bus name org.vorn.MessagePort.NAME with the object /org/vorn/MessagePort and
// the method org.vorn.MessagePort1.Send(i messageID, ay data) -> (ay replyData). docs/engine-link.md has the details.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn {

inline constexpr std::string_view messagePortBusNamePrefix = "org.vorn.MessagePort.";
inline constexpr const char* messagePortObjectPath = "/org/vorn/MessagePort";
inline constexpr const char* messagePortInterface = "org.vorn.MessagePort1";

// Somebody else's port. Uses the connection of the thread that looked it up and belongs to that thread.
class RemoteMessagePort {
 public:
  enum class Status { Success, Timeout, InvalidPort, TransportError };

  // Nothing when no such port exists now, there is no bus or the name is not a valid bus name. Starts no service.
  static std::optional<RemoteMessagePort> lookUp(std::string_view name);

  const std::string& name() const { return mName; }

  // Sends one message and blocks until the port's owner has taken it or the time-out has passed. replyData, if
  // given, receives what the owner returned; empty for none.
  Status sendRequest(std::int32_t messageID, BytesView data, std::chrono::milliseconds timeout,
                     Bytes* replyData = nullptr) const;
  // Sends one message without waiting for anything; nobody hears whether it arrived.
  Status post(std::int32_t messageID, BytesView data) const;
  // Sends one message and returns at once. done is called once from this thread's run loop: when the port's owner has
  // taken the message, it could not be sent, the time-out has passed or the loop's connection goes. The port needs no
  // look-up: without an owner the outcome is InvalidPort.
  static void sendLater(std::string_view name, std::int32_t messageID, BytesView data,
                        std::chrono::milliseconds timeout, std::function<void(Status)> done);
  // Sends one message without waiting for anything, as post() does, but needs no look-up and hears of it: read is
  // called once, now or from this thread's run loop, when the port's owner has read the message (Success), nobody has
  // the port (InvalidPort), it could not be sent or its owner or the loop's connection went first. There is no
  // time-out.
  static void postTracked(std::string_view name, std::int32_t messageID, BytesView data,
                          std::function<void(Status)> read);
  // Looks the port up without waiting: its owner is pinged. done is called once, as in postTracked().
  static void ping(std::string_view name, std::function<void(Status)> done);

 private:
  explicit RemoteMessagePort(std::string name) : mName(std::move(name)) {}
  std::string mName;
};

// A port of our own on this thread's connection; the name is given up at destruction.
class LocalMessagePort {
 public:
  struct Message {
    std::int32_t messageID = 0;
    BytesView data;           // valid during the call
    std::string_view sender;  // unique bus name of the sending connection
  };
  // Runs on the thread that created the port, from its run loop. What it returns goes back to the sender; nothing is
  // the error LimitsExceeded.
  using Callback = std::function<std::optional<Bytes>(const Message&)>;

  enum class Failure { NoBus, NameTaken, InvalidName, Other };

  static std::unique_ptr<LocalMessagePort> create(std::string_view name, Callback callback, Failure* failure = nullptr,
                                                  std::string* error = nullptr);
  ~LocalMessagePort();
  LocalMessagePort(const LocalMessagePort&) = delete;
  LocalMessagePort& operator=(const LocalMessagePort&) = delete;

  const std::string& name() const;

 private:
  LocalMessagePort();
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
