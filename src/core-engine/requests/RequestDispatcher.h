// From a message of the engine's port to its handler, and from the handler to the client's port. What is wrong with a
// message is told in the log and harms nobody. One thread, the engine's.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "core-engine/requests/ReplyPorts.h"
#include "core-engine/requests/Request.h"
#include "ports/MessagePort.h"

namespace vorn::engine {

// Is told of every request that is served.
class RequestObserver {
 public:
  virtual ~RequestObserver() = default;
  // Its answer, if it has one, has left.
  virtual void hasServed(const RequestKind& kind, const Request& request) = 0;
};

class RequestDispatcher {
 public:
  // The parts, the ports and the kinds outlive the dispatcher. kinds: one row for each message ID.
  RequestDispatcher(EngineParts parts, ReplyPorts& ports, std::span<const RequestKind> kinds = requestKinds());

  // One observer, which outlives the dispatcher; null for none.
  void setObserver(RequestObserver* observer) { mObserver = observer; }

  // Serves a message of the engine's port; the answer leaves through the client's. done is called once, when that is at
  // its end: within the call, or later where the message changes the settings. Until then there is no other one.
  void receive(const LocalMessagePort::Message& message, std::function<void()> done = {});

 private:
  // Null, told in the log, for a message that is no request.
  const RequestKind* begin(const LocalMessagePort::Message& message);
  void serve(const RequestKind& kind);
  void finish(const RequestKind& kind, const Answer& body);
  void end();
  void answer(const RequestKind& kind, const Request& request, const PropertyList& body);

  EngineParts mParts;
  ReplyPorts& mPorts;
  std::span<const RequestKind> mKinds;
  RequestObserver* mObserver = nullptr;
  std::optional<Request> mServed;  // while its handler is at work
  std::function<void()> mDone;
};

}  // namespace vorn::engine
