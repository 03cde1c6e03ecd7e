#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "ctl/Commands.h"
#include "ctl/Doctor.h"
#include "ports/BusMethodCall.h"
#include "protocol/EngineProtocol.h"
#include "protocol/Mice.h"

namespace vorn::ctl {

namespace {

// What a bus says of services.
class Services {
 public:
  Services(Bus bus, std::chrono::milliseconds timeout)
      : mNames(namesOf(bus, "ListNames", timeout)), mStartable(namesOf(bus, "ListActivatableNames", timeout)) {}

  bool hasBus() const { return !mNames.isNone(); }
  ServiceState stateOf(const char* name) const {
    if (has(mNames, name)) return ServiceState::Running;
    return has(mStartable, name) ? ServiceState::Startable : ServiceState::Missing;
  }

 private:
  static PropertyList namesOf(Bus bus, const char* method, std::chrono::milliseconds timeout) {
    const BusAnswer answer = callBusMethod(
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", bus}, method, {}, timeout);
    return answer.values.empty() ? PropertyList() : answer.values.front();
  }
  static bool has(const PropertyList& names, const char* name) {
    return std::ranges::any_of(names.elements(), [name](const PropertyList& each) { return each.string() == name; });
  }

  PropertyList mNames;
  PropertyList mStartable;
};

Examination examine(const Context& context) {
  Examination found;
  const Services session(Bus::Session, context.line.timeout);
  const BusAnswer mice =
      callBusMethod({mice::busName, mice::objectPath, mice::interface}, mice::methods::List, {}, context.line.timeout);
  found.engine = session.stateOf(engineServiceName);
  if (!mice.values.empty()) {
    found.mice = mice.values.front();
    found.engine = ServiceState::Running;
  }
  Found onMachine = findMice();
  found.machineMice = std::move(onMachine.mice);
  found.leftAlone = std::move(onMachine.leftAlone);
  found.output = accessTo(mice::outputNode);
  found.rules = installedRules();
  found.rulesAtHand = rulesAtHand();
  const Services system(Bus::System, context.line.timeout);
  found.hasSystemBus = system.hasBus();
  found.ratbag = system.stateOf("org.freedesktop.ratbag1");
  found.power = system.stateOf("org.freedesktop.UPower");
  return found;
}

}  // namespace

Outcome doctor(Context& context, const Arguments&) {
  const std::vector<Finding> findings = findingsOf(examine(context));
  std::vector<std::string> lines;
  std::vector<PropertyList> told;
  for (const Finding& each : findings) {
    const std::vector<std::string> ofFinding = linesOf(each);
    lines.insert(lines.end(), ofFinding.begin(), ofFinding.end());
    told.push_back(dictionaryOf(each));
  }
  context.output.either(lines, PropertyList::array(std::move(told)));
  const auto missing = std::count_if(findings.begin(), findings.end(),
                                     [](const Finding& each) { return each.state == Finding::State::Missing; });
  // The findings stand before the failure.
  Outcome failure = context.output.flush();
  if (missing == 0 || failure) return failure;
  return Failure{ExitStatus::Refused, "something is missing: " + std::to_string(missing)};
}

}  // namespace vorn::ctl
