// What keeps mice from working, and how to mend it. Pure: what was found becomes what is told.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ctl/DeviceAccess.h"
#include "mice/MouseFinder.h"
#include "model/PropertyList.h"

namespace vorn::ctl {

enum class ServiceState : std::uint8_t {
  Missing,    // nobody has its name, and nobody can be started for it
  Startable,  // it is started when it is asked for
  Running,
};

// What was found.
struct Examination {
  ServiceState engine = ServiceState::Missing;
  PropertyList mice;  // what the engine lists; none without an answer of it
  std::vector<MouseHardware> machineMice;
  std::vector<MouseHardware> leftAlone;        // that may be keyboards
  FileAccess output = FileAccess::Missing;     // to /dev/uinput
  std::string rules;                           // of udev: their path; empty where they are not installed
  std::string rulesAtHand = "70-skarn.rules";  // a copy of them to install
  bool hasSystemBus = false;
  ServiceState ratbag = ServiceState::Missing;
  ServiceState power = ServiceState::Missing;
};

struct Finding {
  enum class State : std::uint8_t { Fine, Missing, Optional };  // Optional: it could be there, and nothing needs it
  std::string what;
  State state = State::Fine;
  std::string text;
  std::string remedy{};  // the command that mends it; empty for none
  friend bool operator==(const Finding&, const Finding&) = default;
};

std::vector<Finding> findingsOf(const Examination& examination);

// Two lines where there is a remedy.
std::vector<std::string> linesOf(const Finding& finding);
// "what", "state" ("fine", "missing", "optional"), "text" and "remedy".
PropertyList dictionaryOf(const Finding& finding);

}  // namespace vorn::ctl
