// What logind tells of the machine's sleep.
#pragma once

#include <systemd/sd-bus.h>

#include "Words.h"

namespace vorn::test {

class FakeLogin {
 public:
  explicit FakeLogin(sd_bus* bus) : mBus(bus) {}

  // "start", "sleep", "wake", "garbage"
  bool obey(Words& words) {
    const std::string what = words.next();
    if (what == "start") return sd_bus_request_name(mBus, "org.freedesktop.login1", 0) >= 0;
    const char* path = "/org/freedesktop/login1";
    const char* interface = "org.freedesktop.login1.Manager";
    if (what == "garbage") return sd_bus_emit_signal(mBus, path, interface, "PrepareForSleep", "s", "perhaps") >= 0;
    if (what != "sleep" && what != "wake") return false;
    return sd_bus_emit_signal(mBus, path, interface, "PrepareForSleep", "b", what == "sleep" ? 1 : 0) >= 0;
  }

 private:
  sd_bus* mBus;
};

}  // namespace vorn::test
