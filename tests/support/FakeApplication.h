// What an application that is activated over the session bus looks like there, on a thread of its own: it writes down
// what it is asked for.
#pragma once

#include <systemd/sd-bus.h>

#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "support/LoopThread.h"
#include "support/MessageText.h"

namespace vorn::test {

class FakeApplication {
 public:
  // error: with which it answers; empty for none.
  FakeApplication(const std::string& busName, const std::string& path, const std::string& error = {}) : mError(error) {
    mThread.run([this, &busName, &path] {
      sd_bus* bus = BusConnection::forThisThread().handle();
      sd_bus_add_object(bus, &mSlot, path.c_str(), &FakeApplication::called, this);
      sd_bus_request_name(bus, busName.c_str(), 0);
    });
  }
  ~FakeApplication() {
    mThread.run([this] {
      sd_bus_slot_unref(mSlot);
      BusConnection::forThisThread().close();
    });
  }
  FakeApplication(const FakeApplication&) = delete;
  FakeApplication& operator=(const FakeApplication&) = delete;

  // Every call so far: the interface, the method and its arguments (MessageText.h).
  std::vector<std::string> calls() {
    std::vector<std::string> calls;
    mThread.run([&] { calls = mCalls; });
    return calls;
  }

 private:
  static int called(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& application = *static_cast<FakeApplication*>(self);
    application.mCalls.push_back(std::string(sd_bus_message_get_interface(message)) + " " +
                                 sd_bus_message_get_member(message) + " " + textOf(message));
    if (!application.mError.empty()) return sd_bus_reply_method_errorf(message, application.mError.c_str(), "Not now");
    return sd_bus_reply_method_return(message, "");
  }

  std::string mError;
  sd_bus_slot* mSlot = nullptr;
  std::vector<std::string> mCalls;
  LoopThread mThread;
};

}  // namespace vorn::test
