#include "ctl/Commands.h"
#include "ctl/EngineObject.h"
#include "ctl/FocusWords.h"
#include "protocol/Focus.h"

namespace vorn::ctl {

Outcome showFocus(Context& context, const Arguments&) {
  static const BusTarget target{focus::busName, focus::objectPath, focus::interface};
  const auto values = callEngineObject(context, target, "the application in front", focus::methods::State);
  if (!values) return values.failure();
  const PropertyList state = values->empty() ? PropertyList::dictionary() : values->front();
  context.output.either(linesOfFocus(state), state);
  return std::nullopt;
}

}  // namespace vorn::ctl
