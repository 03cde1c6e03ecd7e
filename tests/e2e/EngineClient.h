// A client of an engine that may be killed at any moment, with a connection of its own.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "model/PropertyListCodec.h"
#include "ports/BusMethodCall.h"
#include "ports/MessagePort.h"
#include "protocol/EngineProtocol.h"
#include "protocol/History.h"
#include "support/LoopThread.h"

namespace vorn::test {

class EngineClient {
 public:
  // name: of the client's port, and what it calls itself.
  explicit EngineClient(std::string name) : mName(std::move(name)) {
    mLoop.run(
        [this] { mPort = LocalMessagePort::create(mName, [this](const auto& message) { return receive(message); }); });
  }
  ~EngineClient() {
    mLoop.run([this] { mPort.reset(); });
  }
  EngineClient(const EngineClient&) = delete;
  EngineClient& operator=(const EngineClient&) = delete;

  // The answer to a request with these keys and the sender's; also one that the engine gave just before it went. None
  // where it went without one.
  std::optional<PropertyList> ask(MessageID messageID, const PropertyList& keys = PropertyList::dictionary()) {
    const auto bytes = encodeBinaryPropertyList(keys.with(requestKeys::ProductID, wiredProductID)
                                                    .with(requestKeys::ResponseMsgPortName, mName)
                                                    .with(requestKeys::SourceApp, mName));
    if (!bytes) return std::nullopt;
    std::unique_lock lock(mMutex);
    mAnswer.reset();
    lock.unlock();
    mLoop.run([&] {
      if (const auto port = RemoteMessagePort::lookUp(enginePortName))
        port->sendRequest(static_cast<std::int32_t>(messageID), *bytes, sendTimeout);
    });
    constexpr std::chrono::milliseconds lookInterval{5};
    lock.lock();
    while (!mAnswerCame.wait_for(lock, lookInterval, [this] { return mAnswer.has_value(); })) {
      lock.unlock();
      const bool isEngineThere = RemoteMessagePort::lookUp(enginePortName).has_value();
      if (!isEngineThere) fence();
      lock.lock();
      if (!isEngineThere) break;
    }
    return std::exchange(mAnswer, std::nullopt);
  }

  BusAnswer callHistory(const char* method, const std::vector<BusInput>& inputs = {}) {
    BusAnswer answer;
    mLoop.run([&] {
      answer = callBusMethod({history::busName, history::objectPath, history::interface}, method, inputs, callTimeout);
    });
    return answer;
  }

 private:
  static constexpr std::chrono::seconds callTimeout{20};

  // On the loop's thread.
  Bytes receive(const LocalMessagePort::Message& message) {
    auto answer = decodeBinaryPropertyList(message.data);
    if (!answer) return {};
    {
      const std::lock_guard lock(mMutex);
      mAnswer = std::move(*answer);
    }
    mAnswerCame.notify_all();
    return {};
  }

  // Returns when everything has been received that was sent to us before.
  void fence() const {
    if (const auto port = RemoteMessagePort::lookUp(mName)) port->sendRequest(-1, {}, sendTimeout);
  }

  std::string mName;
  LoopThread mLoop;
  std::unique_ptr<LocalMessagePort> mPort;
  std::mutex mMutex;
  std::condition_variable mAnswerCame;
  std::optional<PropertyList> mAnswer;
};

}  // namespace vorn::test
