// One request to the engine, and what serves it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "core-engine/ClientRegistry.h"
#include "core-engine/Device.h"
#include "core-engine/FactoryDefaults.h"
#include "core-engine/KeyCapture.h"
#include "core-engine/Log.h"
#include "core-engine/MacroRecorder.h"
#include "core-engine/NewsPort.h"
#include "core-engine/ProfileChanger.h"
#include "core-engine/Scheduler.h"
#include "core-engine/SettingsStore.h"
#include "engine/EngineProtocol.h"
#include "model/PropertyList.h"

namespace vorn::engine {

struct Request {
  std::string sender;  // unique bus name of the client's connection
  PropertyList body;   // a dictionary

  // The product that the request is for; a missing one reads as 0, the wireless mouse.
  std::int32_t productID() const { return body[requestKeys::ProductID].toInt(); }
  // Where the answer goes; empty when the request names no port.
  std::string replyPort() const { return body[requestKeys::ResponseMsgPortName].toString(); }
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
  ProfileChanger& profiles;
};

// The body of the answer, a dictionary; nothing for a request that has no answer.
using Answer = std::optional<PropertyList>;
// Serves one request to its end. What it changes is on the disk when it returns.
using RequestHandler = Answer (*)(EngineParts& parts, const Request& request);

// One row of the table of requests.
struct RequestKind {
  MessageID messageID;
  const char* name;  // for the log
  RequestHandler handler;
};

// Every request that the engine serves.
std::span<const RequestKind> requestKinds();

}  // namespace vorn::engine
