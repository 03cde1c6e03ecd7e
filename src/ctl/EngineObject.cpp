#include "ctl/EngineObject.h"

#include <utility>

namespace vorn::ctl {

Result<std::vector<PropertyList>> callEngineObject(const Context& context, const BusTarget& target,
                                                   std::string_view what, const std::string& method,
                                                   const std::vector<BusInput>& inputs) {
  using Status = BusAnswer::Status;
  BusAnswer answer = callBusMethod(target, method, inputs, context.line.timeout);
  if (answer.status == Status::NoOwner) {
    if (auto failure = context.engine.startEngine()) return *failure;
    answer = callBusMethod(target, method, inputs, context.line.timeout);
  }
  switch (answer.status) {
    case Status::Success:
      return std::move(answer.values);
    case Status::NoBus:
      return Failure{ExitStatus::NoEngine, "cannot reach the session bus: " + answer.error};
    case Status::NoOwner:
      return Failure{ExitStatus::NoEngine, "the core engine of this session does not offer " + std::string(what)};
    case Status::Timeout:
      return Failure{ExitStatus::NoAnswer, std::string(what) + " does not answer in time"};
    case Status::Error:
    case Status::Invalid:
      break;
  }
  return Failure{ExitStatus::Refused, answer.error};
}

}  // namespace vorn::ctl
