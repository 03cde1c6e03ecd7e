// What a desktop's notification service looks like on the session bus, on a thread of its own: it writes down what it
// is asked to show, and shows nothing.
#pragma once

#include <systemd/sd-bus.h>

#include <cstdint>
#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "support/LoopThread.h"
#include "support/MessageText.h"

namespace vorn::test {

class FakeNotifications {
 public:
  // Numbers what it is asked for from this one on.
  explicit FakeNotifications(std::uint32_t firstNumber = 1) : mNext(firstNumber) {
    mThread.run([this] {
      mBus = BusConnection::forThisThread().handle();
      sd_bus_add_object(mBus, &mSlot, "/org/freedesktop/Notifications", &FakeNotifications::called, this);
      sd_bus_request_name(mBus, "org.freedesktop.Notifications", 0);
    });
  }
  // Ends it as the end of its process would.
  ~FakeNotifications() {
    mThread.run([this] {
      sd_bus_slot_unref(mSlot);
      BusConnection::forThisThread().close();
    });
  }
  FakeNotifications(const FakeNotifications&) = delete;
  FakeNotifications& operator=(const FakeNotifications&) = delete;

  // Every call so far: the method and its arguments (MessageText.h).
  std::vector<std::string> calls() {
    std::vector<std::string> calls;
    mThread.run([&] { calls = mCalls; });
    return calls;
  }
  // From now on it answers nothing.
  void hang() {
    mThread.run([&] { mIsHanging = true; });
  }
  // From now on it answers with an error.
  void refuse() {
    mThread.run([&] { mIsRefusing = true; });
  }

 private:
  static int called(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& service = *static_cast<FakeNotifications*>(self);
    service.mCalls.push_back(std::string(sd_bus_message_get_member(message)) + " " + textOf(message));
    if (service.mIsHanging) return 1;
    if (service.mIsRefusing) return sd_bus_reply_method_errorf(message, SD_BUS_ERROR_FAILED, "No");
    sd_bus_message_rewind(message, 1);
    std::uint32_t replaced = 0;
    sd_bus_message_skip(message, "s");
    sd_bus_message_read(message, "u", &replaced);
    return sd_bus_reply_method_return(message, "u", replaced != 0 ? replaced : service.mNext++);
  }

  std::uint32_t mNext;
  sd_bus* mBus = nullptr;
  sd_bus_slot* mSlot = nullptr;
  std::vector<std::string> mCalls;
  bool mIsHanging = false;
  bool mIsRefusing = false;
  LoopThread mThread;
};

}  // namespace vorn::test
