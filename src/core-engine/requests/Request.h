// One request to the engine, and what serves it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "core-engine/Log.h"
#include "core-engine/Scheduler.h"
#include "core-engine/device/Device.h"
#include "core-engine/news/NewsPort.h"
#include "core-engine/play/ProfileChanger.h"
#include "core-engine/record/HeardKeys.h"
#include "core-engine/record/KeyCapture.h"
#include "core-engine/record/MacroRecorder.h"
#include "core-engine/requests/ClientRegistry.h"
#include "core-engine/storage/FactoryDefaults.h"
#include "core-engine/storage/SettingsStore.h"
#include "model/PropertyList.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

struct Request {
  std::string sender;  // unique bus name of the client's connection
  PropertyList body;   // a dictionary
  MessageID messageID{};

  // The product that the request is for; a missing one reads as 0, the wireless mouse.
  std::int32_t productID() const { return body[requestKeys::ProductID].toInt(); }
  // Where the answer goes; empty when the request names no port.
  std::string replyPort() const { return body[requestKeys::ResponseMsgPortName].toString(); }
  // Whether the answer goes to a client: the engine's own port is none's.
  bool namesPort() const { return !replyPort().empty() && replyPort() != enginePortName; }
  // Whether it comes from a program that asks and goes, and that listens to no news.
  bool isOfVisitor() const { return body[requestKeys::IsVisitor].toBool(); }
  // Whether it goes on with what the same connection has asked for just before.
  bool isContinuation() const { return body[requestKeys::IsContinuation].toBool(); }
};

// What requests act on. All of it outlives the requests.
struct EngineParts {
  SettingsStore& store;
  Device& device;
  ClientRegistry& clients;
  const FactoryDefaults& defaults;
  Log& log;
  NewsPort& news;
  Scheduler& scheduler;
  MacroRecorder& recorder;
  KeyCapture& capture;
  HeardKeys& heard;
  ProfileChanger& profiles;
};

// The body of the answer, a dictionary; nothing for a request that has no answer.
using Answer = std::optional<PropertyList>;
// Takes the answer of a request; called once. What the request changes is on the disk then.
using Reply = std::function<void(const Answer& answer)>;

// Serves one request to its end: at once, or, where it changes the settings, when the change is saved. Parts and
// request last until the reply.
class RequestHandler {
 public:
  using Query = Answer (*)(EngineParts& parts, const Request& request);
  using Change = void (*)(EngineParts& parts, const Request& request, Reply reply);

  constexpr RequestHandler(Query query) : mQuery(query) {}
  constexpr RequestHandler(Change change) : mChange(change) {}

  void operator()(EngineParts& parts, const Request& request, Reply reply) const {
    if (mChange != nullptr) return mChange(parts, request, std::move(reply));
    reply(mQuery(parts, request));
  }

 private:
  Query mQuery = nullptr;
  Change mChange = nullptr;
};

// Which products a request may name: the mouse's own, any other being out of range for the dispatcher; or any, where
// the handler looks at the product itself or it means nothing.
enum class Products { Served, Any };

// One row of the table of requests.
struct RequestKind {
  MessageID messageID;
  const char* name;  // for the log
  Products products;
  RequestHandler handler;
};

// Every request that the engine serves.
std::span<const RequestKind> requestKinds();

}  // namespace vorn::engine
