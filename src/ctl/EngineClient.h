// vornctl's road to the core engine: one request at a time, each answered on a reply port of this process's own.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "ctl/Failure.h"
#include "model/PropertyList.h"
#include "ports/MessagePort.h"
#include "ports/PortWatch.h"
#include "ports/RunLoop.h"
#include "protocol/EngineProtocol.h"

namespace vorn::ctl {

// One thread. Connects when it is used first.
class EngineClient {
 public:
  // timeout: for each answer. startsEngine: whether an engine that does not run is started before anything is sent.
  explicit EngineClient(std::chrono::milliseconds timeout, bool startsEngine = true);
  ~EngineClient();
  EngineClient(const EngineClient&) = delete;
  EngineClient& operator=(const EngineClient&) = delete;

  std::chrono::milliseconds timeout() const { return mTimeout; }
  const std::string& replyPortName() const { return mReplyPortName; }

  // Sends the request, with the keys that every request has, and waits for the answer with the same message ID: a
  // dictionary.
  Result<PropertyList> request(MessageID messageID, const PropertyList& body = PropertyList::dictionary());
  // Whether the answer to the last request is still to come: what arrives meanwhile was told before it.
  bool isAwaitingAnswer() const { return mAwaited && !mAnswer; }
  // Sends a request that is answered in another way.
  Outcome send(MessageID messageID, const PropertyList& body = PropertyList::dictionary());

  // Serves the bus until isDone() is true after something arrived; a failure when the time-out passes before.
  Outcome waitUntil(const std::function<bool()>& isDone);

  // Nothing where the engine's port is there. Otherwise the bus is asked to start the engine, at most once, and the
  // failure says why it is not there; it may have cost the time-out.
  Outcome startEngine();

  // Connects to the session bus; not to the engine.
  Outcome connect();
  RunLoop& loop() { return *mLoop; }  // after connect

 private:
  Bytes take(const LocalMessagePort::Message& message);

  std::chrono::milliseconds mTimeout;
  bool mStartsEngine;
  std::string mReplyPortName;
  std::unique_ptr<RunLoop> mLoop;
  std::optional<PortWatch> mEngine;
  std::unique_ptr<LocalMessagePort> mReplyPort;
  std::optional<MessageID> mAwaited;
  std::optional<PropertyList> mAnswer;
};

}  // namespace vorn::ctl
