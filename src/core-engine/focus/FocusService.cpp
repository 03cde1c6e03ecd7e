#include "core-engine/focus/FocusService.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "core-engine/focus/ProcessProgram.h"
#include "protocol/Focus.h"

namespace vorn::engine {

namespace {

namespace methods = focus::methods;
namespace words = focus::keys;

// The number of a process; nothing for another text.
std::optional<std::int64_t> processOf(std::string_view text) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

}  // namespace

FocusService::FocusService(Scheduler& scheduler, FocusSources& sources, Questions questions)
    : mScheduler(scheduler), mSources(sources), mQuestions(std::move(questions)) {}

FocusService::~FocusService() {
  for (const Scheduler::Ticket each : {mProbe, mLetGo, mTelling}) mScheduler.cancel(each);
}

bool FocusService::start(std::string& error) {
  BusMethod set{methods::SetApplicationInFront, {{"s", "identifier"}, {"s", "executable"}, {"s", "name"}}, {}, {}};
  set.callFrom = [this](const Values& given, const std::string& connection) {
    this->set(given, connection);
    return BusReply::success();
  };
  BusMethod state{methods::State, {}, {{"a{sv}", "state"}}, {}};
  state.callLater = [this](const Values&, const std::string&, const BusReturn& answer) { tellState(answer); };
  mObject = BusObject::create({focus::busName,
                               focus::objectPath,
                               focus::interface,
                               {std::move(set), std::move(state)},
                               {{focus::signalNames::Changed, {}}}},
                              &error);
  return mObject != nullptr;
}

void FocusService::set(const Values& given, const std::string& connection) {
  const auto text = [&given](std::size_t index) { return given[index].toString().substr(0, maximumText); };
  Application application{text(0), text(1), text(2)};
  if (const auto process = processOf(application.executable)) application.executable = programOfProcess(*process);
  mSources.setTold(connection, application);
}

void FocusService::updateUse() {
  mSources.setUsed(mQuestions.isUsed() || !mProbing.empty());
  changed();
}

void FocusService::changed() {
  if (!mProbing.empty() && isKnown()) endProbe();
  // Who asks meanwhile may learn something else, so what is told next is told in any case.
  if (!mQuestions.isUsed()) mTold = {};
  if (!mQuestions.isUsed() || mTelling != 0) return;
  mTelling = mScheduler.after(foldingTime, [this] {
    mTelling = 0;
    if (!mQuestions.isUsed()) return;
    const PropertyList now = state();
    if (std::exchange(mTold, now) != now && mObject) mObject->emit(focus::signalNames::Changed, {});
  });
}

bool FocusService::isKnown() const {
  return mSources.application().has_value();
}

void FocusService::tellState(BusReturn answer) {
  if (mQuestions.isUsed() && isKnown()) return answer(BusReply::success({state()}));
  mProbing.push_back(std::move(answer));
  if (mProbing.size() > 1) return;
  mProbe = mScheduler.after(probeTime, [this] { endProbe(); });
  updateUse();
}

void FocusService::endProbe() {
  mScheduler.cancel(std::exchange(mProbe, 0));
  const PropertyList told = state();
  for (const BusReturn& answer : std::exchange(mProbing, {})) answer(BusReply::success({told}));
  // Not within what has brought it.
  if (mLetGo != 0) return;
  mLetGo = mScheduler.after(Scheduler::Duration::zero(), [this] {
    mLetGo = 0;
    updateUse();
  });
}

PropertyList FocusService::state() const {
  const Application application = mSources.application().value_or(Application());
  std::string name = mQuestions.nameOf(application.identifier);
  if (name.empty()) name = application.name;
  return PropertyList::dictionary({{words::Source, mSources.source()},
                                   {words::IsUsed, mQuestions.isUsed()},
                                   {words::Identifier, application.identifier},
                                   {words::Executable, application.executable},
                                   {words::Name, name},
                                   {words::Profile, mQuestions.chosenName()},
                                   {words::Needs, mSources.needs()}});
}

}  // namespace vorn::engine
