// ratbagd with mice that are alike: two profiles, the second one active, each with two resolutions, the second one
// active, and two LEDs. A mouse keeps what is committed; what is not is lost at a failure.
#pragma once

#include <systemd/sd-bus.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Words.h"

namespace vorn::test {

struct FakeMouse;

class FakeRatbag {
 public:
  explicit FakeRatbag(sd_bus* bus);
  ~FakeRatbag();
  FakeRatbag(const FakeRatbag&) = delete;
  FakeRatbag& operator=(const FakeRatbag&) = delete;

  // "start", "stop": takes or gives up its name.
  // "add SYSNAME MODEL", "add-plain SYSNAME MODEL" (X and Y are one), "remove SYSNAME"
  // "refuse PROPERTY" (from now on; none: nothing), "clamp RESOLUTION" (takes no higher one), "fail" (the next commit)
  // "firmware SYSNAME VERSION", to be told before the mouse is known
  // "resolution SYSNAME X Y", "rate SYSNAME HZ", "color SYSNAME RED GREEN BLUE", "activate SYSNAME INDEX": changes the
  // active resolution's values and so on, as by another program.
  // "garbage KIND": how it answers questions for properties, off for the truth; "garble": garbage as a signal.
  bool obey(Words& words);

 private:
  bool publish();
  bool add(const std::string& sysname, const std::string& model, bool hasSeparateAxes);
  bool change(const std::string& what, FakeMouse& mouse, Words& words);
  bool emitDevices();
  static int garble(sd_bus_message* message, void* self, sd_bus_error*);
  static int getDevices(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* self,
                        sd_bus_error*);

  sd_bus* mBus;
  bool mIsPublished = false;
  std::string mGarbage = "off";
  std::map<std::string, std::unique_ptr<FakeMouse>> mMice;
};

}  // namespace vorn::test
