#include "core-engine/requests/RequestDispatcher.h"

#include <algorithm>
#include <string>
#include <utility>

#include "model/PropertyListCodec.h"
#include "protocol/ReturnStatus.h"

namespace vorn::engine {

namespace {

bool isServedProduct(std::int32_t product) {
  return product == wiredProductID || product == wirelessProductID;
}

std::string title(const RequestKind& kind) {
  return std::to_string(static_cast<std::int32_t>(kind.messageID)) + " (" + kind.name + ")";
}

}  // namespace

RequestDispatcher::RequestDispatcher(EngineParts parts, ReplyPorts& ports, std::span<const RequestKind> kinds)
    : mParts(parts), mPorts(ports), mKinds(kinds) {}

void RequestDispatcher::receive(const LocalMessagePort::Message& message, std::function<void()> done) {
  mDone = std::move(done);
  if (const RequestKind* kind = begin(message)) {
    serve(*kind);
  } else {
    end();
  }
}

const RequestKind* RequestDispatcher::begin(const LocalMessagePort::Message& message) {
  const auto kind = std::find_if(mKinds.begin(), mKinds.end(), [&](const RequestKind& each) {
    return static_cast<std::int32_t>(each.messageID) == message.messageID;
  });
  if (kind == mKinds.end()) {
    mParts.log.fault(message.sender, "unknown message", "unknown message " + std::to_string(message.messageID));
    return nullptr;
  }
  std::string error;
  const auto body = decodeBinaryPropertyList(message.data, &error);
  if (!body) {
    mParts.log.fault(message.sender, "undecodable request", "request " + title(*kind) + " cannot be decoded: " + error);
    return nullptr;
  }
  if (!body->isDictionary()) {
    mParts.log.fault(message.sender, "request without a dictionary", "request " + title(*kind) + " is no dictionary");
    return nullptr;
  }
  mServed = Request{std::string(message.sender), *body, kind->messageID};
  return &*kind;
}

void RequestDispatcher::serve(const RequestKind& kind) {
  const Request& request = *mServed;
  if (mParts.log.isVerbose()) {
    mParts.log.line("request " + title(kind) + " of " + request.sender + ": " + request.body.description());
  }
  if (kind.products == Products::Served && !isServedProduct(request.productID())) {
    mParts.log.fault(request.sender, "request for an unknown product",
                     "request " + title(kind) + " is for the unknown product " + std::to_string(request.productID()));
    answer(kind, request,
           PropertyList::dictionary({{replyKeys::ReturnStatus, static_cast<std::int32_t>(ReturnStatus::OutOfRange)}}));
    return end();
  }
  kind.handler(mParts, request, [this, &kind](const Answer& body) { finish(kind, body); });
}

void RequestDispatcher::finish(const RequestKind& kind, const Answer& body) {
  if (body) answer(kind, *mServed, *body);
  if (mObserver) mObserver->hasServed(kind, *mServed);
  end();
}

void RequestDispatcher::end() {
  mServed.reset();
  if (const auto done = std::exchange(mDone, {})) done();
}

void RequestDispatcher::answer(const RequestKind& kind, const Request& request, const PropertyList& body) {
  const std::string portName = request.replyPort();
  const auto fault = [&log = mParts.log, &kind, sender = request.sender, portName](std::string_view reason) {
    log.fault(sender, reason,
              "no answer to request " + title(kind) + ": " + std::string(reason) + " (" + portName + ")");
  };
  // To the engine's own port the answer would come back as a request.
  if (!request.namesPort()) return fault("it names no port of a client");
  std::string error;
  const auto bytes = encodeBinaryPropertyList(body, &error);
  if (!bytes) return fault(error);
  const auto sent = [fault](ReplyPorts::Outcome outcome) {
    switch (outcome) {
      case ReplyPorts::Outcome::NoSuchPort:
        return fault("there is no such port");
      case ReplyPorts::Outcome::Unread:
        return fault("too many answers are unread");
      case ReplyPorts::Outcome::Failed:
        return fault("the port cannot be reached");
      case ReplyPorts::Outcome::Sent:
      case ReplyPorts::Outcome::Gone:
        break;
    }
  };
  mPorts.post(request.sender, portName, static_cast<std::int32_t>(kind.messageID), *bytes, sent);
  if (mParts.log.isVerbose()) mParts.log.line("answer " + title(kind) + " to " + portName + ": " + body.description());
}

}  // namespace vorn::engine
