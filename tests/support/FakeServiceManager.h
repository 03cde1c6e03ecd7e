// What a service manager of the user looks like on the session bus, on a thread of its own: it writes down what it is
// asked for, and starts nothing.
#pragma once

#include <systemd/sd-bus.h>

#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "support/LoopThread.h"
#include "support/MessageText.h"

namespace vorn::test {

class FakeServiceManager {
 public:
  FakeServiceManager() {
    mThread.run([this] {
      mBus = BusConnection::forThisThread().handle();
      sd_bus_add_object(mBus, &mSlot, path, &FakeServiceManager::called, this);
      sd_bus_request_name(mBus, "org.freedesktop.systemd1", 0);
    });
  }
  ~FakeServiceManager() {
    mThread.run([this] {
      sd_bus_slot_unref(mSlot);
      sd_bus_release_name(mBus, "org.freedesktop.systemd1");
    });
  }
  FakeServiceManager(const FakeServiceManager&) = delete;
  FakeServiceManager& operator=(const FakeServiceManager&) = delete;

  // Every call so far: the method and its arguments (MessageText.h).
  std::vector<std::string> calls() {
    std::vector<std::string> calls;
    mThread.run([&] { calls = mCalls; });
    return calls;
  }
  // From now on every call is answered with this error.
  void refuse(const std::string& text) {
    mThread.run([&] { mRefusal = text; });
  }
  // Tells that the job of the unit has ended. The bus has passed it on when this returns.
  void removeJob(const std::string& unit, const std::string& result) {
    mThread.run([&] {
      sd_bus_emit_signal(mBus, path, "org.freedesktop.systemd1.Manager", "JobRemoved", "uoss", 7U, job, unit.c_str(),
                         result.c_str());
      sd_bus_call_method(mBus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId",
                         nullptr, nullptr, "");
    });
  }

 private:
  static constexpr const char* path = "/org/freedesktop/systemd1";
  static constexpr const char* job = "/org/freedesktop/systemd1/job/7";

  static int called(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& manager = *static_cast<FakeServiceManager*>(self);
    manager.mCalls.push_back(std::string(sd_bus_message_get_member(message)) + " " + textOf(message));
    if (!manager.mRefusal.empty())
      return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_FAILED, "%s", manager.mRefusal.c_str());
    return sd_bus_reply_method_return(message, "o", job);
  }

  sd_bus* mBus = nullptr;
  sd_bus_slot* mSlot = nullptr;
  std::vector<std::string> mCalls;
  std::string mRefusal;
  LoopThread mThread;
};

}  // namespace vorn::test
