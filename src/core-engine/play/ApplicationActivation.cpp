#include "core-engine/play/ApplicationActivation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <vector>

#include "ports/BusMethodCall.h"
#include "ports/ServiceActivation.h"

namespace vorn::engine {

namespace {

using Status = Activation::Status;

// That of the bus for a service that starts.
constexpr std::chrono::seconds patience{25};

// Of one that has the name for something else.
constexpr std::array<std::string_view, 3> ignorance = {"org.freedesktop.DBus.Error.UnknownMethod",
                                                       "org.freedesktop.DBus.Error.UnknownObject",
                                                       "org.freedesktop.DBus.Error.UnknownInterface"};

std::string objectPathOf(const std::string& busName) {
  std::string path = "/" + busName;
  std::ranges::replace(path, '.', '/');
  std::ranges::replace(path, '-', '_');
  return path;
}

Activation activationOf(const BusAnswer& answer) {
  switch (answer.status) {
    case BusAnswer::Status::Success:
      return {Status::Activated};
    case BusAnswer::Status::Timeout:
      return {Status::Failed, "it does not answer"};
    case BusAnswer::Status::Error:
      if (std::ranges::find(ignorance, answer.errorName) == ignorance.end()) return {Status::Failed, answer.error};
      break;
    default:
      break;
  }
  return {Status::Impossible, answer.error};
}

void activate(const std::string& busName, const std::string& startupID,
              const std::function<void(const BusAnswer&)>& answered) {
  PropertyList platformData = PropertyList::dictionary();
  if (!startupID.empty())
    platformData = PropertyList::dictionary({{"activation-token", startupID}, {"desktop-startup-id", startupID}});
  callBusMethodLater({busName, objectPathOf(busName), "org.freedesktop.Application"}, "Activate",
                     {{"a{sv}", platformData}}, patience, answered);
}

}  // namespace

void activateApplication(const std::string& busName, const std::string& startupID,
                         const std::function<void(const Activation&)>& done) {
  const auto started = [busName, startupID, done](const ServiceStart& start) {
    if (start.status == ServiceStart::Status::Timeout) return done({Status::Failed, "it does not start in time"});
    if (start.status != ServiceStart::Status::Running) return done({Status::Impossible, start.error});
    activate(busName, startupID, [done](const BusAnswer& answer) { done(activationOf(answer)); });
  };
  // One that runs may be none that the bus knows how to start.
  activate(busName, startupID, [busName, started, done](const BusAnswer& answer) {
    if (answer.status != BusAnswer::Status::NoOwner) return done(activationOf(answer));
    startService(busName, patience, started);
  });
}

}  // namespace vorn::engine
