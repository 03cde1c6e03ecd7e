#include "ctl/EngineClient.h"

#include <unistd.h>

#include <utility>

#include "model/PropertyListCodec.h"
#include "ports/BusConnection.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/ServiceActivation.h"

namespace vorn::ctl {

namespace {

Failure noAnswer() {
  return {ExitStatus::NoAnswer, "the engine does not answer in time"};
}

Failure noBus() {
  const std::string& reason = BusConnection::forThisThread().error();
  return {ExitStatus::NoEngine, "cannot reach the session bus" + (reason.empty() ? reason : ": " + reason)};
}

Failure noEngine() {
  if (!BusConnection::forThisThread().isOpen()) return noBus();
  return {ExitStatus::NoEngine, "no core engine runs in this session; start vorn-core-engine"};
}

}  // namespace

EngineClient::EngineClient(std::chrono::milliseconds timeout, bool startsEngine)
    : mTimeout(timeout),
      mStartsEngine(startsEngine),
      mReplyPortName(std::string(vornctlReplyPortPrefix) + std::to_string(getpid())) {}

EngineClient::~EngineClient() = default;

Outcome EngineClient::connect() {
  if (!BusConnection::forThisThread().isOpen()) return noBus();
  if (!mLoop) mLoop = std::make_unique<RunLoop>();
  if (mReplyPort) return std::nullopt;
  mEngine.emplace(enginePortName, [] {});
  DistributedNotificationCenter::defaultCenter().believeOnly(enginePortName);
  std::string error;
  mReplyPort = LocalMessagePort::create(
      mReplyPortName, [this](const LocalMessagePort::Message& message) { return take(message); }, nullptr, &error);
  if (!mReplyPort) return Failure{ExitStatus::NoEngine, "cannot make a reply port: " + error};
  return std::nullopt;
}

Bytes EngineClient::take(const LocalMessagePort::Message& message) {
  // An answer to an earlier request, or somebody else's message.
  if (message.sender != mEngine->owner() || !mAwaited || message.messageID != static_cast<std::int32_t>(*mAwaited))
    return {};
  mAnswer = decodePropertyList(message.data).value_or(PropertyList());
  mLoop->stop();
  return {};
}

Outcome EngineClient::send(MessageID messageID, const PropertyList& body) {
  if (auto failure = connect()) return failure;
  const PropertyList request = body.with(requestKeys::ProductID, wiredProductID)
                                   .with(requestKeys::ResponseMsgPortName, mReplyPortName)
                                   .with(requestKeys::SourceApp, vornctlIdentifier)
                                   .with(requestKeys::IsVisitor, true);
  std::string error;
  const auto data = encodeBinaryPropertyList(request, &error);
  if (!data) return Failure{ExitStatus::Refused, "the request cannot be sent: " + error};
  auto port = RemoteMessagePort::lookUp(enginePortName);
  if (!port) {
    if (auto failure = startEngine()) return failure;
    port = RemoteMessagePort::lookUp(enginePortName);
    if (!port) return noEngine();
  }
  using Status = RemoteMessagePort::Status;
  switch (port->sendRequest(static_cast<std::int32_t>(messageID), *data, mTimeout)) {
    case Status::Success:
      return std::nullopt;
    case Status::Timeout:
      return noAnswer();
    case Status::InvalidPort:
    case Status::TransportError:
      break;
  }
  return Failure{ExitStatus::NoEngine, "the core engine did not take the request"};
}

Outcome EngineClient::startEngine() {
  if (RemoteMessagePort::lookUp(enginePortName)) return std::nullopt;
  if (!std::exchange(mStartsEngine, false)) return noEngine();
  const ServiceStart start = startServiceAndWait(engineServiceName, mTimeout);
  using Status = ServiceStart::Status;
  switch (start.status) {
    case Status::Running:
      return std::nullopt;
    case Status::Timeout:
      return Failure{ExitStatus::NoAnswer, "the core engine has been asked to start, but is not there in time"};
    case Status::Failed:
      return Failure{ExitStatus::NoEngine, "the core engine cannot be started: " + start.error};
    case Status::NotInstalled:
    case Status::NoBus:
      break;
  }
  return noEngine();
}

Outcome EngineClient::waitUntil(const std::function<bool()>& isDone) {
  const RunLoop::Timer timer = mLoop->addTimer(mTimeout, [this] { mLoop->stop(); });
  bool isConnected = true;
  const auto end = std::chrono::steady_clock::now() + mTimeout;
  while (!isDone() && isConnected && std::chrono::steady_clock::now() < end) isConnected = mLoop->run();
  mLoop->removeTimer(timer);
  if (isDone()) return std::nullopt;
  if (!isConnected) return Failure{ExitStatus::NoEngine, "the session bus is gone"};
  return noAnswer();
}

Result<PropertyList> EngineClient::request(MessageID messageID, const PropertyList& body) {
  mAnswer.reset();
  mAwaited = messageID;
  if (auto failure = send(messageID, body)) return *failure;
  if (auto failure = waitUntil([this] { return mAnswer.has_value(); })) return *failure;
  mAwaited.reset();
  if (!mAnswer->isDictionary()) {
    return Failure{ExitStatus::Refused, "the answer of the engine cannot be understood"};
  }
  return *mAnswer;
}

}  // namespace vorn::ctl
