#include "ports/BusMethodCall.h"

#include "ports/BusCall.h"
#include "ports/BusValue.h"

namespace vorn {

namespace {

using Status = BusAnswer::Status;

Status statusOf(const std::string& errorName, const BusConnection& connection) {
  if (!connection.isOpen()) return Status::NoBus;
  if (errorName == SD_BUS_ERROR_TIMEOUT) return Status::Timeout;
  if (errorName == SD_BUS_ERROR_SERVICE_UNKNOWN || errorName == SD_BUS_ERROR_NAME_HAS_NO_OWNER) return Status::NoOwner;
  return Status::Error;
}

BusAnswer answerOf(sd_bus_message* reply) {
  auto values = bus::readValues(reply);
  if (!values) return {Status::Invalid, {}, "The answer cannot be understood"};
  return {Status::Success, std::move(*values), {}};
}

BusAnswer failureOf(const bus::Error& error, const BusConnection& connection) {
  return {statusOf(error.name(), connection), {}, error.text(), error.name()};
}

// Null when the call cannot be made; error then tells why.
bus::MessageReference newRequest(const BusConnection& connection, const BusTarget& target, const std::string& method,
                                 const std::vector<BusInput>& inputs, std::string* error) {
  bus::MessageReference request =
      bus::newCall(connection, target.busName, target.path, target.interface.c_str(), method.c_str());
  if (!request) {
    *error = "The call cannot be made";
    return nullptr;
  }
  for (const BusInput& input : inputs) {
    const bool isAppended = input.entryTypes.empty()
                                ? bus::appendValue(request.get(), input.type, input.value)
                                : bus::appendDictionary(request.get(), input.value, input.entryTypes);
    if (isAppended) continue;
    *error = "A value does not fit the type " + input.type;
    return nullptr;
  }
  return request;
}

}  // namespace

BusAnswer callBusMethod(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs,
                        std::chrono::milliseconds timeout) {
  BusConnection& connection = BusConnection::forThisThread(target.bus);
  if (!connection.isOpen()) return {Status::NoBus, {}, connection.error()};
  std::string refusal;
  const bus::MessageReference request = newRequest(connection, target, method, inputs, &refusal);
  if (!request) return {Status::Invalid, {}, refusal};
  bus::Error error;
  const bus::MessageReference reply = bus::call(connection, request.get(), timeout, error);
  return reply ? answerOf(reply.get()) : failureOf(error, connection);
}

void callBusMethodLater(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs,
                        std::optional<std::chrono::milliseconds> timeout,
                        const std::function<void(const BusAnswer&)>& done) {
  BusConnection& connection = BusConnection::forThisThread(target.bus);
  if (!connection.isOpen()) return done({Status::NoBus, {}, connection.error()});
  std::string refusal;
  const bus::MessageReference request = newRequest(connection, target, method, inputs, &refusal);
  if (!request) return done({Status::Invalid, {}, refusal});
  bus::callLater(connection, request.get(), timeout, [done, &connection](sd_bus_message* reply) {
    if (reply == nullptr) return done({Status::NoBus, {}, "The connection to the bus is gone"});
    const sd_bus_error* const failure = sd_bus_message_get_error(reply);
    if (failure == nullptr) return done(answerOf(reply));
    BusAnswer answer = failureOf(bus::Error(*failure), connection);
    // That is how a time-out is told here.
    if (answer.status == Status::Error && answer.errorName == SD_BUS_ERROR_NO_REPLY) answer.status = Status::Timeout;
    done(answer);
  });
}

bool postBusMethod(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs) {
  BusConnection& connection = BusConnection::forThisThread(target.bus);
  if (!connection.isOpen()) return false;
  std::string refusal;
  const bus::MessageReference request = newRequest(connection, target, method, inputs, &refusal);
  if (!request || sd_bus_message_set_expect_reply(request.get(), 0) < 0 ||
      sd_bus_send(connection.handle(), request.get(), nullptr) < 0)
    return false;
  connection.announceQueuedMessages();
  return true;
}

}  // namespace vorn
