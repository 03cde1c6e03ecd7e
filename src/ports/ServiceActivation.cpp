#include "ports/ServiceActivation.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

#include "ports/BusCall.h"

namespace vorn {

namespace {

using Status = ServiceStart::Status;

// Names of errors (D-Bus specification, "StartServiceByName", and the reference bus).
constexpr const char* notInstalledErrors[] = {SD_BUS_ERROR_SERVICE_UNKNOWN,
                                              "org.freedesktop.DBus.Error.Spawn.ServiceNotFound"};
// Our limit where we block and where we do not, and the bus's own.
constexpr const char* timeoutErrors[] = {SD_BUS_ERROR_TIMEOUT, SD_BUS_ERROR_NO_REPLY,
                                         "org.freedesktop.DBus.Error.TimedOut"};

ServiceStart failureOf(const sd_bus_error& error, const BusConnection& connection) {
  const auto isOneOf = [&error](const auto& names) {
    return std::any_of(std::begin(names), std::end(names),
                       [&error](const char* name) { return sd_bus_error_has_name(&error, name) > 0; });
  };
  const std::string text = error.message != nullptr ? error.message : "";
  if (!connection.isOpen()) return {Status::NoBus, text};
  if (isOneOf(notInstalledErrors)) return {Status::NotInstalled, text};
  if (isOneOf(timeoutErrors)) return {Status::Timeout, text};
  return {Status::Failed, text};
}

// Null without a bus or a name that it takes.
bus::MessageReference newStart(const BusConnection& connection, const std::string& busName) {
  if (!bus::isValidBusName(busName)) return nullptr;
  bus::MessageReference message = bus::newBusCall(connection, "StartServiceByName");
  constexpr std::uint32_t noFlags = 0;
  if (message && sd_bus_message_append(message.get(), "su", busName.c_str(), noFlags) < 0) return nullptr;
  return message;
}

ServiceStart unsent(const BusConnection& connection) {
  return connection.isOpen() ? ServiceStart{Status::Failed, "The bus cannot be asked"}
                             : ServiceStart{Status::NoBus, connection.error()};
}

}  // namespace

void startService(const std::string& busName, std::chrono::milliseconds timeout,
                  std::function<void(const ServiceStart&)> done, Bus bus) {
  BusConnection& connection = BusConnection::forThisThread(bus);
  const bus::MessageReference message = newStart(connection, busName);
  bus::callLater(connection, message.get(), timeout, [&connection, done = std::move(done)](sd_bus_message* answer) {
    if (answer == nullptr) return done(unsent(connection));
    const sd_bus_error* const failure = sd_bus_message_get_error(answer);
    done(failure == nullptr ? ServiceStart{} : failureOf(*failure, connection));
  });
}

ServiceStart startServiceAndWait(const std::string& busName, std::chrono::milliseconds timeout) {
  BusConnection& connection = BusConnection::forThisThread();
  const bus::MessageReference message = newStart(connection, busName);
  if (!message) return unsent(connection);
  bus::Error error;
  if (bus::call(connection, message.get(), timeout, error)) return {};
  return failureOf(*error.get(), connection);
}

struct ServiceName::State {
  std::string busName;
  bus::BusReference bus;
};

ServiceName::ServiceName() : mState(std::make_unique<State>()) {}

std::unique_ptr<ServiceName> ServiceName::claim(const std::string& busName, std::string* error) {
  BusConnection& connection = BusConnection::forThisThread();
  const int result = !connection.isOpen() ? -ENOTCONN : bus::claimName(connection, busName);
  if (result < 0) {
    if (error != nullptr)
      *error = result == -EEXIST ? "Another program has the name: " + busName : std::strerror(-result);
    return nullptr;
  }
  std::unique_ptr<ServiceName> name(new ServiceName);
  *name->mState = {busName, bus::share(connection.handle())};
  return name;
}

ServiceName::~ServiceName() {
  sd_bus_release_name(mState->bus.get(), mState->busName.c_str());
}

}  // namespace vorn
