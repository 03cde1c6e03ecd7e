// Applications that are told over the session bus to show themselves, and are started by the bus where they do not run
// (Desktop Entry Specification 1.5, "D-Bus Activation"; interface org.freedesktop.Application). Belongs to the thread
// that calls it, whose run loop calls back.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vorn::engine {

struct Activation {
  enum class Status : std::uint8_t {
    Activated,
    Impossible,  // it does not run, and the bus cannot start it; or it does not know how to be activated
    Failed,      // it has refused, or has not answered in time
  };
  Status status = Status::Activated;
  std::string error{};  // why not, in English
};

// Returns without waiting; done is called once. startupID: to hand on; may be empty.
void activateApplication(const std::string& busName, const std::string& startupID,
                         const std::function<void(const Activation&)>& done);

}  // namespace vorn::engine
