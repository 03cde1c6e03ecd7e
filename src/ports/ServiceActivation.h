// Services: programs that a bus starts when somebody asks for their bus name. Looking a message port
// up or sending to it starts nothing; only what is declared here does.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "ports/BusConnection.h"

namespace vorn {

// How asking for a service ended.
struct ServiceStart {
  enum class Status : std::uint8_t {
    Running,       // the name has its owner, from now on or from before
    NotInstalled,  // the bus knows of no program to start, whether one runs or not
    Timeout,       // it is not there in time; it may still come
    Failed,        // it could not be started, or has ended before it took its name
    NoBus,         // no bus, or it went away
  };
  Status status = Status::Running;
  std::string error{};  // the reason, in the words of the bus, in English; empty while it runs
};

// Asks the bus to start the service of that bus name, if it does not run, and returns at once. done is called once, now
// or from this thread's run loop.
void startService(const std::string& busName, std::chrono::milliseconds timeout,
                  std::function<void(const ServiceStart&)> done, Bus bus = Bus::Session);

// The same, and blocks until it is known how that ended.
ServiceStart startServiceAndWait(const std::string& busName, std::chrono::milliseconds timeout);

// The bus name of a service that we are, on this thread's connection: who asked for it is told that we are ready.
class ServiceName {
 public:
  // Null, with the reason in error, when another program has the name or there is no bus. Neither waits for the name
  // nor lets others take it.
  static std::unique_ptr<ServiceName> claim(const std::string& busName, std::string* error = nullptr);
  ~ServiceName();
  ServiceName(const ServiceName&) = delete;
  ServiceName& operator=(const ServiceName&) = delete;

 private:
  ServiceName();
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
