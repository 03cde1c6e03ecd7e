// The tray of a desktop on the test's bus: org.kde.StatusNotifierWatcher, which notes the items that come, and
// org.freedesktop.Notifications, which notes their messages. It lives on a thread of its own, as a program asks it
// while the test waits for the program.
#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "ports/BusConnection.h"
#include "support/LoopThread.h"

namespace vorn::test {

class FakeTray {
 public:
  FakeTray() { appear(); }
  ~FakeTray() { disappear(); }
  FakeTray(const FakeTray&) = delete;
  FakeTray& operator=(const FakeTray&) = delete;

  void appear() {
    mThread.run([this] {
      static const sd_bus_vtable table[] = {
          SD_BUS_VTABLE_START(0),
          SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", registerItem, SD_BUS_VTABLE_UNPRIVILEGED),
          SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", isHostRegistered, 0, 0),
          SD_BUS_PROPERTY("ProtocolVersion", "i", version, 0, 0),
          SD_BUS_SIGNAL("StatusNotifierHostRegistered", "", 0),
          SD_BUS_SIGNAL("StatusNotifierItemRegistered", "s", 0),
          SD_BUS_VTABLE_END};
      sd_bus* bus = BusConnection::forThisThread().handle();
      if (mSlot == nullptr) sd_bus_add_object_vtable(bus, &mSlot, path, name, table, this);
      takeMessages(bus);
      sd_bus_request_name(bus, name, 0);
    });
  }
  void disappear() {
    mThread.run([this] {
      sd_bus_release_name(BusConnection::forThisThread().handle(), name);
      mSlot = sd_bus_slot_unref(mSlot);
      mMessagesSlot = sd_bus_slot_unref(mMessagesSlot);
    });
  }

  // The titles of the messages so far, when there are so many.
  std::vector<std::string> waitForMessages(std::size_t count, std::chrono::seconds patience) {
    std::unique_lock lock(mMutex);
    mChanged.wait_for(lock, patience, [&] { return mMessages.size() >= count; });
    return mMessages;
  }
  // The connection of the next item, when it has come; empty when none comes.
  std::string waitForItem(std::chrono::seconds patience) {
    std::unique_lock lock(mMutex);
    mChanged.wait_for(lock, patience, [this] { return !mItem.empty(); });
    return std::exchange(mItem, {});
  }

 private:
  static constexpr const char* name = "org.kde.StatusNotifierWatcher";
  static constexpr const char* path = "/StatusNotifierWatcher";

  void takeMessages(sd_bus* bus) {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0), SD_BUS_METHOD("Notify", "susssasa{sv}i", "u", takeMessage, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_METHOD("GetCapabilities", "", "as", tellCapabilities, SD_BUS_VTABLE_UNPRIVILEGED), SD_BUS_VTABLE_END};
    if (mMessagesSlot == nullptr)
      sd_bus_add_object_vtable(bus, &mMessagesSlot, "/org/freedesktop/Notifications", "org.freedesktop.Notifications",
                               table, this);
    sd_bus_request_name(bus, "org.freedesktop.Notifications", 0);
  }
  static int takeMessage(sd_bus_message* call, void* self, sd_bus_error*) {
    auto& tray = *static_cast<FakeTray*>(self);
    const char* title = nullptr;
    sd_bus_message_skip(call, "sus");
    sd_bus_message_read(call, "s", &title);
    {
      const std::lock_guard lock(tray.mMutex);
      tray.mMessages.emplace_back(title);
    }
    tray.mChanged.notify_all();
    return sd_bus_reply_method_return(call, "u", 1U);
  }
  static int tellCapabilities(sd_bus_message* call, void*, sd_bus_error*) {
    return sd_bus_reply_method_return(call, "as", 1, "body");
  }

  static int registerItem(sd_bus_message* call, void* self, sd_bus_error*) {
    auto& tray = *static_cast<FakeTray*>(self);
    {
      const std::lock_guard lock(tray.mMutex);
      tray.mItem = sd_bus_message_get_sender(call);
    }
    tray.mChanged.notify_all();
    return sd_bus_reply_method_return(call, "");
  }
  static int isHostRegistered(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                              sd_bus_error*) {
    return sd_bus_message_append(reply, "b", 1);
  }
  static int version(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*, sd_bus_error*) {
    return sd_bus_message_append(reply, "i", 0);
  }

  std::mutex mMutex;
  std::condition_variable mChanged;
  std::string mItem;
  std::vector<std::string> mMessages;
  sd_bus_slot* mSlot = nullptr;
  sd_bus_slot* mMessagesSlot = nullptr;
  LoopThread mThread;
};

}  // namespace vorn::test
