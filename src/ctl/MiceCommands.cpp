#include <algorithm>
#include <chrono>
#include <csignal>
#include <string>
#include <vector>

#include "ctl/Commands.h"
#include "ctl/EngineObject.h"
#include "ctl/MiceWords.h"
#include "ctl/Numbers.h"
#include "ports/NameWatch.h"
#include "ports/SignalWatch.h"
#include "protocol/Mice.h"

namespace vorn::ctl {

namespace {

namespace methods = mice::methods;
namespace words = mice::keys;

// The engine ends a teaching by itself after a minute.
constexpr std::chrono::seconds longestTeaching{65};

Result<std::vector<PropertyList>> call(const Context& context, const std::string& method,
                                       const std::vector<BusInput>& inputs = {}) {
  static const BusTarget target{mice::busName, mice::objectPath, mice::interface};
  return callEngineObject(context, target, "the choice of the mouse", method, inputs);
}

Outcome perform(const Context& context, const std::string& method, const std::vector<BusInput>& inputs) {
  const auto values = call(context, method, inputs);
  return values ? std::nullopt : Outcome(values.failure());
}

Result<PropertyList> allMice(const Context& context) {
  const auto values = call(context, methods::List);
  if (!values) return values.failure();
  return values->empty() ? PropertyList::array() : values->front();
}

Result<PropertyList> mouseInUse(const PropertyList& all) {
  const auto mice = all.elements();
  const auto found =
      std::find_if(mice.begin(), mice.end(), [](const PropertyList& mouse) { return mouse[words::IsInUse].toBool(); });
  if (found == mice.end()) return Failure{ExitStatus::Refused, "the engine uses no mouse"};
  return *found;
}

// Waits until a teaching of this connection has ended, and returns what the engine tells of it.
class Teaching {
 public:
  explicit Teaching(Context& context) : mContext(context) {
    RunLoop& loop = context.engine.loop();
    for (const int number : {SIGINT, SIGTERM}) loop.onSignal(number, [&loop] { loop.stop(); });
  }

  Result<PropertyList> await() {
    RunLoop& loop = mContext.engine.loop();
    const NameWatch engine(Bus::Session, mice::busName, [this, &loop](const std::string& owner) {
      mIsEngineGone = owner.empty();
      if (mIsEngineGone) loop.stop();
    });
    const RunLoop::Timer timer = loop.addTimer(longestTeaching, [&loop] { loop.stop(); });
    const bool isConnected = !mTaught.isNone() || loop.run();
    loop.removeTimer(timer);
    if (!mTaught.isNone()) return mTaught;
    if (mIsEngineGone || !isConnected) return Failure{ExitStatus::NoEngine, "the core engine is gone"};
    return Failure{ExitStatus::Refused, "nothing was taught"};
  }

 private:
  void take(const std::vector<PropertyList>& values) {
    constexpr std::size_t valueCount = 4;
    if (values.size() != valueCount) return;
    mTaught = PropertyList::dictionary(
        {{"control", values[0]}, {"isTaught", values[1]}, {"source", values[2]}, {"former", values[3]}});
    mContext.engine.loop().stop();
  }

  Context& mContext;
  PropertyList mTaught;
  bool mIsEngineGone = false;
  SignalWatch mSignals{{mice::objectPath, mice::interface, mice::signalNames::Taught, Bus::Session, mice::busName},
                       [this](const ReceivedSignal& received) { take(received.values); }};
};

}  // namespace

Outcome listMice(Context& context, const Arguments&) {
  const auto all = allMice(context);
  if (!all) return all.failure();
  std::vector<std::string> lines;
  for (const PropertyList& mouse : all->elements()) lines.push_back(lineOfMouse(mouse));
  context.output.either(lines, *all);
  return std::nullopt;
}

Outcome useMouse(Context& context, const Arguments& arguments) {
  const auto all = allMice(context);
  if (!all) return all.failure();
  const auto mouse = mouseNamed(*all, arguments[0]);
  if (!mouse) return mouse.failure();
  return perform(context, methods::Choose, {{"s", (*mouse)[words::ID]}});
}

Outcome showMouse(Context& context, const Arguments& arguments) {
  const auto all = allMice(context);
  if (!all) return all.failure();
  const auto mouse = arguments.empty() ? mouseInUse(*all) : mouseNamed(*all, arguments[0]);
  if (!mouse) return mouse.failure();
  context.output.either(linesOfMouse(*mouse), *mouse);
  return std::nullopt;
}

Outcome teachMouse(Context& context, const Arguments& arguments) {
  const auto control = controlArgument(arguments[0]);
  if (!control) return control.failure();
  if (auto failure = context.engine.connect()) return failure;
  Teaching teaching(context);
  if (auto failure = perform(context, methods::Teach, {{"s", *control}})) return failure;
  if (!context.output.isJson()) {
    context.output.line("Press what is to be control " + nameOfControl(*control) + ", or turn the wheel");
    if (auto failure = context.output.flush()) return failure;
  }
  const auto taught = teaching.await();
  if (!taught) return taught.failure();
  if (!(*taught)["isTaught"].toBool()) return Failure{ExitStatus::Refused, "nothing was taught"};
  context.output.either(lineOfTaught(*taught), *taught);
  return std::nullopt;
}

Outcome forgetTaught(Context& context, const Arguments& arguments) {
  if (arguments.empty()) return perform(context, methods::Forget, {{"s", ""}});
  const auto control = controlArgument(arguments[0]);
  if (!control) return control.failure();
  return perform(context, methods::Forget, {{"s", *control}});
}

Outcome setResolution(Context& context, const Arguments& arguments) {
  const auto resolution = numberOf(arguments[0], 0, mice::maximumResolution);
  if (!resolution || (*resolution != 0 && *resolution < mice::minimumResolution)) {
    return Failure{ExitStatus::Usage, "mice resolution takes 100 to 32000 DPI, or 0 for what is known of the mouse"};
  }
  return perform(context, methods::SetResolution, {{"u", *resolution}});
}

}  // namespace vorn::ctl
