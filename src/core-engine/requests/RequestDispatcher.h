// From a message of the engine's port to its handler, and from the handler to the client's port. What is wrong with a
// message is told in the log and harms nobody. One thread, the engine's.
#pragma once

#include <cstdint>
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
  virtual void willServe(const RequestKind& kind, const Request& request) = 0;
  // Its answer, if it has one, has left.
  virtual void hasServed(const RequestKind& kind, const Request& request) = 0;
};

class RequestDispatcher {
 public:
  // The parts, the ports and the kinds outlive the dispatcher. kinds: one row for each message ID.
  RequestDispatcher(EngineParts parts, ReplyPorts& ports, std::span<const RequestKind> kinds = requestKinds());

  // One observer, which outlives the dispatcher; null for none.
  void setObserver(RequestObserver* observer) { mObserver = observer; }

  // The callback of the engine's port. The answer leaves through the client's port; nothing is returned.
  Bytes receive(const LocalMessagePort::Message& message);

 private:
  void serve(const RequestKind& kind, const Request& request);
  void answer(const RequestKind& kind, const Request& request, const PropertyList& body);

  EngineParts mParts;
  ReplyPorts& mPorts;
  std::span<const RequestKind> mKinds;
  RequestObserver* mObserver = nullptr;
};

}  // namespace vorn::engine
