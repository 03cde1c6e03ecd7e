#include "link/PortEngineLink.h"

#include <cstdio>
#include <future>
#include <utility>

#include "model/VrCoreUtility.h"

namespace vorn {

int sendRequest(const PropertyList& request, MessageID messageID) {
  const std::optional<RemoteMessagePort> port = RemoteMessagePort::lookUp(enginePortName);
  const std::optional<Bytes> data = VrCoreUtility::convertDictionaryToData(request);
  if (!port || !data) return sendRequestResult;
  // The engine's word comes to the reply port; what it returns here says nothing.
  port->sendRequest(static_cast<std::int32_t>(messageID), *data, sendTimeout);
  return sendRequestResult;
}

PortEngineLink::PortEngineLink(std::string replyPortName) : mReplyPortName(std::move(replyPortName)) {}

PortEngineLink::~PortEngineLink() {
  {
    const std::lock_guard lock(mReplyLoopMutex);
    if (mReplyLoop != nullptr) mReplyLoop->stop();
  }
  if (mReplyThread.joinable()) mReplyThread.join();
}

void PortEngineLink::setTrace(Trace trace) {
  mTrace = std::move(trace);
}

bool PortEngineLink::createLocalPort() {
  if (mReplyThread.joinable()) {
    if (isReplyLoopRunning()) return true;
    mReplyThread.join();
  }
  std::promise<bool> created;
  std::future<bool> outcome = created.get_future();
  mReplyThread = std::jthread([this, promise = std::move(created)]() mutable { runReplyThread(std::move(promise)); });
  return outcome.get();
}

void PortEngineLink::runReplyThread(std::promise<bool> created) {
  std::string error;
  const std::unique_ptr<LocalMessagePort> port = LocalMessagePort::create(
      mReplyPortName, [this](const LocalMessagePort::Message& message) { return replyReceived(message); }, nullptr,
      &error);
  if (!port) {
    std::fprintf(stderr, "The reply port cannot be created: %s\n", error.c_str());
    created.set_value(false);
    return;
  }
  RunLoop loop;
  publishReplyLoop(&loop);
  created.set_value(true);
  if (!loop.run()) std::fprintf(stderr, "The session bus is gone; no more answers are heard\n");
  publishReplyLoop(nullptr);
}

void PortEngineLink::publishReplyLoop(RunLoop* loop) {
  const std::lock_guard lock(mReplyLoopMutex);
  mReplyLoop = loop;
}

bool PortEngineLink::isReplyLoopRunning() {
  const std::lock_guard lock(mReplyLoopMutex);
  return mReplyLoop != nullptr;
}

bool PortEngineLink::isEngineAvailable() {
  return RemoteMessagePort::lookUp(enginePortName).has_value();
}

int PortEngineLink::send(const PropertyList& request, MessageID messageID) {
  if (mTrace) mTrace("request", static_cast<std::int32_t>(messageID), request);
  return sendRequest(request, messageID);
}

void PortEngineLink::post(const PropertyList& request, MessageID messageID) {
  if (mTrace) mTrace("request", static_cast<std::int32_t>(messageID), request);
  const std::optional<RemoteMessagePort> port = RemoteMessagePort::lookUp(enginePortName);
  const std::optional<Bytes> data = VrCoreUtility::convertDictionaryToData(request);
  if (port && data) port->post(static_cast<std::int32_t>(messageID), *data);
}

bool PortEngineLink::waitForReply(int polls, std::chrono::milliseconds interval) {
  return mSlot.wait(polls, interval);
}

PropertyList PortEngineLink::reply() const {
  return mSlot.peek();
}

void PortEngineLink::emptySlot() {
  mSlot.empty();
}

Bytes PortEngineLink::replyReceived(const LocalMessagePort::Message& message) {
  if (message.data.empty()) return {};
  PropertyList answer = VrCoreUtility::convertDataToDictionary(message.data).dictionaryOrEmpty();
  if (mTrace) mTrace("answer", message.messageID, answer);
  mSlot.store(std::move(answer));
  return Bytes(message.data.begin(), message.data.end());
}

}  // namespace vorn
