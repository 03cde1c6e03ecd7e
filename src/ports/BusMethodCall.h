// Calls of methods of other programs' objects, with property lists for their values.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/PropertyList.h"
#include "ports/BusConnection.h"

namespace vorn {

using BusEntryTypes = std::map<std::string, std::string, std::less<>>;

struct BusTarget {
  std::string busName;
  std::string path;
  std::string interface;
  Bus bus = Bus::Session;
};

struct BusInput {
  std::string type;  // one of the types of BusObject.h, or v<T>, a variant that holds a T
  PropertyList value;
  // Of an a{sv}: the types of the entries that are to be of others than BusObject.h says, by their keys.
  BusEntryTypes entryTypes{};
};

struct BusAnswer {
  enum class Status : std::uint8_t {
    Success,
    Error,    // the object answered with an error
    NoBus,    // no bus, or it went away
    NoOwner,  // nobody owns the bus name; no service is started
    Timeout,
    Invalid,  // the call cannot be made, or the answer holds types that BusObject.h does not list
  };
  Status status = Status::Success;
  std::vector<PropertyList> values{};  // what the method returned
  std::string error{};                 // English; empty for success
  std::string errorName{};             // of the bus's error ("org.vorn.Example.Error.Busy"), where it is one
};

// Calls the method on this thread's connection and blocks until it has returned or the time has passed.
BusAnswer callBusMethod(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs,
                        std::chrono::milliseconds timeout);

// The same without blocking: done is called once, from this thread's run loop, or now where the call cannot be made. An
// object that goes before it answers counts as one that does not answer in time. No time: it waits as long as it takes.
void callBusMethodLater(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs,
                        std::optional<std::chrono::milliseconds> timeout,
                        const std::function<void(const BusAnswer&)>& done);

// Sends the call on this thread's connection and waits for nothing; nobody hears what becomes of it. False when it
// cannot be made.
bool postBusMethod(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs);

}  // namespace vorn
