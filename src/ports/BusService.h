// A service of another program on a bus, for who must not wait for it: followed as it comes and goes, and asked only
// while it is there. Belongs to the thread that made it, whose run loop calls the handlers.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/BusMethodCall.h"
#include "ports/ServiceActivation.h"
#include "ports/SignalWatch.h"

namespace vorn {

class BusService {
 public:
  using Changed = std::function<void()>;
  using Answered = std::function<void(const BusAnswer& answer)>;

  // For an answer to a call, and for a start.
  static constexpr std::chrono::milliseconds answerTimeout{5000};
  static constexpr std::chrono::milliseconds startTimeout{20000};

  // changed is called soon, when it is known for the first time whether the service is there, and whenever it comes or
  // goes; one that another connection takes over goes and comes. A lost bus takes the service with it, for good. Where
  // there is no bus, nothing is ever called. The handler may end the service.
  BusService(Bus bus, std::string busName, Changed changed);
  ~BusService();  // no handler is called any more
  BusService(const BusService&) = delete;
  BusService& operator=(const BusService&) = delete;

  bool isThere() const;
  // The unique bus name of the connection that it is; empty while it is not there.
  const std::string& owner() const;
  // False where there was no bus to begin with.
  bool hasBus() const;

  // Asks the bus to start it, if it is not there. done hears what became of that, later; where the bus is gone, now.
  void start(std::function<void(const ServiceStart&)> done);

  // Calls the method of the object. answered is called once, later, also when there is no answer in time, or now where
  // the call cannot be made; never when the service, or this, has gone meanwhile. While the service is not there,
  // nothing is called at all.
  void call(const std::string& path, const std::string& interface, const std::string& method,
            const std::vector<BusInput>& inputs, Answered answered,
            std::optional<std::chrono::milliseconds> limit = answerTimeout);
  // All properties of an interface of the object as a dictionary; none where it has no such interface or answers with
  // something else. They are waited for as long as the service is there.
  void getProperties(const std::string& path, const std::string& interface,
                     std::function<void(const PropertyList& properties)> answered);
  void setProperty(const std::string& path, const std::string& interface, const std::string& property,
                   const BusInput& value, Answered answered);

  // From now on the signals of that object, or of it and all below, as far as they are the service's own.
  void watch(const std::string& path, const std::string& interface, const std::string& signal,
             SignalWatch::Handler received);
  void watchAllBelow(const std::string& path, const std::string& interface, const std::string& signal,
                     SignalWatch::Handler received);
  // Ends the watches of that object.
  void unwatch(const std::string& path);

 private:
  struct State;
  std::shared_ptr<State> mState;
};

// The standard interface of objects with properties (D-Bus specification, "Standard Interfaces").
inline constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";
inline constexpr const char* propertiesChanged = "PropertiesChanged";

// What a signal of that name says of one interface.
struct PropertyChanges {
  PropertyList changed;       // a dictionary of new values
  bool isIncomplete = false;  // others have changed too, without their values
};
// Nothing for the properties of another interface, or what is no such signal.
std::optional<PropertyChanges> propertyChangesOf(const ReceivedSignal& received, std::string_view interface);

}  // namespace vorn
