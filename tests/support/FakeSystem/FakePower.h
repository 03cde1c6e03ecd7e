// UPower with the batteries that it is told of.
#pragma once

#include <systemd/sd-bus.h>

#include <cstddef>
#include <cstdlib>
#include <map>
#include <string>

#include "Words.h"

namespace vorn::test {

class FakePower {
 public:
  explicit FakePower(sd_bus* bus) : mBus(bus) {}

  // "start", "stop", "garbage on", "garbage off", "add NAME NATIVE-PATH PERCENT STATE", "remove NAME",
  // "change NAME PERCENT STATE", "level NAME LEVEL", "unplug NAME" (is no longer present), "poll NAME PERCENT" (is
  // looked at again, and the others are told only that it was)
  bool obey(Words& words) {
    const std::string what = words.next();
    if (what == "start") return start();
    if (what == "stop") return sd_bus_release_name(mBus, busName) >= 0;
    if (what == "garbage") {
      mIsGarbling = words.next() == "on";
      return true;
    }
    const std::string name = words.next();
    if (what == "add") return add(name, words);
    const auto found = mBatteries.find(name);
    if (found == mBatteries.end()) return false;
    if (what == "remove") return remove(found->first);
    if (what == "unplug") found->second.isPresent = 0;
    if (what == "level") found->second.level = words.number();
    if (what == "change") {
      found->second.percentage = std::strtod(words.next().c_str(), nullptr);
      found->second.state = words.number();
    }
    ++found->second.updateTime;
    if (what == "poll") {
      found->second.percentage = std::strtod(words.next().c_str(), nullptr);
      return tell(found->second, "UpdateTime");
    }
    return sd_bus_emit_properties_changed(mBus, found->second.path.c_str(), deviceInterface, "UpdateTime", "Percentage",
                                          "State", "IsPresent", "BatteryLevel", nullptr) >= 0;
  }

 private:
  struct Battery {
    std::string path;
    std::string nativePath;
    double percentage = 0;
    std::uint32_t state = 0;
    int isPresent = 1;
    std::uint32_t level = 1;  // for a battery that tells percents
    std::uint64_t updateTime = 0;
    sd_bus_slot* slot = nullptr;
  };
  static constexpr const char* busName = "org.freedesktop.UPower";
  static constexpr const char* managerPath = "/org/freedesktop/UPower";
  static constexpr const char* deviceInterface = "org.freedesktop.UPower.Device";

  bool start() {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0), SD_BUS_METHOD("EnumerateDevices", "", "ao", enumerate, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_SIGNAL("DeviceAdded", "o", 0), SD_BUS_SIGNAL("DeviceRemoved", "o", 0), SD_BUS_VTABLE_END};
    if (!mIsPublished) sd_bus_add_object_vtable(mBus, nullptr, managerPath, busName, table, this);
    if (!mIsPublished) sd_bus_add_filter(mBus, nullptr, garble, this);
    mIsPublished = true;
    return sd_bus_request_name(mBus, busName, 0) >= 0;
  }

  bool add(const std::string& name, Words& words) {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("NativePath", "s", nativePath, 0, 0),
        SD_BUS_PROPERTY("Percentage", "d", nullptr, offsetof(Battery, percentage), SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
        SD_BUS_PROPERTY("State", "u", nullptr, offsetof(Battery, state), SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
        SD_BUS_PROPERTY("IsPresent", "b", nullptr, offsetof(Battery, isPresent), SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
        SD_BUS_PROPERTY("BatteryLevel", "u", nullptr, offsetof(Battery, level), SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
        SD_BUS_PROPERTY("UpdateTime", "t", nullptr, offsetof(Battery, updateTime), SD_BUS_VTABLE_PROPERTY_EMITS_CHANGE),
        SD_BUS_VTABLE_END};
    Battery& battery = mBatteries[name];
    battery.path = std::string(managerPath) + "/devices/" + name;
    battery.nativePath = words.next();
    battery.percentage = std::strtod(words.next().c_str(), nullptr);
    battery.state = words.number();
    sd_bus_add_object_vtable(mBus, &battery.slot, battery.path.c_str(), deviceInterface, table, &battery);
    return sd_bus_emit_signal(mBus, managerPath, busName, "DeviceAdded", "o", battery.path.c_str()) >= 0;
  }

  bool tell(const Battery& battery, const char* property) {
    return sd_bus_emit_properties_changed(mBus, battery.path.c_str(), deviceInterface, property, nullptr) >= 0;
  }

  // Whose state is unknown in the end.
  bool remove(const std::string& name) {
    mBatteries[name].state = 0;
    tell(mBatteries[name], "State");
    const Battery battery = mBatteries[name];
    sd_bus_slot_unref(battery.slot);
    mBatteries.erase(name);
    return sd_bus_emit_signal(mBus, managerPath, busName, "DeviceRemoved", "o", battery.path.c_str()) >= 0;
  }

  static int nativePath(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* battery,
                        sd_bus_error*) {
    return sd_bus_message_append(reply, "s", static_cast<const Battery*>(battery)->nativePath.c_str());
  }
  static int enumerate(sd_bus_message* call, void* self, sd_bus_error*) {
    sd_bus_message* reply = nullptr;
    sd_bus_message_new_method_return(call, &reply);
    sd_bus_message_open_container(reply, 'a', "o");
    for (const auto& [name, battery] : static_cast<const FakePower*>(self)->mBatteries)
      sd_bus_message_append(reply, "o", battery.path.c_str());
    sd_bus_message_close_container(reply);
    const int sent = sd_bus_send(nullptr, reply, nullptr);
    sd_bus_message_unref(reply);
    return sent;
  }
  static int garble(sd_bus_message* message, void* self, sd_bus_error*) {
    if (!static_cast<const FakePower*>(self)->mIsGarbling) return 0;
    if (sd_bus_message_is_method_call(message, busName, "EnumerateDevices") > 0)
      return sd_bus_reply_method_return(message, "asx", 2, "no path", "/org/freedesktop/UPower/devices/x", 7) < 0 ? 0
                                                                                                                  : 1;
    if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus.Properties", "GetAll") <= 0) return 0;
    sd_bus_reply_method_return(message, "a{sv}", 3, "NativePath", "s", "hidpp_battery_0", "Percentage", "s", "full",
                               "State", "as", 1, "?");
    return 1;
  }

  sd_bus* mBus;
  bool mIsPublished = false;
  bool mIsGarbling = false;
  std::map<std::string, Battery> mBatteries;
};

}  // namespace vorn::test
