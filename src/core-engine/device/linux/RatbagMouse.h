// One mouse as ratbagd has it (org.freedesktop.ratbag1 on the system bus): what its hardware offers, and its
// resolution, report rate and light set there. Nothing here ever waits; the service, its bus and the mouse may come and
// go. One thread, the engine's.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/device/linux/RatbagValues.h"

namespace vorn::engine {

// Which of ratbagd's mice.
struct RatbagIdentity {
  std::vector<std::string> hidrawNames;  // of the mouse's hidraw nodes ("hidraw3")
  // Only where it has none: bus, vendor and product ("usb:1234:abcd"), if one mouse alone has them.
  std::string model{};
  friend bool operator==(const RatbagIdentity&, const RatbagIdentity&) = default;
};

class RatbagMouse {
 public:
  enum class News : std::uint8_t {
    Known,      // state() tells of the mouse from now on; nothing of what was set before is left
    Forgotten,  // it does no longer
    Changed,    // by another program, by the mouse's own buttons, or by the mouse as it took what was set here
    Refused,    // what was set last was not taken as a whole; state() tells soon what has become of it
  };
  using Handler = std::function<void(News)>;

  enum class Standing : std::uint8_t {
    NoBus,         // there is no system bus: a new object tries again
    Asked,         // not known yet
    NotInstalled,  // the bus knows of no ratbagd
    NotRunning,    // it could not be started, or has ended, or the bus has: a new object tries again
    Incompatible,  // it speaks a version of its interface that is not known here
    NotListed,     // it does not know the mouse
    Known,
  };

  // Connects to the system bus if nobody has, and has ratbagd started if it is installed. The handler is called from
  // the run loop, and may end this.
  RatbagMouse(RatbagIdentity identity, Handler handler);
  ~RatbagMouse();
  RatbagMouse(const RatbagMouse&) = delete;
  RatbagMouse& operator=(const RatbagMouse&) = delete;

  Standing standing() const;
  // What ratbagd says; null unless the mouse is known. A value that was set is told here when ratbagd has taken it.
  const RatbagState* state() const;
  // The resolution that the mouse has, or will have as soon as what was set has been taken; nothing where it cannot be
  // set.
  std::optional<RatbagResolution> resolution() const;

  // Each sets, in the active profile and its active resolution, what the mouse allows that is nearest, and returns
  // that; nothing where the mouse is not known or does not offer it, and nothing is sent then. Nor is it for what the
  // mouse has already. While one is under way only the latest of each kind waits. The mouse keeps it (Commit).
  std::optional<RatbagResolution> setResolution(RatbagResolution wanted);
  std::optional<std::uint32_t> setReportRate(std::uint32_t wanted);
  // False without LEDs.
  bool setLight(const RatbagLight& light);

 private:
  struct Client;
  std::unique_ptr<Client> mClient;
};

}  // namespace vorn::engine
